#include "link/serialcomm.h"

#include "base/log.h"
#include "link/communication_aux.h"
#include "link/linesettings.h"
#include "link/outputroom.h"

#include <QSerialPort>

namespace {

constexpr qint64 kMaxUnsent = 64LL * 1024; ///< bytes that wait for a port which takes none

} // namespace

SerialComm::SerialComm(TimeSource &time, const PortDirectory &ports, QObject *parent)
    : QObject(parent)
    , m_ports(ports)
    , m_decoder(new Communication_Aux(time, this))
{
    connect(m_decoder, &Communication_Aux::Signal_RcvDatagramOk, this, &SerialComm::Slot_RcvDatagramOK);
}

SerialComm::~SerialComm() = default;

bool SerialComm::IsOpen() const
{
    return m_state != State::Closed;
}

bool SerialComm::IsPortAvailable() const
{
    return m_ports.isAvailable(m_settings.portName);
}

void SerialComm::SetSettings(const model_Namespace::Settings &settings)
{
    m_settings = settings;
}

bool SerialComm::Open()
{
    discardPort();
    m_received.clear();
    m_receivedLength = 0;
    m_port = new QSerialPort(this);
    connect(m_port, &QSerialPort::readyRead, this, &SerialComm::Slot_DataReady);
    m_port->setPortName(m_ports.deviceOf(m_settings.portName));
    if (!m_port->open(QIODevice::ReadWrite)) {
        qDebug().noquote().nospace() << "Error : No connection available in port " << m_settings.portName;
        const QString advice = m_ports.permissionAdvice(m_settings.portName);
        if (!advice.isEmpty())
            qWarning().noquote() << advice;
        emit retryPort();
        return false;
    }
    applyLineSettings(*m_port, m_settings);
    watchForLoss();
    m_state = State::Open;
    qDebug().noquote().nospace() << "Info : Connection with port " << m_settings.portName << " available.";
    return true;
}

/// A device that is pulled out shows itself by a failing read, which would repeat without end.
void SerialComm::watchForLoss()
{
    connect(m_port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError)
            loseLink();
    });
}

/// Takes the device away from the event loop, but leaves the link open until its owner closes it or opens
/// it again.
void SerialComm::loseLink()
{
    if (m_state == State::Open) {
        m_state = State::Lost;
        disconnect(m_port, nullptr, this, nullptr);
        m_port->close();
    }
    qDebug().noquote().nospace() << "Warning : the connection with Port " << m_settings.portName
                                 << " is failing.";
    emit retryPort();
}

void SerialComm::Close()
{
    if (!m_port)
        return;
    qDebug().noquote().nospace() << "Info : Connection with port " << m_settings.portName << " closed.";
    discardPort();
}

/// The port may be the sender of the signal that led here, so it is deleted later.
void SerialComm::discardPort()
{
    m_state = State::Closed;
    m_decoder->abandonRead();
    if (!m_port)
        return;
    disconnect(m_port, nullptr, this, nullptr);
    if (m_port->isOpen())
        m_port->close();
    m_port->deleteLater();
    m_port = nullptr;
}

void SerialComm::Write(const QByteArray &frame)
{
    if (!IsPortAvailable()) {
        if (m_state != State::Closed)
            loseLink();
        return;
    }
    if (m_state != State::Open) {
        emit retryPort();
        return;
    }
    if (m_port->bytesToWrite() + frame.size() > kMaxUnsent) {
        qDebug().noquote() << "Warning : Port" << m_settings.portName << "takes no bytes; a frame is lost.";
        return;
    }
    m_port->write(frame);
    // A port that is only full would refuse, which looks like a loss. The event loop sends these bytes later.
    if (hasOutputRoom(*m_port))
        m_port->flush();
    if (m_state == State::Open)
        emit dataWritten();
}

void SerialComm::Slot_DataReady()
{
    if (m_state == State::Open)
        m_decoder->takeRead(m_port->readAll());
}

void SerialComm::Slot_ResetReceivedData()
{
    debugLine("void SerialComm::Slot_ResetReceivedData()") << "Resetting reception buffer!";
    m_received.clear();
    m_receivedLength = 0;
}

void SerialComm::Slot_RcvDatagramOK(QByteArray &frame)
{
    emit Signal_RcvSerialDatagram(Comm_Type::Serial, frame);
}
