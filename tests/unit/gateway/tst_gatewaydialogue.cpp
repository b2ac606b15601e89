#include "gateway/gatewaydialogue.h"
#include "support/virtualtime.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>
#include <functional>
#include <memory>
#include <utility>

using gateway::Status;

Q_DECLARE_METATYPE(std::function<void(GatewayDialogue &)>)

namespace {

const QByteArray
    kStatus("#S;;1.07;2;;3;2500;16;TCP-C;L;18;192.168.0.22;5675;2;;;;123;41.5;33.25;;;;;;;;;60000;"
            "1772440200;;2;1;2;SLAVE;-17;10;700;IENA-1\r\n");
const QByteArray kPrompt("\r\n[root]----");
const QByteArray kRequest("#?\r");

} // namespace

/// The dialogue with the gateway: what goes out, what is shown, when the status is asked for.
class TstGatewayDialogue : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingHappensByItself();
    void aSettingIsKeptAndSent_data();
    void aSettingIsKeptAndSent();
    void modeOffRepeatsTheLastMode();
    void modeOffBeforeAnyOtherSendsTheFirstText();
    void anUnknownProtocolRepeatsTheLastOne();
    void aCommandThatChangesNoSettingIsSent();
    void aCommandIsShownAsItGoesOut();
    void theLineIsShownBeforeItGoesOut();
    void theClockIsSetToThePresentTime();
    void aPieceIsShownWithALineEnd();
    void aPieceIsTextOfOneCharacterPerByte();
    void aLongPieceIsShownInPart();
    void aPromptAsksForTheStatusAtOnce();
    void theStatusIsAskedForEverySecond();
    void aPieceWithoutPromptStartsThePollingToo_data();
    void aPieceWithoutPromptStartsThePollingToo();
    void furtherPiecesDoNotPutThePollingOff();
    void aStatusDoesNotStartThePolling();
    void aStatusIsRead();
    void aStatusThatIsNotValidDoesNothing();
    void aStatusAndAPromptCountAsAStatusOnly();
    void aStatusChangesNoSettingAndSendsNothing();
    void aStatusCutInTwoIsIgnored();
    void aPromptCutInTwoOnlyStartsThePolling();
    void pollingStopsAndStartsAgain();
    void aReceiverMayStopThePollingWithinTheRequest();
    void theNewAddressIsFollowed();
    void theNewAddressIsFollowedAfterThePrompt();
    void noAddressIsFollowedWhereNoneIsPending();
    void theNewAddressWithinAStatusIsNotFollowed();
    void anotherPeriodMayBeChosen();
    void destructionEndsThePolling();
    void aMegabyte_data();
    void aMegabyte();
    void randomBytes();

private:
    void makeDialogue(std::chrono::milliseconds period = GatewayDialogue::kPollPeriod);
    QByteArrayList takeLines();
    QString takeShown();

    QStringList m_events; ///< what was emitted, in order: "line", "text", "status", "address"
    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<GatewayDialogue> m_dialogue;
    QByteArrayList m_lines;
    QString m_shown;
    QList<bool> m_follows;
    QList<Status> m_statuses;
    QStringList m_addresses;
};

void TstGatewayDialogue::init()
{
    m_time = std::make_unique<VirtualTime>();
    makeDialogue();
}

void TstGatewayDialogue::cleanup()
{
    m_dialogue.reset();
    m_time.reset();
}

void TstGatewayDialogue::makeDialogue(std::chrono::milliseconds period)
{
    m_dialogue = std::make_unique<GatewayDialogue>(*m_time, nullptr, period);
    m_events.clear();
    m_lines.clear();
    m_shown.clear();
    m_follows.clear();
    m_statuses.clear();
    m_addresses.clear();
    GatewayDialogue *dialogue = m_dialogue.get();
    connect(dialogue, &GatewayDialogue::lineReady, this, [this](const QByteArray &line) {
        m_events << QStringLiteral("line");
        m_lines << line;
    });
    connect(dialogue, &GatewayDialogue::textToShow, this, [this](const QString &text, bool follow) {
        m_events << QStringLiteral("text");
        m_shown += text;
        m_follows << follow;
    });
    connect(dialogue, &GatewayDialogue::statusRead, this, [this](const Status &status) {
        m_events << QStringLiteral("status");
        m_statuses << status;
    });
    connect(dialogue, &GatewayDialogue::addressChanged, this, [this](const QString &address) {
        m_events << QStringLiteral("address");
        m_addresses << address;
    });
}

