#include "sim/chainfile.h"

#include "sim/catalogue.h"
#include "sim/device.h"

#include <QtTest>

#include <QTemporaryDir>

using sim::Chain;
using sim::Module;

namespace {

Chain parsed(const QString &text)
{
    Chain chain;
    QString error;
    if (!sim::parseChain(text, &chain, &error))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    return chain;
}

QStringList serials(const Chain &chain)
{
    QStringList all;
    for (const Module &module : chain.modules)
        all += module.identity.serial;
    return all;
}

} // namespace

class TstChainFile : public QObject
{
    Q_OBJECT

private slots:
    void emptyTextIsAControllerAlone();
    void commentsQuotesAndBlankLines();
    void modulesStandInOrder();
    void identityAndHealth();
    void channelKeys();
    void universalFunctions();
    void functionOfAChannelKeepsTheCommonKeys();
    void ownLists();
    void systemLine();
    void deviceLine();
    void powerLine();
    void limitsOfTheOutputVoltage();
    void setpointsStandWithinTheLimits_data();
    void setpointsStandWithinTheLimits();
    void loadHoldsAtTheDescribedVoltage();
    void emptySerialNumbers();
    void systemTextsFillAFrameAndNoMore();
    void claimAbove128IsAllowed();
    void badLineIsReportedWithItsNumber_data();
    void badLineIsReportedWithItsNumber();
    void failureLeavesTheChainAlone();
    void exampleFiles_data();
    void exampleFiles();
    void missingFileIsReported();
    void errorNamesTheFile();
};

void TstChainFile::emptyTextIsAControllerAlone()
{
    const Chain chain = parsed(QString());
    QVERIFY(chain.modules.isEmpty());
    QVERIFY(!chain.power);
    QCOMPARE(chain.controller.identity.serial, QString("CT-0001"));
    QCOMPARE(chain.moduleCount(), 0);
}

void TstChainFile::commentsQuotesAndBlankLines()
{
    const Chain chain = parsed("# all of it\n"
                               "\n"
                               "  \t \r\n"
                               "controller serial=\"C # 7\" hw=1.0 # behind\n"
                               "system powering=\"by wire\" mode=\"\"\n");
    QCOMPARE(chain.controller.identity.serial, QString("C # 7"));
    QCOMPARE(chain.controller.identity.hardware, QString("1.0"));
    QCOMPARE(chain.system.poweringMode, QString("by wire"));
    QCOMPARE(chain.system.transmissionMode, QString());
}

void TstChainFile::modulesStandInOrder()
{
    const Chain chain =
        parsed("module type=1 count=2 serial=SG-\nmodule type=9 serial=AN-\nmodule type=2 serial=V7\n");
    QCOMPARE(serials(chain), QStringList({"SG-0001", "SG-0002", "AN-0003", "V7"}));
    QCOMPARE(int(chain.module(3).type), 9);
    QCOMPARE(int(chain.module(4).channel(1).function), 2);
}

void TstChainFile::identityAndHealth()
{
    const Chain chain =
        parsed("module type=4 serial=1234567890123456 hw=3.3 fw1=2.0.1 fw2=0.9 "
               "voltage=11.5 temperature=-10 selftest=31 voltage-valid=no temperature-valid=no\n");
    const Module &module = chain.module(1);
    QCOMPARE(module.identity.serial, QString("1234567890123456"));
    QCOMPARE(module.identity.hardware, QString("3.3"));
    QCOMPARE(module.identity.firmware1, QString("2.0.1"));
    QCOMPARE(module.identity.firmware2, QString("0.9"));
    QCOMPARE(module.health.volts, 11.5);
    QCOMPARE(module.health.celsius, -10.0);
    QCOMPARE(int(module.health.selftest), 31);
    QVERIFY(module.health.voltsInvalid);
    QVERIFY(module.health.celsiusInvalid);
}

