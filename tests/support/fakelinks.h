#pragma once

#include "link/serialcomm.h"
#include "link/tcpsock.h"
#include "support/devicereplies.h"

#include <QByteArrayList>
#include <QStringList>

class TimeSource;

/// What a scripted link has seen and how it answers; the same for both kinds.
class FakeWire
{
public:
    virtual ~FakeWire() = default;

    QByteArrayList frames; ///< every frame that went out, in order
    QStringList calls;     ///< "open", "close", "connect", "disconnect", in order

    /// Answers to each frame that goes out, delivered in the next turn of the event loop if the link is
    /// still open by then. None by default: a silent device.
    device::Script script;

    /// Payloads of the frames that went out, and forgets them.
    QByteArrayList takePayloads();

    /// The device sends this payload now. As with a real decoder, the array that goes with the signal is
    /// emptied after the emission, or within it if the link closes.
    void reply(const QByteArray &payload);

protected:
    void take(const QByteArray &frame);
    void dropReceived();

    virtual QObject *link() = 0;
    virtual void deliver(QByteArray &frame) = 0;

private:
    QByteArray m_received;
    int m_opening = 0; ///< grows with each closing: answers to what was sent before are lost
};

/// A COM port that tests open, lose and answer from.
class FakeSerialComm final : public SerialComm, public FakeWire
{
    Q_OBJECT

public:
    FakeSerialComm(TimeSource &time, const PortDirectory &ports);

    bool opens = true; ///< answer to the next attempts to open it
    bool lost = false; ///< a write finds the port gone; on a closed link it then does nothing
    model_Namespace::Settings settings;

    bool IsOpen() const override { return m_open; }
    void SetSettings(const model_Namespace::Settings &newSettings) override { settings = newSettings; }
    bool Open() override;
    void Close() override;
    void Write(const QByteArray &frame) override;

private:
    QObject *link() override { return this; }
    void deliver(QByteArray &frame) override;

    bool m_open = false;
};

/// A TCP connection that tests refuse, drop and answer from. As with the real one, what it says about the
/// connection follows the signals of its begin and its end.
class FakeTcpSock final : public TcpSock, public FakeWire
{
    Q_OBJECT

public:
    explicit FakeTcpSock(TimeSource &time);

    /// Tells of the end of a connection that is still up, as a socket may that closes while it dies.
    ~FakeTcpSock() override;

    bool connects = true; ///< answer to the next attempts to connect
    QString address;
    QString port;

    bool IsConnected() const override { return m_connected; }
    void Write(const QByteArray &frame) override;
    bool connectToServer(QString ipAddr, QString portText) override;
    void disconnectSocket() override;

    /// The peer goes away.
    void drop();

private:
    QObject *link() override { return this; }
    void deliver(QByteArray &frame) override;

    bool m_connected = false;
    bool m_socketUp = false; ///< bytes can be written
};
