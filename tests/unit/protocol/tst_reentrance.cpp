#include "sessionfixture.h"

#include <QMetaMethod>
#include <QtTest>
#include <functional>

namespace {

const QByteArray kSystemRequest = "0100000001";

} // namespace

/// Receivers that open or close the link inside an emission. The step that emitted must end there: what
/// follows belongs to the new session.
class TstReentrance : public QObject
{
    Q_OBJECT

public slots:
    void trigger()
    {
        if (m_trigger)
            m_trigger();
    }

private slots:
    void init() { s = std::make_unique<SessionFixture>(); }
    void cleanup() { s.reset(); }

    void reopeningDuringACleanSlate_data();
    void reopeningDuringACleanSlate();
    void closingDuringACleanSlate_data();
    void closingDuringACleanSlate();
    void reopeningDuringAReply_data();
    void reopeningDuringAReply();
    void reopeningWhenTheLinkIsLost();
    void openingWhenALinkDoesNotOpen_data();
    void openingWhenALinkDoesNotOpen();
    void reopeningWhenTheLinkIsLostAsItOpens();
    void reopeningWhenTheInitialisationTimesOut();
    void reopeningWhenTheLinkIsLostInATimeout();
    void reopeningWhenFirmwareCommandsAreDropped_data();
    void reopeningWhenFirmwareCommandsAreDropped();
    void openingTheOtherLinkWhileOneOpens();
    void closingTheLinkKeepsTheFrameInHand();
    void payloadOfTheCallerMayBeEmptied();

private:
    /// Runs `action` in the first emission of `signal`.
    template <typename Signal, typename Action>
    void once(Signal signal, Action action)
    {
        auto done = std::make_shared<bool>(false);
        connect(s->comm.get(), signal, s.get(), [done, action] {
            if (*done)
                return;
            *done = true;
            action();
        });
    }

    void reopen() { s->comm->OpenCommunicationChannel(SessionFixture::serialSettings()); }
    void cause(const QString &reason);
    void causes();

    std::function<void()> m_trigger;
    std::unique_ptr<SessionFixture> s;
};

void TstReentrance::causes()
{
    QTest::addColumn<QString>("reason");
    for (const char *reason : {"reset flag", "comm time-out", "pending modules", "wrong state", "opening"})
        QTest::newRow(reason) << QString::fromLatin1(reason);
}

/// Makes a session in the cyclic state start over.
void TstReentrance::cause(const QString &reason)
{
    if (reason == QLatin1String("reset flag"))
        s->reply(device::fastSystemStatus(1));
    else if (reason == QLatin1String("comm time-out"))
        s->comm->Slot_CommTimeout();
    else if (reason == QLatin1String("wrong state"))
        s->reply(device::systemStatus({}, true));
    else if (reason == QLatin1String("opening"))
        reopen();
    else {
        s->comm->queueModuleStatus(1);
        for (int turn = 0; turn < 12; ++turn)
            s->comm->CheckPendingModuleStatusRequests();
    }
}

void TstReentrance::reopeningDuringACleanSlate_data()
{
    causes();
}

void TstReentrance::reopeningDuringACleanSlate()
{
    QFETCH(QString, reason);
    s->bringTo(SessionState::Cyclic);
    once(&Communication::Signal_CleanSlateProtocol, [this] { reopen(); });
    cause(reason);
    QCOMPARE(s->sent().count(kSystemRequest), 1); // of the session that the receiver began
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    QVERIFY(s->comm->isCommunicationChannelOpen());
    s->reply(device::systemStatus({}, true));
    QCOMPARE(s->comm->state(), SessionState::ModuleWalk);
}

void TstReentrance::closingDuringACleanSlate_data()
{
    causes();
}

void TstReentrance::closingDuringACleanSlate()
{
    QFETCH(QString, reason);
    s->bringTo(SessionState::Cyclic);
    once(&Communication::Signal_CleanSlateProtocol, [this] { s->comm->closeSerialChannel(); });
    cause(reason);
    QVERIFY(!s->sent().contains(kSystemRequest));
    QCOMPARE(s->takeEvents().count(QStringLiteral("passRetryPort")), 1); // the reset found no link
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    QVERIFY(!s->comm->isCommunicationChannelOpen());
}

