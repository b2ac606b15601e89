#include "statuslines.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

using gateway::readReply;
using gateway::Reply;
using statuslines::described;
using statuslines::describedLine;
using statuslines::kLine;
using statuslines::lineWith;

namespace {

constexpr int kMegabyte = 1024 * 1024;

} // namespace

/// What a received piece is, wherever it was cut and whatever it holds.
class TstGatewayReply : public QObject
{
    Q_OBJECT

private slots:
    void tag_data();
    void tag();
    void promptAndNewAddress_data();
    void promptAndNewAddress();
    void aStatusHidesPromptAndNewAddress_data();
    void aStatusHidesPromptAndNewAddress();
    void headsOfALine();
    void tailsOfALineSayNothing();
    void cutPromptsSayNothing();
    void zeroBytesDoNotEndTheText();
    void aMegabyte_data();
    void aMegabyte();
    void flippedBits();
    void randomBytes();
};

void TstGatewayReply::tag_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<bool>("found");
    QTest::newRow("alone") << QStringLiteral("#S") << true;
    QTest::newRow("within a word") << QStringLiteral("xx#Syy") << true;
    QTest::newRow("at the end") << QStringLiteral("1;2;3;4;#S") << true;
    QTest::newRow("behind another #") << QStringLiteral("##S") << true;
    QTest::newRow("small letter") << QStringLiteral("#s;;;2") << false;
    QTest::newRow("in two") << QStringLiteral("# S;;;2") << false;
    QTest::newRow("half") << QStringLiteral("#") << false;
    QTest::newRow("the request's echo") << QStringLiteral("#?") << false;
    QTest::newRow("empty") << QString() << false;
}

void TstGatewayReply::tag()
{
    QFETCH(QString, piece);
    QTEST(readReply(piece).isStatus, "found");
}

void TstGatewayReply::promptAndNewAddress_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<bool>("prompt");
    QTest::addColumn<bool>("newAddress");
    QTest::newRow("empty") << QString() << false << false;
    QTest::newRow("prompt") << QStringLiteral("]----") << true << false;
    QTest::newRow("prompt within") << QStringLiteral("\r\n[root]----> ") << true << false;
    QTest::newRow("longer prompt") << QStringLiteral("]-----") << true << false;
    QTest::newRow("short prompt") << QStringLiteral("]---") << false << false;
    QTest::newRow("without bracket") << QStringLiteral("-----") << false << false;
    QTest::newRow("address") << QStringLiteral("[NEW IP ADDRESS") << false << true;
    QTest::newRow("address told") << QStringLiteral("ok [NEW IP ADDRESS 10.0.0.1]\r\n") << false << true;
    QTest::newRow("short address") << QStringLiteral("[NEW IP ADDRES") << false << false;
    QTest::newRow("no bracket") << QStringLiteral("NEW IP ADDRESS") << false << false;
    QTest::newRow("small letters") << QStringLiteral("[new ip address") << false << false;
    QTest::newRow("both") << QStringLiteral("[NEW IP ADDRESS]----") << true << true;
}

void TstGatewayReply::promptAndNewAddress()
{
    QFETCH(QString, piece);
    const Reply reply = readReply(piece);
    QVERIFY(!reply.isStatus);
    QVERIFY(!reply.status);
    QTEST(reply.hasPrompt, "prompt");
    QTEST(reply.hasNewAddress, "newAddress");
}

void TstGatewayReply::aStatusHidesPromptAndNewAddress_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("prompt behind") << kLine + QStringLiteral("\r\n[root]----");
    QTest::newRow("prompt in front") << QStringLiteral("[root]----") + kLine;
    QTest::newRow("new address behind") << kLine + QStringLiteral("\r\n[NEW IP ADDRESS");
    QTest::newRow("new address in front") << QStringLiteral("[NEW IP ADDRESS") + kLine;
    QTest::newRow("a line that is not valid") << QStringLiteral("#S [root]---- [NEW IP ADDRESS");
}

void TstGatewayReply::aStatusHidesPromptAndNewAddress()
{
    QFETCH(QString, piece);
    const Reply reply = readReply(piece);
    QVERIFY(reply.isStatus);
    QVERIFY(!reply.hasPrompt);
    QVERIFY(!reply.hasNewAddress);
}

void TstGatewayReply::headsOfALine()
{
    constexpr int kTagSize = 2;
    const int guardEnd = QStringLiteral("#S;;1.07;2").size();
    for (int cut = 0; cut <= kLine.size(); ++cut) {
        const QString head = kLine.left(cut);
        const Reply reply = readReply(head);
        QCOMPARE(reply.isStatus, cut >= kTagSize);
        QCOMPARE(reply.status.has_value(), cut >= guardEnd);
        QVERIFY(!reply.hasPrompt);
        if (reply.status) // the last field may be cut short, those behind it are missing
            QCOMPARE(described(*reply.status), describedLine(head + QString(39, QLatin1Char(';'))));
    }
    QCOMPARE(readReply(kLine.left(kLine.size() - 1)).status->dataProtocol, std::optional<int>());
    QCOMPARE(readReply(kLine.left(kLine.size() - 1)).status->maximumSamples, QStringLiteral("700"));
}

