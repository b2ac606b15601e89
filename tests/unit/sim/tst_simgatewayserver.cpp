#include "sim/gatewaysession.h"
#include "simgatewaytest.h"

using namespace std::chrono_literals;
using sim::DataRate;
using sim::Gateway;
using sim::GatewayServer;
using sim::GatewaySession;
using sim::GatewayState;

/// What the gateway makes of the bytes of its peers, on virtual time.
class TstSimGatewayServer : public SimGatewayTest
{
    Q_OBJECT

private slots:
    void greetsWithThePrompt();
    void statusComesAloneInOnePiece();
    void linesEndWithCr();
    void lineWithLfIsRefused();
    void linesArePutTogether();
    void longLineIsRefusedAndTheNextTaken();
    void clientsMeetTheSameGateway();
    void chainRateIsAskedEachTime();
    void piecesComeWithTheirGaps();
    void piecesWithoutAGapComeInTurnsOfTheirOwn();
    void answersKeepTheirOrder();
    void delayHoldsTheAnswerBack();
    void silentGatewayTakesNothing();
    void lostAnswerWasCarriedOut();
    void mergedAnswerIsOnePiece();
    void promptComesByItselfBehindTheAnswer();
    void promptComesBehindALineWithoutAnAnswer();
    void promptIsLostWithTheAnswer();
    void floodComesBeforeTheAnswer();
    void closeComesInPlaceOfTheAnswer();
    void linesBehindACloseAreNotTaken();
    void peerThatGoesBeforeItsAnswer();
    void restartEndsAllConnections();
    void moveEndsTheOldConnectionsALittleLater();
    void repeatedNewAddressDoesNotPutTheEndOff();
    void linesAreRememberedUpToACap();
    void logTellsBothDirections();

private:
    static QVector<QByteArray> texts(const FakeConnection *peer)
    {
        QVector<QByteArray> all;
        for (const auto &piece : peer->pieces)
            all.append(piece.bytes);
        return all;
    }
};

void TstSimGatewayServer::greetsWithThePrompt()
{
    FakeConnection *peer = m_link->plugIn();
    QCOMPARE(texts(peer), QVector<QByteArray>{Gateway::prompt()});
    QCOMPARE(m_server->connectionCount(), 1);
    m_time->advance(60s);
    QCOMPARE(peer->pieces.size(), 1);
    peer->unplug();
    QCOMPARE(m_server->connectionCount(), 0);
}

void TstSimGatewayServer::statusComesAloneInOnePiece()
{
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    QCOMPARE(texts(peer), QVector<QByteArray>{status()});
}

void TstSimGatewayServer::linesEndWithCr()
{
    FakeConnection *peer = plugIn();
    peer->write("#010_L");
    QCOMPARE(m_server->receivedLines(), QList<QByteArray>());
    peer->write("\r#009_OFF\r#?\r\r");
    QCOMPARE(m_server->receivedLines(), (QList<QByteArray>{"#010_L", "#009_OFF", "#?", ""}));
    QCOMPARE(m_server->refusals(), QStringList());
}

void TstSimGatewayServer::lineWithLfIsRefused()
{
    FakeConnection *peer = plugIn();
    peer->write("#010_L\r\n#011_18\r\n\r\n#?\r");
    peer->write("#009_OFF\n\r#037_5\r");
    QCOMPARE(m_server->receivedLines(), (QList<QByteArray>{"#010_L", "#037_5"}));
    QCOMPARE(m_server->state().dataLength, QString("16"));
    QCOMPARE(m_server->state().mode, QString("UDP-B"));
    QVERIFY(peer->pieces.isEmpty());
    QCOMPARE(m_server->refusals().count("the line has an LF"), 4);
    QCOMPARE(m_server->refusals().size(), 4);
    QCOMPARE(m_lines.filter("fake -- -> refused, the line has an LF").size(), 4);
}

