#pragma once

#include "sim/module.h"

#include <QObject>

#include <limits>

namespace sim {

/// One peer of the device: a TCP client or the far side of a pseudo terminal. Owned by its link.
class Connection : public QObject
{
    Q_OBJECT

public:
    Connection(const QString &name, QObject *parent)
        : QObject(parent)
        , m_name(name)
    {}

    /// For the log, as in "tcp:1".
    QString name() const { return m_name; }

    /// Sends at once. What the peer cannot take is lost, as on a line without flow control; `lost` tells it.
    virtual void send(const QByteArray &bytes) = 0;
    /// What `send` takes now without a loss, in bytes, where that is known.
    virtual int room() const { return std::numeric_limits<int>::max(); }
    /// Ends the connection; `closed` follows. A line that has no listener to come back to is away for
    /// `absence`; then its link makes a new connection.
    virtual void close(Milliseconds absence) = 0;
    /// The same without order, so that the peer sees an error, where there is such an end.
    virtual void reset(Milliseconds absence) { close(absence); }

signals:
    void received(const QByteArray &bytes);
    /// Emitted within `send`.
    void lost(int byteCount);
    /// There may be more room than before.
    void drained();
    /// The peer is gone; the connection is deleted in a later turn of the event loop.
    void closed();

private:
    const QString m_name;
};

} // namespace sim