void TstChainFile::channelKeys()
{
    const Chain chain = parsed("module type=1 bridge=2 bridgeB=3 range=1 offset=5 offsetA=Auto filterB=400 "
                               "polarityA=yes preselect=both preselectB=negative\n");
    const sim::Channel &a = chain.module(1).channel(0);
    const sim::Channel &b = chain.module(1).channel(1);
    QCOMPARE(a.bridgeIndex, 2);
    QCOMPARE(b.bridgeIndex, 3);
    QCOMPARE(a.gainIndex, 1);
    QCOMPARE(b.gainIndex, 1);
    QCOMPARE(a.offset, QString("Auto"));
    QCOMPARE(b.offset, QString("5"));
    QCOMPARE(a.filter, QString("1000"));
    QCOMPARE(b.filter, QString("400"));
    QVERIFY(a.reversePolarity && !b.reversePolarity);
    QVERIFY(a.positivePreselected && a.negativePreselected);
    QVERIFY(!b.positivePreselected && b.negativePreselected);
}

void TstChainFile::universalFunctions()
{
    const Chain chain = parsed("module type=9 function=2 functionB=4 rangeB=1\n");
    QCOMPARE(int(chain.module(1).channel(0).function), 2);
    QCOMPARE(int(chain.module(1).channel(1).function), 4);
    QCOMPARE(chain.module(1).channel(1).gainIndex, 1);
    QCOMPARE(chain.module(1).channel(1).filter, QString("8"));
    const Chain other = parsed("module type=9 function=4 functionA=2\n");
    QCOMPARE(int(other.module(1).channel(0).function), 2);
    QCOMPARE(int(other.module(1).channel(1).function), 4);
}

void TstChainFile::functionOfAChannelKeepsTheCommonKeys()
{
    const Chain chain =
        parsed("module type=9 functionA=1 functionB=2 bridge=2 bridgeB=0 range=1 offset=5 "
               "polarity=yes preselect=positive\nmodule type=9 function=1 functionB=4 filter=6\n");
    const sim::Channel &a = chain.module(1).channel(0);
    const sim::Channel &b = chain.module(1).channel(1);
    QCOMPARE(int(a.function), 1);
    QCOMPARE(int(b.function), 2);
    QCOMPARE(a.bridgeIndex, 2);
    QCOMPARE(b.bridgeIndex, 0);
    for (const sim::Channel &channel : {a, b}) {
        QCOMPARE(channel.gainIndex, 1);
        QCOMPARE(channel.offset, QString("5"));
        QVERIFY(channel.reversePolarity);
        QVERIFY(channel.positivePreselected && !channel.negativePreselected);
    }
    QCOMPARE(chain.module(2).channel(0).filter, QString("6"));
    QCOMPARE(chain.module(2).channel(1).filter, QString("6"));
}

void TstChainFile::ownLists()
{
    const Chain chain = parsed("module type=9 sensors=\"a$b$#c$\" ranges=\"1$\"\n");
    QCOMPARE(chain.module(1).sensorList(), QString("a$b$#c$"));
    QCOMPARE(chain.module(1).sensorsOf(0), QStringList({"a", "b"}));
    QCOMPARE(chain.module(1).sensorsOf(1), QStringList("c"));
    QCOMPARE(chain.module(1).rangesOf(1), QStringList("1"));
}

void TstChainFile::systemLine()
{
    const Chain chain =
        parsed("system powering=a transmission=b fifth=e mode=f bitrate=312 channels=256 fixed=\"100, 7\"\n");
    QCOMPARE(chain.system.poweringMode, QString("a"));
    QCOMPARE(chain.system.dataTransmission, QString("b"));
    QCOMPARE(chain.system.fifth, QString("e"));
    QCOMPARE(chain.system.transmissionMode, QString("f"));
    QCOMPARE(chain.system.bitRate(), QString("312 (256ch)"));
    QCOMPARE(chain.system.samplingRate(), QString("23"));
    QCOMPARE(chain.fixedModuleCodes(), QByteArray("\x64\x07\0\0\0\0\0\0\0\0", 10));
}

