#include "link/serialcomm.h"

#include "base/log.h"
#include "link/communication_aux.h"

#include <QSerialPort>

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
    applyLineSettings();
    watchForLoss();
    m_state = State::Open;
    qDebug().noquote().nospace() << "Info : Connection with port " << m_settings.portName << " available.";
    return true;
}

/// A setting that the port refuses, as a pseudo terminal does with parity, leaves the link usable.
void SerialComm::applyLineSettings()
{
    const auto tell = [this](bool accepted, const char *setting) {
        if (!accepted)
            qDebug().noquote() << "Info : Port" << m_settings.portName << "does not take the" << setting;
    };
    tell(m_port->setBaudRate(m_settings.baudRate, QSerialPort::AllDirections), "baud rate");
    tell(m_port->setDataBits(static_cast<QSerialPort::DataBits>(m_settings.dataBits)), "data bits");
    tell(m_port->setParity(static_cast<QSerialPort::Parity>(m_settings.parity)), "parity");
    tell(m_port->setStopBits(static_cast<QSerialPort::StopBits>(m_settings.stopBits)), "stop bits");
    tell(m_port->setFlowControl(QSerialPort::NoFlowControl), "flow control");
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
    m_port->write(frame);
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
