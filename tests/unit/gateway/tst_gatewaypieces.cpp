#include "gatewaydialoguetest.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

namespace {

const QByteArray
    kStatus("#S;;1.07;2;;3;2500;16;TCP-C;L;18;192.168.0.22;5675;2;;;;123;41.5;33.25;;;;;;;;;60000;"
            "1772440200;;2;1;2;SLAVE;-17;10;700;IENA-1\r\n");
const QByteArray kPrompt("\r\n[root]----");
const QByteArray kRequest("#?\r");

} // namespace

/// What the dialogue does with each piece that comes in, and when it asks for the status.
class TstGatewayPieces : public GatewayDialogueTest
{
    Q_OBJECT

private slots:
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
    void theNewAddressIsFollowedOnceForEachCommand();
    void theNewAddressWithinAStatusIsNotFollowed();
    void anotherPeriodMayBeChosen();
    void destructionEndsThePolling();
    void aMegabyte_data();
    void aMegabyte();
    void randomBytes();
};

void TstGatewayPieces::aPieceIsShownWithALineEnd()
{
    m_dialogue->takePiece("hello\r\n");
    m_dialogue->takePiece(QByteArray());
    m_dialogue->takePiece(kStatus);
    QCOMPARE(takeShown(), QStringLiteral("hello\r\n\n\n") + QString::fromLatin1(kStatus) + QLatin1Char('\n'));
    QCOMPARE(m_follows, (QList<bool>{false, false, false}));
}

void TstGatewayPieces::aPieceIsTextOfOneCharacterPerByte()
{
    m_dialogue->takePiece(QByteArray("a\0\xe4\xc3\xa4", 5));
    const ushort expected[] = {'a', 0, 0xe4, 0xc3, 0xa4, '\n'};
    QCOMPARE(takeShown(), QString::fromUtf16(expected, 6));
    m_dialogue->takePiece(QByteArray("\0]----", 6));
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayPieces::aLongPieceIsShownInPart()
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

void TstGatewayPieces::aPromptAsksForTheStatusAtOnce()
{
    m_dialogue->takePiece(kPrompt);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
    QCOMPARE(takeShown(), QStringLiteral("\r\n[root]----\n#?"));
    QCOMPARE(m_follows, (QList<bool>{false, false}));
}

void TstGatewayPieces::theStatusIsAskedForEverySecond()
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

void TstGatewayPieces::aPieceWithoutPromptStartsThePollingToo_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("greeting") << QByteArray("hello");
    QTest::newRow("echo") << QByteArray("#?");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("zero byte") << QByteArray(1, '\0');
}

