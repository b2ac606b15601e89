// The side of the session that takes replies. Delivery of the signals is direct: a receiver runs inside
// these functions, before the next step of the sequence. One that starts a new session ends the step.

#include "base/bytereader.h"
#include "base/log.h"
#include "base/timesource.h"
#include "protocol/communication.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"
#include "protocol/records/powerstatus.h"
#include "protocol/records/systemstatus.h"

namespace {

constexpr int kTypeTabs = 11; ///< tabs between "Module Type:" and the type in the debug text

QDebug replyLine()
{
    return debugLine("void Communication::ExtractReceivedPayLoadData(QByteArray&)");
}

bool isReply(const Fast_System_Status &head, PayloadCode code)
{
    return head.payloadType == static_cast<quint8>(code);
}

} // namespace

void Communication::ExtractReceivedPayLoadData(QByteArray &payload)
{
    const QByteArray bytes = payload; // a receiver may empty the caller's array
    ByteReader reader(bytes);
    const Fast_System_Status head = readFastSystemStatus(reader);
    if (head.asksForNewStart()) {
        startOver();
        return;
    }
    if (m_state == SessionState::Cyclic)
        m_commTimer->start(m_periods.comm);
    const quint32 session = m_session;
    if (!takeReply(bytes, head) || session != m_session)
        return;
    raiseSemaphore();
    emit Signal_RcvPayload(payload);
}

bool Communication::takeReply(const QByteArray &payload, const Fast_System_Status &head)
{
    if (isReply(head, PayloadCode::FastSystemStatus))
        return takeFastSystemStatus(head);
    if (isReply(head, PayloadCode::FastModuleStatus))
        return takeFastModuleStatus(payload, head);
    if (isReply(head, PayloadCode::SystemStatus))
        return takeSystemStatus(payload, head);
    if (isReply(head, PayloadCode::StaticModuleStatus))
        return takeStaticStatus(payload, head);
    // Replies are not matched to requests: an unknown one ends the turn as well.
    replyLine() << "Unkown Payload!";
    return true;
}

bool Communication::takeFastSystemStatus(const Fast_System_Status &head)
{
    replyLine() << "Rcvd TYPE_FAST_SYSTEM_STATUS_";
    emit Signal_FastSystemStatus(QVariant::fromValue(head));
    return true;
}

bool Communication::takeFastModuleStatus(const QByteArray &payload, const Fast_System_Status &head)
{
    replyLine() << "Rcvd TYPE_FAST_MODULE_STATUS_";
    const quint32 session = m_session;
    emit Signal_FastSystemStatus(QVariant::fromValue(head));
    if (session != m_session)
        return false;
    emit Signal_FastModuleStatus(QVariant::fromValue(decodeFastModuleStatus(payload)));
    return true;
}

bool Communication::takeSystemStatus(const QByteArray &payload, const Fast_System_Status &head)
{
    replyLine() << "Rcvd TYPE_SYSTEM_STATUS_";
    const quint32 session = m_session;
    emit Signal_DebugMsg(QStringLiteral("System status received!"));
    if (session != m_session)
        return false;
    if (m_state != SessionState::SystemStatusAwaited) {
        emit Signal_DebugMsg(QStringLiteral("Invalid initialization state received!"));
        if (session == m_session)
            startOver();
        return false;
    }
    const System_Status status = decodeSystemStatus(payload);
    if (m_queues.isSystemStatusWanted())
        return takeRefreshedStatus(status);
    emit Signal_FastSystemStatus(QVariant::fromValue(head));
    if (session != m_session)
        return false;
    emit Signal_SystemStatus(QVariant::fromValue(status));
    if (session != m_session)
        return false;
    m_walk.begin(status.nModules, status.hasFixedModule(wireCode(ModuleType::Power)));
    setState(SessionState::ModuleWalk);
    m_systemStatusReceived = true;
    sendInitRequest(SessionState::ModuleWalk);
    return true;
}

bool Communication::takeRefreshedStatus(const System_Status &status)
{
    setState(SessionState::Cyclic);
    m_queues.setSystemStatusWanted(false);
    const quint32 session = m_session;
    emit Signal_SamplingNBitRate(QVariant::fromValue(status));
    if (session == m_session)
        raiseSemaphore();
    return false; // this reply ends here: no Signal_RcvPayload()
}

bool Communication::takeStaticStatus(const QByteArray &payload, const Fast_System_Status &head)
{
    if (!m_systemStatusReceived) {
        replyLine() << "Rcvd TYPE_STATIC_MODULE_STATUS_";
        emit Signal_DebugMsg(QStringLiteral("System Status not received"));
        return false;
    }
    // Both records begin with the three bytes that decide between them.
    const Module_Status status = decodeModuleStatus(payload);
    const quint32 session = m_session;
    const bool isPower = status.moduleType == wireCode(ModuleType::Power);
    if (isPower) {
        replyLine() << "Rcvd TYPE_STATIC_MODULE_STATUS_ with module type power";
    } else {
        replyLine() << "Rcvd TYPE_STATIC_MODULE_STATUS_";
        emit Signal_DebugMsg(QString::asprintf("Module Address: %d Module Type:", status.moduleAddress) +
                             QString(kTypeTabs, QLatin1Char('\t')) + QString::number(status.moduleType));
        if (session != m_session)
            return false;
    }
    emit Signal_FastSystemStatus(QVariant::fromValue(head));
    if (session != m_session)
        return false;
    if (isPower)
        emit Signal_StaticPowerStatus(QVariant::fromValue(decodePowerStatus(payload)));
    else
        emit Signal_StaticModuleStatus(QVariant::fromValue(status));
    if (session != m_session)
        return false;
    return endStaticStatus(status.moduleAddress, status.moduleType);
}

bool Communication::endStaticStatus(quint8 address, quint8 moduleType)
{
    if (m_state == SessionState::Cyclic) {
        m_queues.removeModuleRequest(address);
        return true;
    }
    qDebug() << ">>>>>Static module Status ID" << moduleType;
    switch (m_walk.takeReply(moduleType)) {
    case ModuleWalk::Step::Continue:
        continueWalk();
        break;
    case ModuleWalk::Step::Finished:
        finishWalk(moduleType);
        break;
    }
    return true;
}

void Communication::continueWalk()
{
    m_initSequenceTimer->start(m_periods.initSequence);
    const quint32 session = m_session;
    sendInitRequest(SessionState::ModuleWalk);
    if (session != m_session)
        return;
    emit ModuleRead(m_walk.next());
    qDebug() << "NxtModuleToInit :" << m_walk.next() << " nModulesToInit :" << m_walk.count();
}

void Communication::finishWalk(quint8 moduleType)
{
    const quint32 session = m_session;
    emit stateInitialized();
    if (session != m_session)
        return;
    m_initSequenceTimer->stop();
    emit Signal_DebugMsg(
        QStringLiteral("State Initialized,Cyclic Commands started ") +
        QString::asprintf("NextModIndex %d ModToInitIndex %d", m_walk.next(), m_walk.count()));
    if (session != m_session)
        return;
    m_cyclicCommTimer->start(m_periods.cyclic);
    m_commTimer->start(m_periods.comm);
    setState(SessionState::Cyclic);
    qDebug() << "Initialized State NxtModuleToInit :" << m_walk.next() << m_walk.count();
    if (moduleType != wireCode(ModuleType::Power))
        qDebug() << "**Warning Power Module type incorrectly recieved or not present ";
}
