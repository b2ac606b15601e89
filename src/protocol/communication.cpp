#include "protocol/communication.h"

#include "base/log.h"
#include "base/timesource.h"
#include "link/framebuilder.h"
#include "link/frameformat.h"
#include "protocol/commlinks.h"
#include "protocol/framesplit.h"
#include "protocol/records/recordtypes.h"

namespace {

const char *linkWord(Comm_Type commType)
{
    switch (commType) {
    case Comm_Type::Serial:
        return "SERIAL";
    case Comm_Type::Ethernet:
        return "ETHERNET";
    case Comm_Type::None:
        break;
    }
    return "UNKNOWN";
}

const char *activity(const Timer *timer)
{
    return timer->isActive() ? "true" : "false";
}

} // namespace

Communication::Communication(TimeSource &time, CommLinks links, const CommPeriods &periods, QObject *parent)
    : QObject(parent)
    , m_serial(std::move(links.serial))
    , m_tcp(std::move(links.tcp))
    , m_periods(periods)
{
    Q_ASSERT(m_serial && m_tcp);
    registerRecordTypes();
    createTimers(time);
    cleanSlate();
    connectLinks();
}

Communication::~Communication()
{
    // A link that closes as it dies must not report to a session that is half gone.
    m_serial->disconnect(this);
    m_tcp->disconnect(this);
}

void Communication::createTimers(TimeSource &time)
{
    m_fpgaTimer = time.createTimer(this);
    m_initSequenceTimer = time.createTimer(this);
    m_cyclicCommTimer = time.createTimer(this);
    m_commTimer = time.createTimer(this);
    m_eepromRequestTimeoutTimer = time.createTimer(this);
    m_eepromRequestTimeoutTimer->setSingleShot(true);
    connect(m_fpgaTimer, &Timer::timeout, this, &Communication::Slot_FPGAcmdsSend);
    connect(m_initSequenceTimer, &Timer::timeout, this, &Communication::Slot_InitializationTimeout);
    connect(m_cyclicCommTimer, &Timer::timeout, this, &Communication::Slot_CyclicCommTrigger);
    connect(m_commTimer, &Timer::timeout, this, &Communication::Slot_CommTimeout);
    connect(m_eepromRequestTimeoutTimer, &Timer::timeout, this, &Communication::Slot_EepromRequestTimeout);
}

void Communication::connectLinks()
{
    connect(m_serial.get(), &SerialComm::Signal_RcvSerialDatagram, this, &Communication::Slot_RcvDatagram);
    connect(m_tcp.get(), &TcpSock::Signal_RcvSerialDatagram, this, &Communication::Slot_RcvDatagram);
    connect(m_serial.get(), &SerialComm::retryPort, this, &Communication::passRetryPort);
    connect(m_tcp.get(), &TcpSock::TcpDisconnectd, this, &Communication::passRetryPort);
    connect(m_serial.get(), &SerialComm::dataWritten, this, &Communication::packetSent);
    connect(m_tcp.get(), &TcpSock::dataWritten, this, &Communication::packetSent);
}

bool Communication::isCommunicationChannelOpen() const
{
    switch (m_commType) {
    case Comm_Type::Serial:
        return m_serial->IsOpen();
    case Comm_Type::Ethernet:
        return m_tcp->IsConnected();
    case Comm_Type::None:
        break;
    }
    return false;
}

bool Communication::OpenCommunicationChannel(const model_Namespace::Settings &settings)
{
    // A copy: the caller's record may change when a receiver reacts to the opening.
    const model_Namespace::Settings copy = settings;
    m_commType = copy.commType;
    switch (copy.commType) {
    case Comm_Type::Serial:
        closeTcpChannel();
        return openSerial(copy);
    case Comm_Type::Ethernet:
        closeSerialChannel();
        return openTcp(copy);
    case Comm_Type::None:
        break;
    }
    return false;
}

