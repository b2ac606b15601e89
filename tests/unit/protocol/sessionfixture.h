#pragma once

#include "protocol/communication.h"
#include "support/fakelinks.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QObject>
#include <QStringList>
#include <memory>

/// A session on scripted links in virtual time. The log is collected. Every signal of the session is noted
/// in `events` by its name, those with a text or number with it: "DebugMsg(text)", "ModuleRead(3)".
class SessionFixture : public QObject
{
    Q_OBJECT

public:
    SessionFixture();

    MessageCatcher log;
    VirtualTime time;
    FakeSerialComm *serial = nullptr; ///< belongs to the session
    FakeTcpSock *tcp = nullptr;       ///< belongs to the session
    std::unique_ptr<Communication> comm;
    QStringList events;

    static model_Namespace::Settings serialSettings();
    static model_Namespace::Settings tcpSettings();

    /// Opens the serial link and, for the later states, goes on as far as asked for: the walk at its first
    /// step, or the cyclic state after a walk over these modules and a power module. Forgets all frames,
    /// events and lines of the log on the way. In the cyclic state the semaphore is up.
    void bringTo(SessionState state, const QByteArray &types = QByteArray(1, 1));

    void reply(const QByteArray &payload) { serial->reply(payload); }

    /// Lets the scripted device answer until the walk is over, in no time. Gives up after a long walk.
    void answerUntilCyclic();

    /// A reply that does nothing but end the turn.
    void endTurn() { reply(device::fastSystemStatus()); }

    /// Ends the turn of the last request, starts the next one and tells what went out in it.
    QList<QByteArray> nextTurn();

    /// The session is to log one request, with a payload of so many bytes, that it does not send.
    static void expectDropped(int bytes);

    /// A command for the firmware queue with this code and data.
    static QVariant firmware(quint8 code, const QByteArray &data = {});

    /// What went out since the last call, each payload in hex.
    QList<QByteArray> sent();

    QStringList takeEvents();
    void forget();

private:
    void noteEvents();
};