void TstReentrance::reopeningDuringAReply_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("signal");
    const QByteArray system = device::systemStatus({}, true);
    const QByteArray module = device::moduleStatus(0, 100);
    const QByteArray power = device::powerStatus();
    const auto row = [](const char *name, int state, const QByteArray &payload, const char *signal) {
        QTest::newRow(name) << state << payload << QByteArray(signal);
    };
    row("frame", 3, device::fastSystemStatus(), SIGNAL(packetRecvd()));
    row("fast system", 3, device::fastSystemStatus(), SIGNAL(Signal_FastSystemStatus(QVariant)));
    row("fast module: head", 3, device::fastModuleStatus(), SIGNAL(Signal_FastSystemStatus(QVariant)));
    row("fast module", 3, device::fastModuleStatus(), SIGNAL(Signal_FastModuleStatus(QVariant)));
    row("system: text", 1, system, SIGNAL(Signal_DebugMsg(QString)));
    row("system: head", 1, system, SIGNAL(Signal_FastSystemStatus(QVariant)));
    row("system", 1, system, SIGNAL(Signal_SystemStatus(QVariant)));
    row("system, wrong state", 2, system, SIGNAL(Signal_DebugMsg(QString)));
    row("module: text", 2, module, SIGNAL(Signal_DebugMsg(QString)));
    row("module: head", 2, module, SIGNAL(Signal_FastSystemStatus(QVariant)));
    row("module", 2, module, SIGNAL(Signal_StaticModuleStatus(QVariant)));
    row("module: next one", 2, module, SIGNAL(ModuleRead(ushort)));
    row("module: request", 2, module, SIGNAL(packetSent()));
    row("power", 2, power, SIGNAL(Signal_StaticPowerStatus(QVariant)));
    row("power: end of the walk", 2, power, SIGNAL(stateInitialized()));
    row("power: text", 2, power, SIGNAL(Signal_DebugMsg(QString)));
}

void TstReentrance::reopeningDuringAReply()
{
    QFETCH(int, state);
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, signal);
    s->bringTo(static_cast<SessionState>(state));
    bool done = false;
    const auto meta = s->comm->metaObject();
    const QMetaMethod method =
        meta->method(meta->indexOfSignal(QMetaObject::normalizedSignature(signal.constData() + 1)));
    QVERIFY(method.isValid());
    m_trigger = [this, &done] {
        if (done)
            return;
        done = true;
        s->forget();
        reopen();
    };
    const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("trigger()"));
    connect(s->comm.get(), method, this, slot);
    s->reply(payload);
    m_trigger = nullptr;
    QVERIFY(done);
    // Nothing but what the opening itself tells.
    QCOMPARE(s->takeEvents(),
             QStringList({QStringLiteral("CleanSlate"), QStringLiteral("packetSent"),
                          QStringLiteral("DebugMsg(Connection established with serial port)")}));
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    const auto sent = s->sent();
    QCOMPARE(sent.count(kSystemRequest), 1);
    s->time.advance(3799); // neither cycle nor anything else of the old session runs
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.advance(1);
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
}

void TstReentrance::reopeningWhenTheLinkIsLost()
{
    s->bringTo(SessionState::Cyclic);
    once(&Communication::passRetryPort, [this] {
        s->serial->lost = false;
        reopen();
    });
    s->serial->lost = true;
    s->time.advance(500); // the poll finds the port gone
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    s->reply(device::systemStatus({}, true));
    QCOMPARE(s->comm->state(), SessionState::ModuleWalk);
}

void TstReentrance::openingWhenALinkDoesNotOpen_data()
{
    QTest::addColumn<bool>("tcpFirst");
    QTest::newRow("serial") << false;
    QTest::newRow("tcp") << true;
}