QByteArrayList TstGatewayDialogue::takeLines()
{
    return std::exchange(m_lines, QByteArrayList());
}

QString TstGatewayDialogue::takeShown()
{
    return std::exchange(m_shown, QString());
}

void TstGatewayDialogue::nothingHappensByItself()
{
    m_time->advance(60000);
    QCOMPARE(m_events, QStringList());
    QCOMPARE(m_time->activeTimers(), 0);
    const GatewaySettings &settings = m_dialogue->settings();
    QCOMPARE(settings.pendingAddress, QString());
    QCOMPARE(settings.gatewayMode, QStringLiteral("UDP"));
    QCOMPARE(settings.channelCount, QStringLiteral("16"));
    QCOMPARE(settings.bitRate, QStringLiteral("2500"));
    QCOMPARE(settings.dataLength, QStringLiteral("16"));
    QCOMPARE(settings.endian, QStringLiteral("B"));
    QCOMPARE(settings.simulation, QStringLiteral("1"));
    QCOMPARE(settings.activeCom, QStringLiteral("2"));
    QCOMPARE(settings.dataFormat, QStringLiteral("U"));
    QCOMPARE(settings.ptpMode, QStringLiteral("0"));
    QCOMPARE(settings.dataProtocol, QStringLiteral("ZRT-1"));
    QCOMPARE(settings.epochTime, QStringLiteral("12345"));
    QCOMPARE(settings.extAddress, QStringLiteral("192.168.0.22"));
    QCOMPARE(settings.extPort, QStringLiteral("5675"));
}

void TstGatewayDialogue::aSettingIsKeptAndSent_data()
{
    using Action = std::function<void(GatewayDialogue &)>;
    QTest::addColumn<Action>("action");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *line, const Action &action) {
        QTest::newRow(line) << action << QByteArray(line) + '\r' << QString::fromLatin1(line) + '\n';
    };
    row("#006_0", [](GatewayDialogue &dialogue) { dialogue.setSimulation(0); });
    row("#006_8", [](GatewayDialogue &dialogue) { dialogue.setSimulation(8); });
    row("#007_625:256", [](GatewayDialogue &dialogue) {
        dialogue.setDataRate(QStringLiteral("625"), QStringLiteral("256"));
    });
    row("#009_UDP-B", [](GatewayDialogue &dialogue) { dialogue.setMode(0); });
    row("#009_UDP-M", [](GatewayDialogue &dialogue) { dialogue.setMode(1); });
    row("#009_UDP-U", [](GatewayDialogue &dialogue) { dialogue.setMode(2); });
    row("#009_TCP-S", [](GatewayDialogue &dialogue) { dialogue.setMode(3); });
    row("#009_TCP-C", [](GatewayDialogue &dialogue) { dialogue.setMode(4); });
    row("#010_L", [](GatewayDialogue &dialogue) { dialogue.setEndian(gateway::ByteOrder::Little); });
    row("#010_B", [](GatewayDialogue &dialogue) { dialogue.setEndian(gateway::ByteOrder::Big); });
    row("#011_16", [](GatewayDialogue &dialogue) { dialogue.setDataLength(gateway::SampleWidth::Bits16); });
    row("#011_18", [](GatewayDialogue &dialogue) { dialogue.setDataLength(gateway::SampleWidth::Bits18); });
    row("#012_10.0.0.9:8888", [](GatewayDialogue &dialogue) {
        dialogue.setExternalServer(QStringLiteral("10.0.0.9"), QStringLiteral("8888"));
    });
    row("#014_U", [](GatewayDialogue &dialogue) { dialogue.setDataFormat(gateway::SampleFormat::Unsigned); });
    row("#014_2",
        [](GatewayDialogue &dialogue) { dialogue.setDataFormat(gateway::SampleFormat::TwosComplement); });
    row("#032_0", [](GatewayDialogue &dialogue) { dialogue.setActiveCom(0); });
    row("#032_3", [](GatewayDialogue &dialogue) { dialogue.setActiveCom(3); });
    row("#034_0", [](GatewayDialogue &dialogue) { dialogue.setPtpMode(0); });
    row("#034_2", [](GatewayDialogue &dialogue) { dialogue.setPtpMode(2); });
    row("#039_ZRT-1", [](GatewayDialogue &dialogue) { dialogue.setDataProtocol(0); });
    row("#039_IENA-1", [](GatewayDialogue &dialogue) { dialogue.setDataProtocol(1); });
    QTest::newRow("gateway.addr=") << Action([](GatewayDialogue &dialogue) {
        dialogue.changeAddress(QStringLiteral("10.0.0.1"));
    }) << QByteArray("gateway.addr=10.0.0.1\r")
                                   << QString();
}