void TstSimGatewayServer::linesArePutTogether()
{
    FakeConnection *peer = plugIn();
    for (const char byte : QByteArray("#009_TCP-S\r"))
        peer->write(QByteArray(1, byte));
    QCOMPARE(m_server->state().mode, QString("TCP-S"));
}

void TstSimGatewayServer::longLineIsRefusedAndTheNextTaken()
{
    FakeConnection *peer = plugIn();
    peer->write(QByteArray(GatewaySession::kLongestLine, 'a') + '\r');
    QCOMPARE(m_server->receivedLines().size(), 1);
    for (int i = 0; i < 64; ++i)
        peer->write(QByteArray(1 << 16, 'a'));
    peer->write("\r#?\r");
    QCOMPARE(m_server->receivedLines().size(), 2);
    QCOMPARE(texts(peer), QVector<QByteArray>{status()});
    QCOMPARE(m_lines.filter("refused, the line is too long").size(), 1);
    QCOMPARE(m_server->refusals(), QStringList("the line is too long"));
}

void TstSimGatewayServer::clientsMeetTheSameGateway()
{
    FakeConnection *first = plugIn();
    FakeConnection *second = plugIn();
    first->write("#010_");
    second->write("#011_18\r");
    first->write("L\r");
    second->write("#?\r");
    QVERIFY(first->pieces.isEmpty());
    QVERIFY(second->bytes().contains(";UDP-B;L;18;"));
    QCOMPARE(m_server->connectionCount(), 2);
}

void TstSimGatewayServer::chainRateIsAskedEachTime()
{
    DataRate rate{"2500", "16"};
    m_server->setChainRate([&rate] { return rate; });
    FakeConnection *peer = plugIn();
    const auto sync = [peer] {
        peer->pieces.clear();
        peer->write("#?\r");
        return peer->bytes().split(';').value(32);
    };
    QCOMPARE(sync(), QByteArray("1"));
    rate.channels = "32";
    QCOMPARE(sync(), QByteArray("0"));
    peer->write("#007_2500:32\r");
    QCOMPARE(sync(), QByteArray("1"));
}

void TstSimGatewayServer::piecesComeWithTheirGaps()
{
    load("cut size=50 gap=100 line=\"#?\"");
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    QCOMPARE(peer->pieces.size(), 1);
    QCOMPARE(peer->pieces.first().bytes, status().left(50));
    m_time->advance(99);
    QCOMPARE(peer->pieces.size(), 1);
    m_time->advance(1000);
    QCOMPARE(peer->pieces.size(), 3);
    QCOMPARE(int(peer->pieces.at(1).atMs), 100);
    QCOMPARE(int(peer->pieces.at(2).atMs), 200);
    QCOMPARE(peer->bytes(), status());
}

void TstSimGatewayServer::piecesWithoutAGapComeInTurnsOfTheirOwn()
{
    load("cut size=60 line=\"#?\"");
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    QCOMPARE(peer->pieces.size(), 1);
    m_time->turn();
    QCOMPARE(peer->pieces.size(), 2);
    QCOMPARE(peer->bytes(), status());
}

void TstSimGatewayServer::answersKeepTheirOrder()
{
    load("delay ms=500 line=\"#?\" nth=1");
    FakeConnection *peer = plugIn();
    peer->write("#?\r\r");
    QVERIFY(peer->pieces.isEmpty());
    m_time->advance(1000);
    QCOMPARE(texts(peer), (QVector<QByteArray>{status(), Gateway::prompt()}));
}

void TstSimGatewayServer::delayHoldsTheAnswerBack()
{
    load("delay ms=300");
    FakeConnection *peer = m_link->plugIn();
    m_time->advance(299);
    QVERIFY(peer->pieces.isEmpty());
    m_time->advance(1);
    QCOMPARE(texts(peer), QVector<QByteArray>{Gateway::prompt()});
}