void TstChainFile::deviceLine()
{
    const Chain chain = parsed("device reset-flag=no command-reply=0x16 autozero=500 shunt=100\n");
    QVERIFY(!chain.flagsReset);
    QCOMPARE(int(chain.commandReplyCode), 0x16);
    QCOMPARE(int(parsed(QString()).commandReplyCode), 0x08);
    QCOMPARE(int(chain.autozeroTime.count()), 500);
    QCOMPARE(int(chain.shuntTime.count()), 100);
}

void TstChainFile::powerLine()
{
    const Chain chain = parsed("power serial=P1 mode=auto fixed=5000 auto=20000 protection=7 input=6.5 "
                               "load=0.5 hot=yes selftest=1\n");
    QVERIFY(chain.power.has_value());
    QCOMPARE(chain.power->identity.serial, QString("P1"));
    QCOMPARE(int(chain.power->mode), 1);
    QCOMPARE(chain.power->outputMillivolts(), 20000);
    QCOMPARE(chain.power->fixedMillivolts, 5000);
    QCOMPARE(int(chain.power->protection), 7);
    QCOMPARE(chain.power->inputVolts, 6.5);
    QCOMPARE(chain.power->loadAmperes, 0.5);
    QVERIFY(chain.power->tooHot);
    QCOMPARE(int(chain.power->health.selftest), 1);
    QCOMPARE(chain.fixedModuleCodes().left(3), QByteArray("\x64\x78\0", 3));
}

void TstChainFile::limitsOfTheOutputVoltage()
{
    const Chain usual = parsed("power");
    QCOMPARE(usual.power->minimumMillivolts, 0);
    QCOMPARE(usual.power->maximumMillivolts, 65535);
    const Chain limited = parsed("power minimum=5000 maximum=20000");
    QCOMPARE(limited.power->minimumMillivolts, 5000);
    QCOMPARE(limited.power->maximumMillivolts, 20000);
    const Chain one = parsed("power minimum=9000 maximum=9000");
    QCOMPARE(one.power->minimumMillivolts, one.power->maximumMillivolts);
}

void TstChainFile::setpointsStandWithinTheLimits_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("fixed");
    QTest::addColumn<int>("automatic");

    QTest::newRow("at the limits") << "power fixed=5000 auto=9000 minimum=5000 maximum=9000" << 5000 << 9000;
    QTest::newRow("usual ones above") << "power maximum=9000" << 9000 << 9000;
    QTest::newRow("usual ones below") << "power minimum=15000" << 15000 << 15000;
    QTest::newRow("one given") << "power auto=7000 maximum=9000" << 9000 << 7000;
}

void TstChainFile::setpointsStandWithinTheLimits()
{
    QFETCH(QString, line);
    const Chain chain = parsed(line);
    QTEST(chain.power->fixedMillivolts, "fixed");
    QTEST(chain.power->autoMillivolts, "automatic");
    QCOMPARE(chain.power->loadMillivolts, chain.power->fixedMillivolts);
}

void TstChainFile::loadHoldsAtTheDescribedVoltage()
{
    QCOMPARE(parsed("power").power->loadMillivolts, 12000);
    QCOMPARE(parsed("power fixed=8000 auto=9000").power->loadMillivolts, 8000);
    QCOMPARE(parsed("power fixed=8000 auto=9000 mode=auto").power->loadMillivolts, 9000);
    QCOMPARE(parsed("power fixed=8000 hot=yes").power->loadMillivolts, 8000);
    QCOMPARE(parsed("power fixed=0").power->loadMillivolts, 12000);
}

void TstChainFile::emptySerialNumbers()
{
    sim::Device device(parsed("controller serial=\"\"\npower serial=\"\" hw=1.3\n"), 1);
    const auto status = [&device](const char *request) {
        return device.answer(QByteArray::fromHex(request), sim::Milliseconds(0)).payload;
    };
    QCOMPARE(status("1200000000").mid(16, 3).toHex(), QByteArray("000064"));
    QCOMPARE(status("1200000000").mid(36, 16), QByteArray(16, '\0'));
    QCOMPARE(status("1200000081").size(), 100);
    QCOMPARE(status("1200000081").mid(16, 3).toHex(), QByteArray("810078"));
    QCOMPARE(status("1200000081").mid(36, 20).toHex(), QByteArray(32, '0') + QByteArray("312e3300"));
}

