#include "sim/gatewayserver.h"

#include "sim/connection.h"
#include "sim/gatewaysession.h"
#include "sim/tcplink.h"

#include "base/timesource.h"

namespace sim {

GatewayServer::GatewayServer(TimeSource &time, const GatewayState &description, quint32 seed, QObject *parent)
    : QObject(parent)
    , m_time(time)
    , m_start(time.now())
    , m_gateway(description, seed)
    , m_faults(seed)
    , m_tcp(new TcpLink(this, QStringLiteral("gateway")))
    , m_comeBack(time.createTimer(this))
    , m_leave(time.createTimer(this))
{
    m_comeBack->setSingleShot(true);
    m_leave->setSingleShot(true);
    connect(m_comeBack, &Timer::timeout, this, &GatewayServer::comeBack);
    connect(m_leave, &Timer::timeout, this, &GatewayServer::leave);
    addLink(m_tcp);
}

GatewayServer::~GatewayServer()
{
    // What the connections tell while they are deleted has nobody to go to any more.
    for (GatewaySession *session : qAsConst(m_sessions)) {
        session->connection().disconnect(this);
        session->disconnect(this);
    }
}

Milliseconds GatewayServer::elapsed() const
{
    return Milliseconds(m_start.msecsTo(m_time.now()));
}

bool GatewayServer::listen(quint16 port, QString *error)
{
    const QHostAddress address(state().address);
    if (!address.isLoopback()) {
        *error = QStringLiteral("%1 is no address of the loopback interface").arg(state().address);
        return false;
    }
    if (!m_tcp->open(port, error, address))
        return false;
    m_port = m_tcp->port();
    return true;
}

bool GatewayServer::isListening() const
{
    return m_tcp->isOpen();
}

void GatewayServer::addLink(Link *link)
{
    connect(link, &Link::connected, this, &GatewayServer::takeConnection);
}

std::optional<DataRate> GatewayServer::chainRate() const
{
    return m_chainRate ? std::optional<DataRate>(m_chainRate()) : std::nullopt;
}

void GatewayServer::note(const GatewaySession *session, const QString &text) const
{
    if (!text.isEmpty())
        m_log.note(elapsed(), session ? session->connection().name() : QStringLiteral("gateway"), text);
}

void GatewayServer::takeConnection(Connection *connection)
{
    auto *session = new GatewaySession(*connection, m_time, [this] { return elapsed(); });
    m_sessions.append(session);
    note(session, QStringLiteral("connected"));
    connect(session, &GatewaySession::lineReceived, this,
            [this, session](const QByteArray &line) { takeLine(session, line); });
    connect(session, &GatewaySession::lineRefused, this,
            [this, session](const QString &reason) { refuse(session, reason); });
    const auto noteLoss = [this, session](int byteCount) {
        note(session, QStringLiteral("lost, %1 bytes that the peer does not take").arg(byteCount));
    };
    connect(session, &GatewaySession::lost, this, noteLoss);
    connect(connection, &Connection::lost, this, noteLoss);
    connect(session, &QObject::destroyed, this, [this, session] { m_sessions.removeOne(session); });
    connect(connection, &Connection::closed, this, [this, session] {
        if (m_sessions.removeOne(session))
            note(session, QStringLiteral("disconnected"));
    });
    greet(session);
}

void GatewayServer::refuse(const GatewaySession *session, const QString &reason)
{
    m_refusals.append(reason);
    if (m_refusals.size() > kRememberedLines)
        m_refusals.removeFirst();
    note(session, QStringLiteral("-> refused, %1").arg(reason));
}

void GatewayServer::greet(GatewaySession *session)
{
    const GatewayPlan plan = m_faults.planFor(GatewayFaults::greetingLine(), elapsed());
    answer(session, Gateway::prompt(), plan);
}

void GatewayServer::takeLine(GatewaySession *session, const QByteArray &line)
{
    m_log.receivedText(elapsed(), session->connection().name(), line);
    m_lines.append(line);
    if (m_lines.size() > kRememberedLines)
        m_lines.removeFirst();
    emit lineReceived(line);
    const GatewayPlan plan = m_faults.planFor(line, elapsed());
    GatewayAnswer result;
    if (!plan.silent)
        result = m_gateway.take(line, elapsed(), chainRate());
    note(session, result.note);
    answer(session, result.text, plan);
    follow(result.then);
}

void GatewayServer::answer(GatewaySession *session, const QByteArray &text, const GatewayPlan &plan)
{
    if (!plan.isClean())
        note(session, QStringLiteral("fault: %1").arg(plan.notes.join(QStringLiteral(", "))));
    if (plan.silent)
        return;
    if (plan.close) {
        session->close(plan.delay);
        if (plan.absence.count() > 0)
            stopListening(plan.absence);
        return;
    }
    transmit(session, plan.applyTo(text), {plan.delay, Milliseconds(0), plan.cut}, plan.lose);
    if (plan.promptGap)
        transmit(session, Gateway::prompt(), {plan.delay + *plan.promptGap, *plan.promptGap, {}}, plan.lose);
}

void GatewayServer::transmit(GatewaySession *session, const QByteArray &text, const Dispatch &how, bool lose)
{
    if (text.isEmpty())
        return;
    const bool isSent = !lose && session->send(text, how);
    m_log.sentText(elapsed() + how.delay, session->connection().name(), text,
                   isSent ? FrameLog::Fate::Sent : FrameLog::Fate::Lost);
}

void GatewayServer::follow(GatewayAnswer::Then then)
{
    switch (then) {
    case GatewayAnswer::Then::Stay:
        break;
    case GatewayAnswer::Then::Move:
        move();
        break;
    case GatewayAnswer::Then::Restart:
        m_gateway.restart();
        goAway(state().restartTime);
        break;
    case GatewayAnswer::Then::Reboot:
        m_gateway.reboot(elapsed());
        goAway(state().rebootTime);
        break;
    }
}

void GatewayServer::move()
{
    for (GatewaySession *session : qAsConst(m_sessions)) {
        if (!m_leaving.contains(session))
            m_leaving.append(session);
    }
    // A client that goes on telling an address must go all the same.
    if (!m_leave->isActive())
        m_leave->start(kLeaving);
    stopListening(state().moveTime);
}

void GatewayServer::leave()
{
    for (const auto &session : qAsConst(m_leaving)) {
        if (session)
            session->close(Milliseconds(0));
    }
    m_leaving.clear();
}

void GatewayServer::stopListening(Milliseconds absence)
{
    m_tcp->close();
    if (absence.count() > 0)
        m_comeBack->start(absence);
    else
        comeBack();
}

void GatewayServer::comeBack()
{
    m_comeBack->stop();
    QString error;
    if (m_port == 0 || listen(m_port, &error))
        return;
    note(nullptr, QStringLiteral("nobody can connect: %1").arg(error));
    if (QHostAddress(state().address).isLoopback())
        m_comeBack->start(kTryAgain);
}

void GatewayServer::goAway(Milliseconds absence)
{
    stopListening(absence);
    const auto sessions = m_sessions; // closing changes the list
    for (GatewaySession *session : sessions)
        session->close(Milliseconds(0));
}

} // namespace sim