void TstGatewayPieces::aPieceWithoutPromptStartsThePollingToo()
{
    QFETCH(QByteArray, piece);
    m_dialogue->takePiece(piece);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(999);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayPieces::furtherPiecesDoNotPutThePollingOff()
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

void TstGatewayPieces::aStatusDoesNotStartThePolling()
{
    m_dialogue->takePiece(kStatus);
    m_dialogue->takePiece("#S;;;1\r\n");
    QCOMPARE(m_time->activeTimers(), 0);
    QCOMPARE(takeLines(), QByteArrayList());
}

void TstGatewayPieces::aStatusIsRead()
{
    m_dialogue->takePiece(kStatus);
    QCOMPARE(m_events, (QStringList{"text", "status"}));
    QCOMPARE(m_statuses.first().version, QStringLiteral("1.07"));
    QCOMPARE(m_statuses.first().dataProtocol, std::optional<int>(1));
}

void TstGatewayPieces::aStatusThatIsNotValidDoesNothing()
{
    m_dialogue->takePiece("#S;;1.07;1;;3 ]---- [NEW IP ADDRESS");
    QCOMPARE(m_events, QStringList{"text"});
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayPieces::aStatusAndAPromptCountAsAStatusOnly()
{
    m_dialogue->takePiece(kStatus + kPrompt);
    m_dialogue->takePiece(kPrompt + "\r\n" + kStatus);
    QCOMPARE(m_statuses.size(), 2);
    QCOMPARE(takeLines(), QByteArrayList());
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayPieces::aStatusChangesNoSettingAndSendsNothing()
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

void TstGatewayPieces::aStatusCutInTwoIsIgnored()
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

void TstGatewayPieces::aPromptCutInTwoOnlyStartsThePolling()
{
    m_dialogue->takePiece("[root]-");
    m_dialogue->takePiece("---");
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1000);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayPieces::pollingStopsAndStartsAgain()
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

void TstGatewayPieces::aReceiverMayStopThePollingWithinTheRequest()
{
    connect(m_dialogue.get(), &GatewayDialogue::lineReady, m_dialogue.get(), &GatewayDialogue::stopPolling);
    m_dialogue->takePiece(kPrompt);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayPieces::theNewAddressIsFollowed()
{
    m_dialogue->changeAddress(QStringLiteral("10.0.0.1"));
    QCOMPARE(m_addresses, QStringList());
    m_dialogue->takePiece("\r\n[NEW IP ADDRESS 10.0.0.1]\r\n");
    QCOMPARE(m_addresses, QStringList{"10.0.0.1"});
    QCOMPARE(m_time->activeTimers(), 1);
    QCOMPARE(takeLines(), QByteArrayList{"gateway.addr=10.0.0.1\r"});
}

void TstGatewayPieces::theNewAddressIsFollowedAfterThePrompt()
{
    m_dialogue->changeAddress(QStringLiteral("10.0.0.1"));
    m_events.clear();
    m_dialogue->takePiece("[NEW IP ADDRESS]\r\n[root]----");
    QCOMPARE(m_events, (QStringList{"text", "text", "line", "address"}));
}

void TstGatewayPieces::noAddressIsFollowedWhereNoneIsPending()
{
    m_dialogue->takePiece("[NEW IP ADDRESS 10.0.0.1]");
    m_dialogue->changeAddress(QString());
    m_dialogue->takePiece("[NEW IP ADDRESS 10.0.0.1]");
    QCOMPARE(m_addresses, QStringList());
}

void TstGatewayPieces::theNewAddressIsFollowedOnceForEachCommand()
{
    m_dialogue->changeAddress(QStringLiteral("10.0.0.1"));
    m_dialogue->takePiece("[NEW IP ADDRESS 10.0.0.1]");
    m_dialogue->takePiece("[NEW IP ADDRESS 10.0.0.1]");
    QCOMPARE(m_addresses, QStringList{"10.0.0.1"});
    m_dialogue->changeAddress(QStringLiteral("10.0.0.2"));
    m_dialogue->takePiece("[NEW IP ADDRESS 10.0.0.2]");
    QCOMPARE(m_addresses, (QStringList{"10.0.0.1", "10.0.0.2"}));
}

void TstGatewayPieces::theNewAddressWithinAStatusIsNotFollowed()
{
    m_dialogue->changeAddress(QStringLiteral("10.0.0.1"));
    m_dialogue->takePiece(kStatus + "[NEW IP ADDRESS 10.0.0.1]");
    QCOMPARE(m_addresses, QStringList());
}

void TstGatewayPieces::anotherPeriodMayBeChosen()
{
    makeDialogue(std::chrono::milliseconds(20));
    m_dialogue->takePiece("hello");
    m_time->advance(19);
    QCOMPARE(takeLines(), QByteArrayList());
    m_time->advance(1);
    QCOMPARE(takeLines(), QByteArrayList{kRequest});
}

void TstGatewayPieces::destructionEndsThePolling()
{
    m_dialogue->takePiece(kPrompt);
    QCOMPARE(m_time->activeTimers(), 1);
    m_dialogue.reset();
    m_events.clear();
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(5000);
    QCOMPARE(m_events, QStringList());
}

void TstGatewayPieces::aMegabyte_data()
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

void TstGatewayPieces::aMegabyte()
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

void TstGatewayPieces::randomBytes()
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

QTEST_GUILESS_MAIN(TstGatewayPieces)
#include "tst_gatewaypieces.moc"
