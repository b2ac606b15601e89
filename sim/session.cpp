#include "sim/session.h"

#include "sim/bytes.h"
#include "sim/connection.h"
#include "sim/monotonictime.h"

#include "base/timesource.h"

#include <utility>

namespace sim {

namespace {

constexpr qint64 kNsPerSecond = 1000000000;
constexpr qint64 kAnswerWindowNs = 20 * kNsPerMs;

} // namespace

Session::Session(Connection &connection, TimeSource &time, std::function<qint64()> now, int bytesPerSecond,
                 QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_now(std::move(now))
    , m_bytesPerSecond(bytesPerSecond)
    , m_timer(time.createTimer(this))
{
    m_timer->setSingleShot(true);
    connect(m_timer, &Timer::timeout, this, &Session::run);
    connect(&connection, &Connection::received, this, &Session::take);
}

qint64 Session::wireNs(int byteCount) const
{
    return m_bytesPerSecond > 0 ? byteCount * kNsPerSecond / m_bytesPerSecond : 0;
}

void Session::take(const QByteArray &bytes)
{
    // A peer that answers to a reply got it late by as much as the timer was late; without that it would
    // have begun earlier. Taking this off keeps the line's own time free of the timer's coarseness. What
    // comes long after a reply is no answer to it.
    const qint64 nowNs = m_now();
    const bool isAnswer = nowNs - m_repliedNs <= kAnswerWindowNs;
    const qint64 startNs = qMax(m_inFreeNs, isAnswer ? nowNs - m_latenessNs : nowNs);
    m_latenessNs = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        for (const Reception &reception : m_receiver.feed(u8At(bytes, i), startNs + wireNs(i + 1)))
            m_arriving.append(reception);
    }
    m_inFreeNs = startNs + wireNs(bytes.size());
    run();
}

void Session::send(const Piece &piece, qint64 earliestNs)
{
    Outgoing item;
    item.piece = piece;
    item.startNs = qMax(earliestNs, m_outFreeNs + piece.gapNs);
    m_outFreeNs = item.startNs + wireNs(piece.bytes.size());
    m_outgoing.append(item);
    run();
}

void Session::endAt(qint64 earliestNs, End end, std::chrono::milliseconds absence)
{
    Outgoing item;
    item.startNs = qMax(earliestNs, m_outFreeNs);
    item.end = end;
    item.absence = absence;
    m_outgoing.append(item);
    run();
}

void Session::run()
{
    // What a step sets off may come back here: the outer call goes on with it.
    if (m_running)
        return;
    m_running = true;
    while (step()) {
    }
    m_running = false;
    schedule();
}

bool Session::step()
{
    const qint64 nowNs = m_now();
    if (!m_outgoing.isEmpty()) {
        Outgoing item = m_outgoing.takeFirst();
        if (pump(&item, nowNs))
            return true;
        m_outgoing.prepend(item);
    }
    if (m_arriving.isEmpty() || m_arriving.first().timeNs > nowNs)
        return false;
    emit arrived(m_arriving.takeFirst());
    return true;
}

/// Sends what is due of an item; true when nothing of it is left.
bool Session::pump(Outgoing *item, qint64 nowNs)
{
    if (item->startNs > nowNs)
        return false;
    if (item->end == End::Close)
        m_connection.close(item->absence);
    else if (item->end == End::Reset)
        m_connection.reset(item->absence);
    if (item->end)
        return true;
    if (item->piece.started)
        std::exchange(item->piece.started, nullptr)(item->startNs);
    const int size = item->piece.bytes.size();
    int due = size;
    if (m_bytesPerSecond > 0) {
        // As many bytes as have their last bit on the line.
        const qint64 elapsedNs = qMin(nowNs - item->startNs, wireNs(due));
        due = qMin(due, static_cast<int>(elapsedNs * m_bytesPerSecond / kNsPerSecond));
        while (due < size && wireNs(due + 1) <= elapsedNs)
            ++due;
    }
    const QByteArray bytes = item->piece.bytes.mid(item->sent, due - item->sent);
    item->sent = due;
    const bool done = item->sent == size;
    if (done && m_bytesPerSecond > 0) {
        m_latenessNs = nowNs - (item->startNs + wireNs(due));
        m_repliedNs = nowNs;
    }
    if (!bytes.isEmpty())
        m_connection.send(bytes);
    if (done && item->piece.finished)
        item->piece.finished();
    return done;
}

qint64 Session::nextByteNs(const Outgoing &item) const
{
    return item.end ? item.startNs : item.startNs + wireNs(item.sent + 1);
}

void Session::schedule()
{
    if (m_arriving.isEmpty() && m_outgoing.isEmpty()) {
        m_timer->stop();
        return;
    }
    qint64 dueNs = m_arriving.isEmpty() ? nextByteNs(m_outgoing.first()) : m_arriving.first().timeNs;
    if (!m_outgoing.isEmpty())
        dueNs = qMin(dueNs, nextByteNs(m_outgoing.first()));
    const qint64 waitNs = dueNs - m_now();
    m_timer->start(std::chrono::milliseconds(qMax<qint64>(1, (waitNs + kNsPerMs - 1) / kNsPerMs)));
}

} // namespace sim