bool Communication::openSerial(const model_Namespace::Settings &settings)
{
    if (m_serial->IsOpen()) {
        qDebug() << "Close in OpenCommunication channel";
        m_serial->Close();
    }
    m_serial->SetSettings(settings);
    const quint32 session = m_session;
    if (!m_serial->Open())
        return session != m_session && isCommunicationChannelOpen(); // a receiver may have opened a link
    if (!startOver())
        return isCommunicationChannelOpen();
    const QString text = QStringLiteral("Connection established with serial port");
    emit Signal_DebugMsg(text);
    qDebug().noquote() << text;
    return true;
}

bool Communication::openTcp(const model_Namespace::Settings &settings)
{
    cleanSlate();
    const quint32 session = m_session;
    if (!m_tcp->connectToServer(settings.ipAddress, settings.tcpPort))
        return session != m_session && isCommunicationChannelOpen();
    return startOver() || isCommunicationChannelOpen();
}

void Communication::closeSerialChannel()
{
    m_serial->Close();
}

void Communication::closeTcpChannel()
{
    m_tcp->disconnectSocket();
}

void Communication::setState(SessionState state)
{
    if (m_state == state)
        return;
    qDebug() << "Session state" << static_cast<int>(m_state) << "becomes" << static_cast<int>(state);
    m_state = state;
}

void Communication::cleanSlate()
{
    const bool firmwareWaited = firmwareCommandsWait();
    ++m_session;
    m_queues.clear();
    m_walk.clear();
    m_systemStatusReceived = false;
    m_initSequenceTimer->stop();
    m_cyclicCommTimer->stop();
    m_commTimer->stop();
    m_fpgaRests = false;
    setState(SessionState::SystemStatusAwaited);
    if (firmwareWaited)
        emit firmwareCommandsDropped();
}

// This and the next two: true if no receiver began a new session, which would make further steps of the
// caller too many.
bool Communication::resetCommChannels()
{
    const quint32 session = m_session + 1; // that of the clean slate
    cleanSlate();
    if (session != m_session)
        return false;
    sendInitRequest(m_state);
    if (session != m_session)
        return false;
    m_initSequenceTimer->start(m_periods.initSequence);
    return true;
}

bool Communication::announceCleanSlate()
{
    const quint32 session = m_session;
    emit Signal_CleanSlateProtocol();
    return session == m_session;
}

bool Communication::startOver()
{
    return announceCleanSlate() && resetCommChannels();
}

void Communication::sendInitRequest(SessionState request)
{
    const auto payload = command::packInitRequest(request, m_walk.next(), m_eepromBlock);
    if (!payload)
        return;
    sendPayload(*payload);
    qDebug("INI Seq Request sent: %d", static_cast<int>(request));
}

void Communication::RequestModuleStatus(quint8 address)
{
    sendPayload(command::packModuleRequest(address));
}

void Communication::sendPayload(const QByteArray &payload)
{
    QByteArray frame;
    PackDatagram(frame::kController, payload, frame);
    SendDatagram(frame);
}

void Communication::PackDatagram(quint8 addressee, const QByteArray &payload, QByteArray &frame)
{
    ++m_txCounter; // 255 is followed by 0
    frame = frame::build(m_txCounter, addressee, payload);
}

void Communication::SendDatagram(const QByteArray &frame)
{
    switch (m_commType) {
    case Comm_Type::Serial:
        m_serial->Write(frame);
        break;
    case Comm_Type::Ethernet:
        m_tcp->Write(frame);
        break;
    case Comm_Type::None:
        break;
    }
}

void Communication::Slot_RcvDatagram(Comm_Type commType, QByteArray &frame)
{
    const QByteArray received = frame; // the decoder's own buffer may be emptied during the emission
    const quint32 session = m_session;
    emit packetRecvd();
    if (session != m_session)
        return;
    auto payload = payloadOfFrame(received);
    if (!payload) {
        qCritical().noquote().nospace()
            << "An Invalid DataStream was received over : " << linkWord(commType) << " communication.";
        qDebug().noquote() << received.toHex(' ');
        return;
    }
    ExtractReceivedPayLoadData(*payload);
}

void Communication::Slot_CyclicCommTrigger()
{
    if (m_queues.hasFirmwareCommands() || !m_semaphore)
        return;
    m_semaphore = false;
    qDebug() << "Semaphore Consumed";
    if (sendQueuedRequest())
        return;
    sendPayload(command::packStatusRequest(m_polling.next(), 0));
    CheckPendingModuleStatusRequests();
    emit statusAvailbl();
}