void TstSimGatewayServer::silentGatewayTakesNothing()
{
    load("silent");
    FakeConnection *peer = m_link->plugIn();
    peer->write("#010_L\r#?\rgateway.addr=127.0.0.9\rreboot\r");
    m_time->advance(10s);
    QVERIFY(peer->pieces.isEmpty());
    QCOMPARE(int(peer->closedAtMs), -1);
    QCOMPARE(m_server->state().endian, QString("B"));
    QCOMPARE(m_server->state().address, QString("127.0.0.1"));
    QCOMPARE(m_server->receivedLines().size(), 4);
}

void TstSimGatewayServer::lostAnswerWasCarriedOut()
{
    load("lose line=\"gateway\"\nlose line=\"#?\" nth=1");
    FakeConnection *peer = plugIn();
    peer->write("gateway.addr=10.0.0.1\r#?\r");
    QVERIFY(peer->pieces.isEmpty());
    QCOMPARE(m_server->state().address, QString("10.0.0.1"));
    peer->write("#?\r");
    QCOMPARE(texts(peer), QVector<QByteArray>{status()});
}

void TstSimGatewayServer::mergedAnswerIsOnePiece()
{
    load("merge line=\"#?\"");
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    QCOMPARE(texts(peer), QVector<QByteArray>{status() + Gateway::prompt()});
}

void TstSimGatewayServer::promptComesByItselfBehindTheAnswer()
{
    load("prompt gap=30 line=\"#?\"\ncut size=100 gap=50 line=\"#?\"");
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    m_time->advance(10s);
    QCOMPARE(texts(peer), (QVector<QByteArray>{status().left(100), status().mid(100), Gateway::prompt()}));
    QCOMPARE(int(peer->pieces.at(1).atMs), 50);
    QCOMPARE(int(peer->pieces.at(2).atMs), 80);
}

void TstSimGatewayServer::promptComesBehindALineWithoutAnAnswer()
{
    load("prompt gap=30 line=\"#010_\"\ndelay ms=5 line=\"#010_\"");
    FakeConnection *peer = plugIn();
    peer->write("#010_L\r");
    m_time->advance(34);
    QVERIFY(peer->pieces.isEmpty());
    m_time->advance(1);
    QCOMPARE(texts(peer), QVector<QByteArray>{Gateway::prompt()});
    QCOMPARE(m_server->state().endian, QString("L"));
}

void TstSimGatewayServer::promptIsLostWithTheAnswer()
{
    load("prompt line=\"#?\"\nlose line=\"#?\"");
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    m_time->advance(10s);
    QVERIFY(peer->pieces.isEmpty());
    QCOMPARE(m_lines.filter("<- lost, ").size(), 2);
}

void TstSimGatewayServer::floodComesBeforeTheAnswer()
{
    load("flood bytes=1000000 line=\"#?\"");
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    QCOMPARE(peer->bytes(), QByteArray(1000000, 'x') + status());
    const QString line = m_lines.filter(" <- \"x").value(0);
    QVERIFY2(line.endsWith(QString("x\" and %1 bytes more").arg(1000000 + status().size() - 400)),
             qPrintable(line.right(60)));
}

void TstSimGatewayServer::closeComesInPlaceOfTheAnswer()
{
    load("close line=\"#?\"");
    FakeConnection *peer = plugIn();
    FakeConnection *other = plugIn();
    m_time->advance(50);
    peer->write("#?\r");
    QVERIFY(peer->pieces.isEmpty());
    QCOMPARE(int(peer->closedAtMs), 50);
    QCOMPARE(int(other->closedAtMs), -1);
}

void TstSimGatewayServer::linesBehindACloseAreNotTaken()
{
    load("close line=\"#010_\"");
    FakeConnection *peer = plugIn();
    peer->write("#010_L\r#011_18\r");
    peer->write("#009_OFF\r");
    QCOMPARE(m_server->receivedLines(), QList<QByteArray>{"#010_L"});
}

