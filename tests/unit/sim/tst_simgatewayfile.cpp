#include "sim/chainfile.h"

#include <QtTest>

using sim::Chain;
using sim::GatewayState;

/// The line of a description that tells of the gateway.
class TstSimGatewayFile : public QObject
{
    Q_OBJECT

private slots:
    void withoutALineItIsTheUsualOne();
    void allKeys();
    void badLineIsReported_data();
    void badLineIsReported();
};

void TstSimGatewayFile::withoutALineItIsTheUsualOne()
{
    Chain chain;
    QString error;
    QVERIFY2(sim::parseChain("system bitrate=1250\n", &chain, &error), qPrintable(error));
    QCOMPARE(chain.gateway.serial, QString("1"));
    QCOMPARE(chain.gateway.rate.bitRate, QString("2500"));
    QCOMPARE(chain.gateway.highestRate, 62500.0);
    QCOMPARE(int(chain.gateway.restartTime.count()), 1000);
    QCOMPARE(int(chain.gateway.rebootTime.count()), 3000);
}

void TstSimGatewayFile::allKeys()
{
    Chain chain;
    QString error;
    const QString text =
        "gateway version=\"7.1 b\" serial=99 limit=7812.5 core=70.5 pcb=-3 ptp-state=LISTENING "
        "bitrate=312 channels=256 mode=TCP-C restart=5 reboot=6 move=7\nmodule type=1\n";
    QVERIFY2(sim::parseChain(text, &chain, &error), qPrintable(error));
    const GatewayState &gateway = chain.gateway;
    QCOMPARE(gateway.version, QString("7.1 b"));
    QCOMPARE(gateway.serial, QString("99"));
    QCOMPARE(gateway.highestRate, 7812.5);
    QCOMPARE(gateway.coreCelsius, 70.5);
    QCOMPARE(gateway.pcbCelsius, -3.0);
    QCOMPARE(gateway.ptpState, QString("LISTENING"));
    QCOMPARE(gateway.rate.bitRate, QString("312"));
    QCOMPARE(gateway.rate.channels, QString("256"));
    QCOMPARE(gateway.mode, QString("TCP-C"));
    QCOMPARE(int(gateway.restartTime.count()), 5);
    QCOMPARE(int(gateway.rebootTime.count()), 6);
    QCOMPARE(int(gateway.moveTime.count()), 7);
    QCOMPARE(chain.modules.size(), 1);
}

void TstSimGatewayFile::badLineIsReported_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("error");

    const QString tail = " has a \";\" or what is not Latin-1";
    QTest::newRow("unknown key") << "gateway colour=red"
                                 << "\"gateway\" does not know \"colour\"";
    QTest::newRow("separator") << "gateway version=1;2"
                               << "version" + tail;
    QTest::newRow("tab") << "gateway serial=\"1\t2\""
                         << "serial" + tail;
    QTest::newRow("not Latin-1") << QString::fromUtf8("gateway ptp-state=\xe2\x82\xac") << "ptp-state" + tail;
    QTest::newRow("limit") << "gateway limit=-1"
                           << "limit=-1 is no number from 0 to 1e+09";
    QTest::newRow("temperature") << "gateway core=300"
                                 << "core=300 is no number from -55 to 200.5";
    QTest::newRow("mode") << "gateway mode=UDP"
                          << "mode=UDP is none of UDP-B, UDP-M, UDP-U, TCP-S, TCP-C, OFF";
    QTest::newRow("channels") << "gateway channels=3"
                              << "channels=3 is none of 2, 4, 8, 16, 32, 64, 128, 256";
    QTest::newRow("time") << "gateway reboot=3600001"
                          << "reboot=3600001 is no number from 0 to 3600000";
    QTest::newRow("twice") << "gateway\ngateway"
                           << "a second \"gateway\"";
}

void TstSimGatewayFile::badLineIsReported()
{
    QFETCH(QString, line);
    QFETCH(QString, error);
    Chain chain;
    QString actual;
    QVERIFY(!sim::parseChain(line, &chain, &actual));
    QCOMPARE(actual, QString("line %1: %2").arg(line.count('\n') + 1).arg(error));
}

QTEST_GUILESS_MAIN(TstSimGatewayFile)
#include "tst_simgatewayfile.moc"