void TstReentrance::openingWhenALinkDoesNotOpen()
{
    QFETCH(bool, tcpFirst);
    s->serial->opens = false;
    s->tcp->connects = false;
    bool opened = false;
    once(&Communication::passRetryPort, [this, &opened] {
        s->tcp->connects = true;
        opened = s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    });
    const auto settings = tcpFirst ? SessionFixture::tcpSettings() : SessionFixture::serialSettings();
    QVERIFY(s->comm->OpenCommunicationChannel(settings)); // a link is open, if not the one asked for
    QVERIFY(opened);
    QVERIFY(s->comm->isCommunicationChannelOpen());
    QCOMPARE(s->takeEvents(), QStringList({QStringLiteral("passRetryPort"), QStringLiteral("CleanSlate"),
                                           QStringLiteral("packetSent")}));
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
}

void TstReentrance::reopeningWhenTheLinkIsLostAsItOpens()
{
    const QString established = QStringLiteral("DebugMsg(Connection established with serial port)");
    once(&Communication::passRetryPort, [this] {
        s->serial->lost = false;
        reopen();
    });
    s->serial->lost = true;
    QVERIFY(s->comm->OpenCommunicationChannel(SessionFixture::serialSettings()));
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->takeEvents().count(established), 1); // of the session that the receiver began
}

void TstReentrance::reopeningWhenTheInitialisationTimesOut()
{
    s->bringTo(SessionState::ModuleWalk);
    once(&Communication::Signal_DebugMsg, [this] { reopen(); });
    s->time.advance(3800);
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->events.count(QStringLiteral("CleanSlate")), 1);
}

void TstReentrance::reopeningWhenTheLinkIsLostInATimeout()
{
    s->bringTo(SessionState::ModuleWalk);
    once(&Communication::passRetryPort, [this] {
        s->serial->lost = false;
        reopen();
    });
    s->serial->lost = true;
    s->time.advance(3800);
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->takeEvents().count(QStringLiteral("CleanSlate")), 1);
}

void TstReentrance::reopeningWhenFirmwareCommandsAreDropped_data()
{
    causes();
}

void TstReentrance::reopeningWhenFirmwareCommandsAreDropped()
{
    QFETCH(QString, reason);
    s->bringTo(SessionState::Cyclic);
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    once(&Communication::firmwareCommandsDropped, [this] { reopen(); });
    cause(reason);
    QCOMPARE(s->sent().count(kSystemRequest), 1); // of the session that the receiver began
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->reply(device::systemStatus({}, true));
    QCOMPARE(s->comm->state(), SessionState::ModuleWalk);
}

void TstReentrance::openingTheOtherLinkWhileOneOpens()
{
    once(&Communication::Signal_CleanSlateProtocol,
         [this] { s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings()); });
    QVERIFY(s->comm->OpenCommunicationChannel(SessionFixture::serialSettings()));
    QVERIFY(!s->serial->IsOpen());
    QVERIFY(s->tcp->IsConnected());
    QCOMPARE(s->serial->takePayloads().size(), 0);
    QCOMPARE(s->tcp->takePayloads().size(), 1);
}

void TstReentrance::closingTheLinkKeepsTheFrameInHand()
{
    s->bringTo(SessionState::Cyclic);
    once(&Communication::packetRecvd, [this] { s->comm->closeSerialChannel(); });
    s->reply(device::fastSystemStatus());
    QCOMPARE(s->takeEvents(), QStringList({QStringLiteral("packetRecvd"), QStringLiteral("FastSystemStatus"),
                                           QStringLiteral("RcvPayload")}));
}

void TstReentrance::payloadOfTheCallerMayBeEmptied()
{
    s->bringTo(SessionState::SystemStatusAwaited);
    QByteArray payload = device::systemStatus({}, true);
    once(&Communication::Signal_DebugMsg, [&payload] { payload.clear(); });
    s->comm->ExtractReceivedPayLoadData(payload);
    s->reply(device::moduleStatus(0, 100));
    QCOMPARE(s->sent(), (QList<QByteArray>{"1200000000", "1200000081"})); // the power module was seen
}

QTEST_GUILESS_MAIN(TstReentrance)
#include "tst_reentrance.moc"
