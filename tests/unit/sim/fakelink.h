#pragma once

#include "sim/connection.h"
#include "sim/link.h"

#include "support/virtualtime.h"

#include <QVector>

#include <functional>
#include <optional>

/// A peer on virtual time that writes down what reaches it and when, and plays back what the test says.
class FakeConnection final : public sim::Connection
{
public:
    struct Piece
    {
        qint64 atMs = 0;
        QByteArray bytes;
    };

    FakeConnection(VirtualTime &time, QObject *parent)
        : Connection(QStringLiteral("fake"), parent)
        , m_time(time)
    {}

    void send(const QByteArray &bytes) override
    {
        pieces.append({m_time.elapsedMs(), bytes});
        if (limit)
            *limit -= bytes.size();
        if (onSend)
            onSend();
    }

    int room() const override { return limit.value_or(Connection::room()); }

    void close(sim::Milliseconds absence) override
    {
        closedAtMs = m_time.elapsedMs();
        closedFor = absence;
    }

    void reset(sim::Milliseconds absence) override
    {
        isReset = true;
        close(absence);
    }

    /// The peer goes away; the connection is deleted at once.
    void unplug()
    {
        emit closed();
        delete this;
    }

    void write(const QByteArray &bytes) { emit received(bytes); }

    /// Takes what it was sent, so that there is room for so many bytes more.
    void drain(int byteCount)
    {
        limit = limit.value_or(0) + byteCount;
        emit drained();
    }

    QByteArray bytes() const
    {
        QByteArray all;
        for (const Piece &piece : pieces)
            all += piece.bytes;
        return all;
    }

    QVector<Piece> pieces;
    bool isReset = false;
    qint64 closedAtMs = -1;
    sim::Milliseconds closedFor{0};
    std::function<void()> onSend;
    std::optional<int> limit; ///< bytes that can still be sent; without it there is no limit

private:
    VirtualTime &m_time;
};

class FakeLink final : public sim::Link
{
public:
    explicit FakeLink(VirtualTime &time)
        : m_time(time)
    {}

    FakeConnection *plugIn()
    {
        auto *connection = new FakeConnection(m_time, this);
        emit connected(connection);
        return connection;
    }

private:
    VirtualTime &m_time;
};