void TstSimGatewayServer::peerThatGoesBeforeItsAnswer()
{
    load("delay ms=100 line=\"#?\"\ncut size=1 gap=1");
    FakeConnection *peer = plugIn();
    peer->write("#?\r");
    peer->unplug();
    m_time->advance(1000);
    QCOMPARE(m_server->connectionCount(), 0);
    QCOMPARE(m_lines.filter("disconnected").size(), 1);
}

void TstSimGatewayServer::restartEndsAllConnections()
{
    FakeConnection *first = plugIn();
    FakeConnection *second = plugIn();
    m_time->advance(7);
    first->write("restart\r");
    QCOMPARE(int(first->closedAtMs), 7);
    QCOMPARE(int(second->closedAtMs), 7);
    QVERIFY(first->pieces.isEmpty() && second->pieces.isEmpty());
}

void TstSimGatewayServer::moveEndsTheOldConnectionsALittleLater()
{
    FakeConnection *first = plugIn();
    FakeConnection *second = plugIn();
    FakeConnection *third = plugIn();
    first->write("gateway.addr=10.0.0.1\r");
    QCOMPARE(texts(first), QVector<QByteArray>{"[NEW IP ADDRESS 10.0.0.1]\r\n"});
    QVERIFY(second->pieces.isEmpty());
    third->unplug();
    FakeConnection *later = plugIn();
    m_time->advance(199);
    QCOMPARE(int(first->closedAtMs), -1);
    m_time->advance(1);
    QCOMPARE(int(first->closedAtMs), 200);
    QCOMPARE(int(second->closedAtMs), 200);
    QCOMPARE(int(later->closedAtMs), -1);
}

void TstSimGatewayServer::repeatedNewAddressDoesNotPutTheEndOff()
{
    FakeConnection *peer = plugIn();
    FakeConnection *other = nullptr;
    for (int ms = 0; ms < 200; ms += 20) {
        peer->write("gateway.addr=10.0.0.1\r");
        if (!other)
            other = plugIn(); // behind the first command, so the later ones name it
        QCOMPARE(int(peer->closedAtMs), -1);
        m_time->advance(20);
    }
    QCOMPARE(int(peer->closedAtMs), 200);
    QCOMPARE(int(other->closedAtMs), 200);
    QCOMPARE(peer->pieces.size(), 10);
}

void TstSimGatewayServer::linesAreRememberedUpToACap()
{
    FakeConnection *peer = plugIn();
    peer->write("#010_L\r");
    for (int i = 0; i < GatewayServer::kRememberedLines; ++i)
        peer->write("#010_B\r");
    QCOMPARE(m_server->receivedLines().size(), GatewayServer::kRememberedLines);
    QCOMPARE(m_server->lineCount("#010_B"), GatewayServer::kRememberedLines);
    QCOMPARE(m_server->lineCount("#010_L"), 0);
    m_server->clearLines();
    QCOMPARE(m_server->lineCount("#010_B"), 0);
}

void TstSimGatewayServer::logTellsBothDirections()
{
    load("lose line=\"gateway\"");
    FakeConnection *peer = plugIn();
    m_time->advance(1500);
    peer->write("#010_L\rgateway.addr=10.0.0.1\rwhat\x01 \"\xe9\"\r");
    QCOMPARE(m_lines,
             (QStringList{"    0.000 fake -- connected", "    0.000 fake <- \"\\r\\n----[ZRT gateway]---- \"",
                          "    1.500 fake -> \"#010_L\"", "    1.500 fake -- set",
                          "    1.500 fake -> \"gateway.addr=10.0.0.1\"", "    1.500 fake -- new address",
                          "    1.500 fake -- fault: lose (line 1)",
                          "    1.500 fake <- lost, \"[NEW IP ADDRESS 10.0.0.1]\\r\\n\"",
                          QString::fromLatin1("    1.500 fake -> \"what\\x01 \"\xe9\"\""),
                          "    1.500 fake -- unknown line"}));
}

QTEST_GUILESS_MAIN(TstSimGatewayServer)
#include "tst_simgatewayserver.moc"
