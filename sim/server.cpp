#include "sim/server.h"

#include "sim/bytes.h"
#include "sim/connection.h"
#include "sim/framecodec.h"
#include "sim/monotonictime.h"
#include "sim/payloadlayout.h"
#include "sim/ptylink.h"
#include "sim/session.h"
#include "sim/tcplink.h"

#include "base/timesource.h"

#include <numeric>

namespace sim {

namespace {

Milliseconds asMilliseconds(qint64 ns)
{
    return Milliseconds(ns / kNsPerMs);
}

qint64 asNs(Milliseconds time)
{
    return time.count() * kNsPerMs;
}

void corrupt(QByteArray *frame, const Corruption &corruption)
{
    const int payloadSize = frame->size() - kHeaderSize - kTrailerSize;
    int first = 0;
    int size = kHeaderSize;
    switch (corruption.part) {
    case FramePart::Header:
        break;
    case FramePart::Payload:
        first = kHeaderSize;
        size = payloadSize;
        break;
    case FramePart::Crc:
        first = kHeaderSize + payloadSize;
        size = kTrailerSize;
        break;
    }
    const int at = first + corruption.byte % size;
    putU8(*frame, at, ~u8At(*frame, at));
}

} // namespace

Server::Server(TimeSource &time, const Chain &chain, quint32 seed, QObject *parent)
    : QObject(parent)
    , m_time(time)
    , m_start(time.now())
    , m_device(chain, seed)
    , m_faults(seed)
{}

Server::~Server() = default;

qint64 Server::nowNs() const
{
    return m_start.msecsTo(m_time.now()) * kNsPerMs;
}

Milliseconds Server::elapsed() const
{
    return asMilliseconds(nowNs());
}

bool Server::listen(quint16 port, QString *error)
{
    auto link = std::make_unique<TcpLink>();
    if (!link->open(port, error))
        return false;
    m_tcp = link.get();
    addLink(std::move(link));
    return true;
}

quint16 Server::tcpPort() const
{
    return m_tcp ? m_tcp->port() : 0;
}

bool Server::openTerminal(const QString &name, QString *error)
{
    auto link = std::make_unique<PtyLink>(m_time);
    PtyLink &terminal = *link;
    addLink(std::move(link));
    return terminal.open(name, error);
}

void Server::addLink(std::unique_ptr<Link> link)
{
    Link *const key = link.get();
    connect(key, &Link::connected, this,
            [this, key](Connection *connection) { takeConnection(key, connection); });
    m_links.push_back(std::move(link));
}

int Server::requestCount() const
{
    return std::accumulate(m_counts.cbegin(), m_counts.cend(), 0);
}

void Server::clearCounters()
{
    m_counts.clear();
    m_payloads.clear();
    m_refusals.clear();
    m_counterJumps = 0;
}

void Server::takeConnection(Link *link, Connection *connection)
{
    m_log.note(elapsed(), connection->name(), QStringLiteral("connected"));
    // The session is the connection's child and goes with it.
    auto *session = new Session(
        *connection, m_time, [this] { return nowNs(); }, m_bytesPerSecond, connection);
    connect(session, &Session::arrived, this,
            [this, link, session](const Reception &reception) { takeReception(link, session, reception); });
    connect(connection, &Connection::lost, this, [this, connection](int byteCount) {
        m_log.note(elapsed(), connection->name(),
                   QStringLiteral("lost, %1 bytes that the peer does not take").arg(byteCount));
    });
    connect(connection, &Connection::closed, this, [this, connection, session] {
        m_expectedCounters.remove(session);
        if (m_flagCarrier == session)
            keepResetFlag();
        m_log.note(elapsed(), connection->name(), QStringLiteral("disconnected"));
    });
}

void Server::refuse(const QString &reason)
{
    m_refusals.append(reason);
    if (m_refusals.size() > kRememberedRefusals)
        m_refusals.removeFirst();
    emit refused(reason);
}

void Server::takeReception(Link *link, Session *session, const Reception &reception)
{
    const Milliseconds now = asMilliseconds(reception.timeNs);
    const QString name = session->connection().name();
    m_log.request(now, name, reception);
    if (!reception.valid) {
        refuse(reception.fault);
        return;
    }
    checkCounter(session, reception);
    ++m_counts[u8At(reception.payload, 0)];
    m_payloads.append(reception.payload);
    if (m_payloads.size() > kRememberedPayloads)
        m_payloads.removeFirst();
    emit requestReceived(reception.payload);
    carryOut(link, session, reception);
}

void Server::checkCounter(Session *session, const Reception &reception)
{
    const auto expected = m_expectedCounters.constFind(session);
    if (expected != m_expectedCounters.constEnd() && *expected != reception.counter) {
        ++m_counterJumps;
        m_log.note(
            asMilliseconds(reception.timeNs), session->connection().name(),
            QStringLiteral("consistency counter %1, expected %2").arg(reception.counter).arg(*expected));
    }
    m_expectedCounters.insert(session, static_cast<quint8>(reception.counter + 1));
}

void Server::keepResetFlag()
{
    m_flagCarrier = nullptr;
    m_device.raiseResetFlag();
}

void Server::carryOut(Link *link, Session *session, const Reception &reception)
{
    const Milliseconds now = asMilliseconds(reception.timeNs);
    const QString name = session->connection().name();
    const FaultPlan plan = m_faults.planFor(reception.payload, now);
    if (!plan.isClean())
        m_log.note(now, name, QStringLiteral("fault: %1").arg(plan.notes.join(QStringLiteral(", "))));
    if (plan.silence)
        return;
    const Answer answer = m_device.answer(reception.payload, now, plan.played);
    switch (answer.verdict) {
    case Answer::Verdict::Refused:
        m_log.note(now, name, QStringLiteral("refused: %1").arg(answer.note));
        refuse(answer.note);
        return;
    case Answer::Verdict::Silent:
        m_log.note(now, name, answer.note);
        return;
    case Answer::Verdict::Reply:
        break;
    }
    if (!answer.note.isEmpty())
        m_log.note(now, name, answer.note);
    const qint64 startNs = reception.timeNs + asNs(plan.delay);
    if (answer.carriesResetFlag) {
        m_flagCarrier = session;
        if (plan.destroysReply())
            keepResetFlag();
    }
    if (plan.close || plan.reset) {
        session->endAt(startNs, plan.reset ? Session::End::Reset : Session::End::Close, plan.absence);
        return;
    }
    sendReply(link, session, answer.payload, startNs, plan);
    if (plan.twice)
        sendReply(link, session, answer.payload, startNs, plan);
}

void Server::sendReply(Link *link, Session *session, const QByteArray &payload, qint64 startNs,
                       const FaultPlan &plan)
{
    QByteArray content = payload;
    if (plan.resetFlag)
        putU8(content, ControlFlagsAt, u8At(content, ControlFlagsAt) | kResetFlag);
    if (plan.payloadCode)
        putU8(content, 0, *plan.payloadCode);
    FrameHeader header;
    header.counter = ++m_counters[link];
    header.originator = plan.originator.value_or(header.originator);
    QByteArray frame = FrameCodec::encode(header, content);
    if (plan.corruption)
        corrupt(&frame, *plan.corruption);
    const QString name = session->connection().name();
    if (plan.lose)
        m_log.reply(asMilliseconds(startNs), name, content, frame, FrameLog::Fate::Lost);
    else
        sendFrame(session, content, frame, startNs, plan.cut.value_or(Cut{frame.size(), Milliseconds(0)}));
    emit replied(content);
}

void Server::sendFrame(Session *session, const QByteArray &payload, const QByteArray &frame, qint64 startNs,
                       const Cut &cut)
{
    for (int at = 0; at < frame.size(); at += cut.size) {
        Session::Piece piece;
        piece.bytes = frame.mid(at, cut.size);
        if (at == 0) {
            piece.started = [this, name = session->connection().name(), payload, frame](qint64 ns) {
                m_log.reply(asMilliseconds(ns), name, payload, frame, FrameLog::Fate::Sent);
            };
        } else {
            piece.gapNs = asNs(cut.gap);
        }
        const bool isLast = frame.size() - at <= cut.size;
        if (isLast && (u8At(payload, ControlFlagsAt) & kResetFlag) != 0) {
            piece.finished = [this, session] {
                if (m_flagCarrier == session)
                    m_flagCarrier = nullptr;
            };
        }
        session->send(piece, startNs);
    }
}

} // namespace sim