void TstGatewayDialogue::aSettingIsKeptAndSent()
{
    QFETCH(std::function<void(GatewayDialogue &)>, action);
    QFETCH(QByteArray, line);
    QFETCH(QString, shown);
    action(*m_dialogue);
    QCOMPARE(takeLines(), QByteArrayList{line});
    QCOMPARE(takeShown(), shown);
    QCOMPARE(m_follows, shown.isEmpty() ? QList<bool>() : QList<bool>{true});
    // Kept: the settings make the same line again.
    const GatewaySettings &settings = m_dialogue->settings();
    const QByteArrayList kept{
        gateway::lineOf(gateway::simulation(settings)),     gateway::lineOf(gateway::dataRate(settings)),
        gateway::lineOf(gateway::mode(settings)),           gateway::lineOf(gateway::endian(settings)),
        gateway::lineOf(gateway::dataLength(settings)),     gateway::lineOf(gateway::dataFormat(settings)),
        gateway::lineOf(gateway::externalServer(settings)), gateway::lineOf(gateway::activeCom(settings)),
        gateway::lineOf(gateway::ptpMode(settings)),        gateway::lineOf(gateway::dataProtocol(settings)),
        gateway::lineOf(gateway::changeAddress(settings))};
    QVERIFY(kept.contains(line));
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayDialogue::modeOffRepeatsTheLastMode()
{
    m_dialogue->setMode(3);
    m_dialogue->setMode(5);
    QCOMPARE(takeLines(), (QByteArrayList{"#009_TCP-S\r", "#009_TCP-S\r"}));
    QCOMPARE(m_dialogue->settings().gatewayMode, QStringLiteral("TCP-S"));
}

void TstGatewayDialogue::modeOffBeforeAnyOtherSendsTheFirstText()
{
    m_dialogue->setMode(5);
    m_dialogue->setMode(-1);
    QCOMPARE(takeLines(), (QByteArrayList{"#009_UDP\r", "#009_UDP\r"}));
}

void TstGatewayDialogue::anUnknownProtocolRepeatsTheLastOne()
{
    m_dialogue->setDataProtocol(1);
    m_dialogue->setDataProtocol(2);
    m_dialogue->setDataProtocol(-1);
    QCOMPARE(takeLines(), (QByteArrayList{"#039_IENA-1\r", "#039_IENA-1\r", "#039_IENA-1\r"}));
}

void TstGatewayDialogue::aCommandThatChangesNoSettingIsSent()
{
    m_dialogue->send(gateway::reboot());
    m_dialogue->send(gateway::restart());
    QCOMPARE(m_events, (QStringList{"line", "line"}));
    m_dialogue->send(gateway::emptyLine());
    m_dialogue->send(gateway::debug());
    m_dialogue->send(gateway::minimumSamples(QString()));
    QCOMPARE(takeLines(), (QByteArrayList{"reboot\r", "restart\r", "\r", "#000_1\r", "#037_\r"}));
    QCOMPARE(takeShown(), QStringLiteral("\n#000_1\n#037_\n"));
    QCOMPARE(m_follows, (QList<bool>{true, true, true}));
}

void TstGatewayDialogue::aCommandIsShownAsItGoesOut()
{
    m_dialogue->setExternalServer(QStringLiteral("a\r\nb"), QString(QChar(0x20ac)) + QChar(0xe4));
    QCOMPARE(takeLines(), QByteArrayList{"#012_ab:?\xe4\r"});
    QCOMPARE(takeShown(), QStringLiteral("#012_ab:?") + QChar(0xe4) + QLatin1Char('\n'));
}

void TstGatewayDialogue::theLineIsShownBeforeItGoesOut()
{
    m_dialogue->send(gateway::debug());
    QCOMPARE(m_events, (QStringList{"text", "line"}));
}

void TstGatewayDialogue::theClockIsSetToThePresentTime()
{
    m_dialogue->setClock(); // 2026-03-02 08:30:00
    m_time->advance(1234);
    m_dialogue->setClock();
    QCOMPARE(takeLines(), (QByteArrayList{"#030_1772440200000000000\r", "#030_1772440201234000000\r"}));
    QCOMPARE(takeShown(), QStringLiteral("#030_1772440200000000000\n#030_1772440201234000000\n"));
    QCOMPARE(m_dialogue->settings().epochTime, QStringLiteral("1772440201234000000"));
}

void TstGatewayDialogue::aPieceIsShownWithALineEnd()
{
    m_dialogue->takePiece("hello\r\n");
    m_dialogue->takePiece(QByteArray());
    m_dialogue->takePiece(kStatus);
    QCOMPARE(takeShown(), QStringLiteral("hello\r\n\n\n") + QString::fromLatin1(kStatus) + QLatin1Char('\n'));
    QCOMPARE(m_follows, (QList<bool>{false, false, false}));
}

void TstGatewayDialogue::aPieceIsTextOfOneCharacterPerByte()
{
    m_dialogue->takePiece(QByteArray("a\0\xe4\xc3\xa4", 5));
    const ushort expected[] = {'a', 0, 0xe4, 0xc3, 0xa4, '\n'};
    QCOMPARE(takeShown(), QString::fromUtf16(expected, 6));
    m_dialogue->takePiece(QByteArray("\0]----", 6));
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayDialogue::aLongPieceIsShownInPart()
{
    const QString head(4096, QLatin1Char('x'));
    m_dialogue->takePiece(head.toLatin1());
    QCOMPARE(takeShown(), head + QLatin1Char('\n'));
    m_dialogue->takePiece(head.toLatin1() + "yz");
    QCOMPARE(takeShown(), head + QStringLiteral(" [2 more characters]\n"));
    // All of it is read.
    takeLines();
    m_dialogue->takePiece(head.toLatin1() + "]----");
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayDialogue::aPromptAsksForTheStatusAtOnce()
{
    m_dialogue->takePiece(kPrompt);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
    QCOMPARE(takeShown(), QStringLiteral("\r\n[root]----\n#?"));
    QCOMPARE(m_follows, (QList<bool>{false, false}));
}

void TstGatewayDialogue::theStatusIsAskedForEverySecond()
{
    m_dialogue->takePiece(kPrompt);
    takeLines();
    for (int second = 0; second < 3; ++second) {
        m_time->advance(999);
        QCOMPARE(takeLines(), QByteArrayList());
        m_time->advance(1);
        QCOMPARE(takeLines(), QByteArrayList{kRequest});
    }
    QCOMPARE(takeShown(), QStringLiteral("\r\n[root]----\n#?#?#?#?"));
    QVERIFY(!m_follows.contains(true));
}

void TstGatewayDialogue::aPieceWithoutPromptStartsThePollingToo_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("greeting") << QByteArray("hello");
    QTest::newRow("echo") << QByteArray("#?");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("zero byte") << QByteArray(1, '\0');
}

void TstGatewayDialogue::aPieceWithoutPromptStartsThePollingToo()
{
    QFETCH(QByteArray, piece);
    m_dialogue->takePiece(piece);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(999);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayDialogue::furtherPiecesDoNotPutThePollingOff()
{
    m_dialogue->takePiece(kPrompt);
    m_time->advance(600);
    m_dialogue->takePiece(kPrompt);
    QCOMPARE(takeLines(), (QByteArrayList{kRequest, kRequest}));
    m_time->advance(399);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
    QCOMPARE(m_time->activeTimers(), 1);
}

void TstGatewayDialogue::aStatusDoesNotStartThePolling()
{
    m_dialogue->takePiece(kStatus);
    m_dialogue->takePiece("#S;;;1\r\n");
    QCOMPARE(m_time->activeTimers(), 0);
    QCOMPARE(takeLines(), QByteArrayList());
}

void TstGatewayDialogue::aStatusIsRead()
{
    m_dialogue->takePiece(kStatus);
    QCOMPARE(m_events, (QStringList{"text", "status"}));
    QCOMPARE(m_statuses.first().version, QStringLiteral("1.07"));
    QCOMPARE(m_statuses.first().dataProtocol, std::optional<int>(1));
}

void TstGatewayDialogue::aStatusThatIsNotValidDoesNothing()
{
    m_dialogue->takePiece("#S;;1.07;1;;3 ]---- [NEW IP ADDRESS");
    QCOMPARE(m_events, QStringList{"text"});
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayDialogue::aStatusAndAPromptCountAsAStatusOnly()
{
    m_dialogue->takePiece(kStatus + kPrompt);
    m_dialogue->takePiece(kPrompt + "\r\n" + kStatus);
    QCOMPARE(m_statuses.size(), 2);
    QCOMPARE(takeLines(), QByteArrayList());
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayDialogue::aStatusChangesNoSettingAndSendsNothing()
{
    m_dialogue->takePiece(kStatus);
    QCOMPARE(takeLines(), QByteArrayList());
    m_dialogue->setMode(5);
    QCOMPARE(takeLines(), QByteArrayList{"#009_UDP\r"});
    QCOMPARE(m_dialogue->settings().extAddress, QStringLiteral("192.168.0.22"));
    QCOMPARE(m_dialogue->settings().endian, QStringLiteral("B"));
    QCOMPARE(m_dialogue->settings().dataProtocol, QStringLiteral("ZRT-1"));
    QCOMPARE(m_dialogue->settings().simulation, QStringLiteral("1"));
}

void TstGatewayDialogue::aStatusCutInTwoIsIgnored()
{
    constexpr int kCut = 5; // within the version
    m_dialogue->takePiece(kStatus.left(kCut));
    QCOMPARE(m_time->activeTimers(), 0);
    m_dialogue->takePiece(kStatus.mid(kCut));
    QCOMPARE(m_statuses.size(), 0);
    QCOMPARE(takeLines(), QByteArrayList());
    // The second half counts as any other text.
    QCOMPARE(m_time->activeTimers(), 1);
    m_dialogue->takePiece(kStatus);
    QCOMPARE(m_statuses.size(), 1);
}

void TstGatewayDialogue::aPromptCutInTwoOnlyStartsThePolling()
{
    m_dialogue->takePiece("[root]-");
    m_dialogue->takePiece("---");
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1000);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayDialogue::pollingStopsAndStartsAgain()
{
    m_dialogue->stopPolling(); // without having begun
    m_dialogue->takePiece(kPrompt);
    m_time->advance(700);
    m_dialogue->stopPolling();
    takeLines();
    m_time->advance(60000);
    QCOMPARE(takeLines(), QByteArrayList());
    m_dialogue->takePiece("hello");
    m_time->advance(999);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayDialogue::aReceiverMayStopThePollingWithinTheRequest()
{
    connect(m_dialogue.get(), &GatewayDialogue::lineReady, m_dialogue.get(), &GatewayDialogue::stopPolling);
    m_dialogue->takePiece(kPrompt);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayDialogue::theNewAddressIsFollowed()
{
    m_dialogue->changeAddress(QStringLiteral("10.0.0.1"));
    QCOMPARE(m_addresses, QStringList());
    m_dialogue->takePiece("\r\n[NEW IP ADDRESS 10.0.0.1]\r\n");
    QCOMPARE(m_addresses, QStringList{"10.0.0.1"});
    QCOMPARE(m_time->activeTimers(), 1);
    QCOMPARE(takeLines(), QByteArrayList{"gateway.addr=10.0.0.1\r"});
}

void TstGatewayDialogue::theNewAddressIsFollowedAfterThePrompt()
{
    m_dialogue->changeAddress(QStringLiteral("10.0.0.1"));
    m_events.clear();
    m_dialogue->takePiece("[NEW IP ADDRESS]\r\n[root]----");
    QCOMPARE(m_events, (QStringList{"text", "text", "line", "address"}));
}

void TstGatewayDialogue::noAddressIsFollowedWhereNoneIsPending()
{
    m_dialogue->takePiece("[NEW IP ADDRESS 10.0.0.1]");
    m_dialogue->changeAddress(QString());
    m_dialogue->takePiece("[NEW IP ADDRESS 10.0.0.1]");
    QCOMPARE(m_addresses, QStringList());
}

void TstGatewayDialogue::theNewAddressWithinAStatusIsNotFollowed()
{
    m_dialogue->changeAddress(QStringLiteral("10.0.0.1"));
    m_dialogue->takePiece(kStatus + "[NEW IP ADDRESS 10.0.0.1]");
    QCOMPARE(m_addresses, QStringList());
}

void TstGatewayDialogue::anotherPeriodMayBeChosen()
{
    makeDialogue(std::chrono::milliseconds(20));
    m_dialogue->takePiece("hello");
    m_time->advance(19);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayDialogue::destructionEndsThePolling()
{
    m_dialogue->takePiece(kPrompt);
    QCOMPARE(m_time->activeTimers(), 1);
    m_dialogue.reset();
    m_events.clear();
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(5000);
    QCOMPARE(m_events, QStringList());
}

void TstGatewayDialogue::aMegabyte_data()
{
    constexpr int kMegabyte = 1024 * 1024;
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<QByteArrayList>("lines");
    QTest::newRow("separators") << QByteArray(kMegabyte, ';') << QByteArrayList();
    QTest::newRow("tags") << QByteArray("#S").repeated(kMegabyte / 2) << QByteArrayList();
    QTest::newRow("zero bytes") << QByteArray(kMegabyte, '\0') << QByteArrayList();
    QTest::newRow("zero bytes and a prompt")
        << QByteArray(kMegabyte, '\0') + kPrompt << QByteArrayList{kRequest};
    QTest::newRow("prompts") << QByteArray("]----").repeated(kMegabyte / 5) << QByteArrayList{kRequest};
    QTest::newRow("line ends") << QByteArray(kMegabyte, '\n') << QByteArrayList();
}

void TstGatewayDialogue::aMegabyte()
{
    constexpr int kLimitMs = 5000; // for work that grows with the size; with its square it takes minutes
    constexpr int kShown = 4096;
    constexpr int kNote = 40;
    QFETCH(QByteArray, piece);
    QElapsedTimer timer;
    timer.start();
    m_dialogue->takePiece(piece);
    QVERIFY2(timer.elapsed() < kLimitMs, qPrintable(QString::number(timer.elapsed())));
    QTEST(takeLines(), "lines");
    QCOMPARE(m_statuses.size(), 0);
    QVERIFY(m_shown.size() > kShown);
    QVERIFY(m_shown.size() < kShown + kNote);
    QVERIFY(m_shown.startsWith(QString::fromLatin1(piece.constData(), kShown)));
}

void TstGatewayDialogue::randomBytes()
{
    QRandomGenerator random(7);
    QByteArray all;
    for (int round = 0; round < 5000; ++round) {
        QByteArray piece(random.bounded(100), '\0');
        for (char &byte : piece)
            byte = char(random.bounded(256));
        m_dialogue->takePiece(piece);
        all += piece + '\n';
    }
    // No such text came up, so nothing was sent but the requests of the timer.
    QVERIFY(!all.contains("]----"));
    QCOMPARE(takeLines(), QByteArrayList());
    QCOMPARE(m_time->activeTimers(), 1);
    QCOMPARE(takeShown(), QString::fromLatin1(all.constData(), all.size()));
}

QTEST_GUILESS_MAIN(TstGatewayDialogue)
#include "tst_gatewaydialogue.moc"