void TstGatewayReply::tailsOfALineSayNothing()
{
    for (int cut = 1; cut <= kLine.size(); ++cut) {
        const Reply reply = readReply(kLine.mid(cut));
        QVERIFY(!reply.isStatus);
        QVERIFY(!reply.status);
        QVERIFY(!reply.hasPrompt);
        QVERIFY(!reply.hasNewAddress);
    }
}

void TstGatewayReply::cutPromptsSayNothing()
{
    for (const QString &whole : {QStringLiteral("]----"), QStringLiteral("[NEW IP ADDRESS")}) {
        for (int cut = 1; cut < whole.size(); ++cut) {
            for (const QString &piece : {whole.left(cut), whole.mid(cut)}) {
                QVERIFY(!readReply(piece).hasPrompt);
                QVERIFY(!readReply(piece).hasNewAddress);
            }
        }
    }
}

void TstGatewayReply::zeroBytesDoNotEndTheText()
{
    const QString zeros(3, QChar(0));
    QCOMPARE(describedLine(zeros + kLine), describedLine(kLine));
    QVERIFY(readReply(zeros + QStringLiteral("]----")).hasPrompt);
    QCOMPARE(readReply(lineWith({{2, zeros}})).status->version, zeros);
}

void TstGatewayReply::aMegabyte_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<QString>("told");
    const QString no = QStringLiteral("no status");
    const QString separators(kMegabyte, QLatin1Char(';'));
    const QString nines(kMegabyte, QLatin1Char('9'));
    QTest::newRow("zero bytes") << QString(kMegabyte, QChar(0)) << no;
    QTest::newRow("separators") << separators << no;
    QTest::newRow("tag and separators") << QStringLiteral("#S") + separators << no;
    QTest::newRow("separators and tag") << separators + QStringLiteral("#S") << no;
    QTest::newRow("valid, then separators")
        << QStringLiteral("#S;;1.07;2") + separators << QStringLiteral("version=1.07");
    QTest::newRow("tags") << QStringLiteral("#S").repeated(kMegabyte / 2) << no;
    QTest::newRow("fields of tags") << QStringLiteral("#S;").repeated(kMegabyte / 3) << no;
    QTest::newRow("half tags") << QString(kMegabyte, QLatin1Char('#')) << no;
    QTest::newRow("half prompts") << QStringLiteral("]---").repeated(kMegabyte / 4) << no;
    QTest::newRow("half addresses") << QStringLiteral("[NEW IP ADDRES").repeated(kMegabyte / 14) << no;
    QTest::newRow("line ends") << QStringLiteral("#S") + QString(kMegabyte, QLatin1Char('\r')) << no;
    QTest::newRow("guard of digits") << QStringLiteral("#S;;;") + nines << no;
    QTest::newRow("index of digits") << lineWith({{5, nines}}) << QString();
    QTest::newRow("limit of digits") << lineWith({{28, nines}}) << QString();
    QTest::newRow("serial number") << lineWith({{17, nines}}) << QStringLiteral("serial=") + nines;
}

void TstGatewayReply::aMegabyte()
{
    constexpr int kLimitMs = 5000; // for work that grows with the size; with its square it takes minutes
    QFETCH(QString, piece);
    QElapsedTimer timer;
    timer.start();
    const QString found = describedLine(piece);
    QVERIFY2(timer.elapsed() < kLimitMs, qPrintable(QString::number(timer.elapsed())));
    QFETCH(QString, told);
    QVERIFY2(found == told, qPrintable(found.left(100)));
}

void TstGatewayReply::flippedBits()
{
    constexpr int kTagSize = 2;
    const QByteArray line = kLine.toLatin1();
    for (int bit = 0; bit < line.size() * 8; ++bit) {
        QByteArray damaged = line;
        damaged[bit / 8] = char(damaged.at(bit / 8) ^ (1 << bit % 8));
        const Reply reply = readReply(QString::fromLatin1(damaged.constData(), damaged.size()));
        QCOMPARE(reply.isStatus, bit >= kTagSize * 8);
        QVERIFY(!reply.hasPrompt);
    }
}

void TstGatewayReply::randomBytes()
{
    QRandomGenerator random(20260302);
    const QByteArray telling("#S;]-[\r\n2N \0\xff", 13);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes(random.bounded(300), '\0');
        for (char &byte : bytes)
            byte = round % 2 ? char(random.bounded(256)) : telling.at(random.bounded(telling.size()));
        const Reply reply = readReply(QString::fromLatin1(bytes.constData(), bytes.size()));
        const bool tagged = bytes.contains("#S");
        QCOMPARE(reply.isStatus, tagged);
        QVERIFY(tagged || !reply.status);
        QCOMPARE(reply.hasPrompt, !tagged && bytes.contains("]----"));
        QVERIFY(!reply.hasNewAddress);
    }
}

QTEST_GUILESS_MAIN(TstGatewayReply)
#include "tst_gatewayreply.moc"