void TstChainFile::systemTextsFillAFrameAndNoMore()
{
    // Of 1300 bytes: 156 in front of the texts, six zero bytes, "384000" and "40000 (256ch)".
    constexpr int kMost = 1300 - 156 - 6 - 6 - 13;
    const auto line = [](int bytes) {
        const QString half(bytes / 2, QLatin1Char('x'));
        const QString rest(bytes - bytes / 2 - 2, QLatin1Char('y'));
        return QStringLiteral("system powering=%1 transmission=%2 fifth=a mode=b").arg(half, rest);
    };
    for (const int bytes : {255, 256, 257, kMost})
        QCOMPARE(parsed(line(bytes)).system.fifth, QString("a"));
    sim::Device device(parsed(line(kMost)), 1);
    const auto answer = device.answer(QByteArray::fromHex("0100000001"), sim::Milliseconds(0));
    QVERIFY(answer.payload.size() <= 1300);
    Chain chain;
    QString error;
    QVERIFY(!sim::parseChain(line(kMost + 1), &chain, &error));
    QCOMPARE(error, QString("line 1: the texts are longer than 1119 bytes together"));
}

void TstChainFile::claimAbove128IsAllowed()
{
    const Chain chain = parsed("system claim=129\nmodule type=1 count=128\n");
    QCOMPARE(chain.moduleCount(), 129);
    QCOMPARE(chain.modules.size(), 128);
}

void TstChainFile::badLineIsReportedWithItsNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    QTest::newRow("unknown keyword") << "controller\n\nmodul type=1\n"
                                     << "line 3: there is no \"modul\"";
    QTest::newRow("unknown key") << "controller colour=red"
                                 << "line 1: \"controller\" does not know \"colour\"";
    QTest::newRow("no pair") << "\nmodule type"
                             << "line 2: \"type\" is no key=value";
    QTest::newRow("key missing") << "module =1"
                                 << "line 1: \"=1\" is no key=value";
    QTest::newRow("key twice") << "module type=1 type=2"
                               << "line 1: \"type\" stands twice";
    QTest::newRow("open quote") << "#\n#\nsystem powering=\"x"
                                << "line 3: a quote is not closed";
    QTest::newRow("no type") << "module count=2"
                             << "line 1: a module needs type=";
    QTest::newRow("type no number") << "module type=one"
                                    << "line 1: type=one is no number from 0 to 255";
    QTest::newRow("type too large") << "module type=256"
                                    << "line 1: type=256 is no number from 0 to 255";
    QTest::newRow("type of the power module") << "module type=120"
                                              << "line 1: type 120 is no analog module";
    QTest::newRow("type of the controller") << "module type=100"
                                            << "line 1: type 100 is no analog module";
    QTest::newRow("no modules") << "module type=1 count=0"
                                << "line 1: count=0 is no number from 1 to 128";
    QTest::newRow("too many modules") << "module type=1 count=100\nmodule type=1 count=29"
                                      << "line 2: more than 128 modules";
    QTest::newRow("second power") << "power\npower"
                                  << "line 2: a second \"power\"";
    QTest::newRow("limits the wrong way round") << "power minimum=9001 maximum=9000"
                                                << "line 1: minimum is above maximum";
    QTest::newRow("setpoint below its minimum") << "\npower minimum=5000 fixed=4999"
                                                << "line 2: fixed=4999 is no number from 5000 to 65535";
    QTest::newRow("setpoint above its maximum") << "\npower maximum=9000 auto=9001"
                                                << "line 2: auto=9001 is no number from 0 to 9000";
    QTest::newRow("common key") << "module type=1 bridge=256"
                                << "line 1: bridge=256 is no number from 0 to 255";
    QTest::newRow("limit beyond its field") << "power maximum=65536"
                                            << "line 1: maximum=65536 is no number from 0 to 65535";
    QTest::newRow("serial too long") << "controller serial=12345678901234567"
                                     << "line 1: serial is longer than 16 bytes";
    QTest::newRow("serial too long with its number") << "module type=1 serial=123456789012-"
                                                     << "line 1: serial is longer than 16 bytes";
    QTest::newRow("list too long") << "module type=1 ranges=" + QString(200, QLatin1Char('1')) + "$"
                                   << "line 1: ranges is longer than 200 bytes";
    QTest::newRow("list without its end") << "module type=1 ranges=1$2"
                                          << "line 1: ranges does not end in \"$\"";
    QTest::newRow("bit rate")
        << "system bitrate=9600"
        << "line 1: bitrate=9600 is none of 40000, 20000, 10000, 5000, 2500, 1250, 625, 312";
    QTest::newRow("flag") << "device reset-flag=maybe"
                          << "line 1: reset-flag=maybe is none of no, yes";
    QTest::newRow("voltage") << "controller voltage=21"
                             << "line 1: voltage=21 is no number from 0 to 20.47";
    QTest::newRow("function of a fixed type") << "module type=2 functionA=1"
                                              << "line 1: \"module\" does not know \"functionA\"";
    QTest::newRow("fixed codes") << "system fixed=100,x"
                                 << "line 1: fixed: \"x\" is no code";
    QTest::newRow("too many fixed codes") << "system fixed=1,2,3,4,5,6,7,8,9,10,11"
                                          << "line 1: fixed: more than 10 codes";
}