bool Communication::sendQueuedRequest()
{
    const auto request = m_queues.takeNext();
    if (request)
        sendRequest(*request);
    return request.has_value();
}

void Communication::sendRequest(const QueuedRequest &request)
{
    switch (request.kind) {
    case QueuedRequest::Kind::Payload:
        sendPayload(request.payload);
        break;
    case QueuedRequest::Kind::SystemRefresh:
        sendInitRequest(SessionState::SystemStatusAwaited);
        setState(SessionState::SystemStatusAwaited);
        break;
    }
    if (request.sentText)
        qDebug() << request.sentText;
}

bool Communication::CheckPendingModuleStatusRequests()
{
    using Verdict = RequestQueues::Overdue::Verdict;
    const auto overdue = m_queues.countTurn();
    switch (overdue.verdict) {
    case Verdict::Empty:
        return false;
    case Verdict::Waiting:
        break;
    case Verdict::Retry:
        debugLine("bool Communication::CheckPendingModuleStatusRequests()")
            << "Retry STATIC_MODULE_STATUS request for module" << overdue.address;
        RequestModuleStatus(overdue.address);
        break;
    case Verdict::GiveUp:
        giveUpPendingModules();
        break;
    }
    return true;
}

void Communication::raiseSemaphore()
{
    m_semaphore = true;
    if (m_fpgaRests)
        Slot_StartFPGAprocess();
}

void Communication::Slot_FPGAcmdsSend()
{
    if (!m_queues.hasFirmwareCommands()) {
        m_fpgaTimer->stop();
        return;
    }
    if (!m_semaphore) {
        // Trying again in each turn of the loop would burn a processor for as long as no reply comes.
        m_fpgaTimer->stop();
        m_fpgaRests = true;
        return;
    }
    const auto request = m_queues.takeFirmwareCommand();
    if (!request)
        return;
    m_semaphore = false;
    sendRequest(*request);
}

void Communication::giveUpPendingModules()
{
    const bool sessionStands = announceCleanSlate();
    qDebug() << "<<<Pending modules higher resetting modules>>>";
    if (sessionStands)
        resetCommChannels();
}

void Communication::Slot_CommTimeout()
{
    const quint32 session = m_session;
    const QString text = QStringLiteral("<<<Comm timeout resetting the Comm Channels>>>");
    emit Signal_CleanSlateProtocol();
    emit Signal_DebugMsg(text);
    qDebug().noquote() << text;
    if (session == m_session)
        resetCommChannels();
}

void Communication::Slot_InitializationTimeout()
{
    debugLine("void Communication::Slot_InitializationTimeout()") << "Initialize Sequence Failed!";
    const quint32 session = m_session;
    emit Signal_DebugMsg(QStringLiteral("Initialize Sequence Timeout!"));
    if (session != m_session)
        return;
    const bool isOpen = isCommunicationChannelOpen();
    if (isOpen && !resetCommChannels())
        return;
    if (!isOpen)
        cleanSlate();
    emit Signal_CleanSlateProtocol();
}

void Communication::Slot_EepromRequestTimeout()
{
    m_cyclicCommTimer->start(m_periods.cyclic);
}

void Communication::SendModuleEepromRequest(int module)
{
    m_eepromModule = static_cast<quint16>(module);
    m_eepromBlock = 0;
    qDebug() << "pCommTimer->isActive()" << activity(m_commTimer);
    qDebug() << "pCyclicCommTimer->isActive()" << activity(m_cyclicCommTimer);
    qDebug() << "pInitSequenceTimer->isActive()" << activity(m_initSequenceTimer);
    qDebug() << "pEepromRequestTimeoutTimer->isActive()" << activity(m_eepromRequestTimeoutTimer);
    m_commTimer->stop();
    m_cyclicCommTimer->stop();
    m_initSequenceTimer->stop();
    m_eepromRequestTimeoutTimer->start(m_periods.eeprom);
    qDebug() << "~ SendModuleEepromRequest()";
}