void TstChainFile::badLineIsReportedWithItsNumber()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    Chain chain;
    QString reported;
    QVERIFY(!sim::parseChain(text, &chain, &reported));
    QCOMPARE(reported, error);
}

void TstChainFile::failureLeavesTheChainAlone()
{
    Chain chain = parsed("module type=3 serial=X");
    QString error;
    QVERIFY(!sim::parseChain("module type=1\nmodule type=300", &chain, &error));
    QCOMPARE(serials(chain), QStringList("X"));
}

void TstChainFile::exampleFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("modules");
    QTest::addColumn<bool>("power");
    QTest::addColumn<QByteArray>("types");

    QTest::newRow("demo") << "demo" << 14 << true << QByteArray("0101010102020304050607080909");
    QTest::newRow("full128") << "full128" << 128 << true << QByteArray("0101");
    QTest::newRow("nopower") << "nopower" << 3 << false << QByteArray("010104");
    QTest::newRow("unknown") << "unknown" << 5 << true << QByteArray("01024d09c8");
}

void TstChainFile::exampleFiles()
{
    QFETCH(QString, file);
    QFETCH(int, modules);
    QFETCH(bool, power);
    QFETCH(QByteArray, types);
    Chain chain;
    QString error;
    const QString name = QStringLiteral(SIM_CHAINS "/") + file + QStringLiteral(".chain");
    QVERIFY2(sim::readChainFile(name, &chain, &error), qPrintable(error));
    QCOMPARE(chain.modules.size(), modules);
    QCOMPARE(chain.power.has_value(), power);
    sim::Device device(chain, 1);
    const QByteArray reply = device.answer(QByteArray::fromHex("0100000001"), sim::Milliseconds(0)).payload;
    const QByteArray expected = QByteArray::fromHex(types);
    QCOMPARE(reply.mid(18, expected.size()), expected);
    // The bit rate text names a count that holds all channels, as far as there is one.
    const int channels = sim::channelCountNames().value(chain.system.channelCountCode).toInt();
    QVERIFY(channels >= qMin(128, modules * 2));
}

void TstChainFile::missingFileIsReported()
{
    Chain chain;
    QString error;
    QVERIFY(!sim::readChainFile(QStringLiteral("/no/such.chain"), &chain, &error));
    QVERIFY(error.startsWith(QLatin1String("/no/such.chain: ")));
}

void TstChainFile::errorNamesTheFile()
{
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("bad.chain"));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("controller\nmodule\n");
    file.close();
    Chain chain;
    QString error;
    QVERIFY(!sim::readChainFile(name, &chain, &error));
    QCOMPARE(error, name + QStringLiteral(": line 2: a module needs type="));
}

QTEST_GUILESS_MAIN(TstChainFile)
#include "tst_chainfile.moc"
