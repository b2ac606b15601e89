#include "channelfixture.h"

#include <QMessageBox>
#include <QtTest>
#include <functional>

namespace {

using namespace std::chrono_literals;
using Gesture = std::function<void(ChannelFixture &)>;

/// Wire channels: module m has 2m - 1 and 2m.
const QString kChain = QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                                      "module type=1 serial=SG-\n"
                                      "module type=2 serial=VO-\n"
                                      "module type=4 serial=TH-\n"
                                      "module type=9 serial=UN- functionA=1 functionB=2\n"
                                      "module type=1 serial=SG- sensors=\"Full$Half$\"\n"
                                      "module type=2 serial=VO- rangeB=1\n"
                                      "module type=3 serial=IE-\n"
                                      "module type=4 serial=TH- filter=4\n"
                                      "module type=9 serial=UN- functionA=2 functionB=6\n"
                                      "module type=6 serial=PO-\n");

// The channels that answer to each other.
const QStringList kBridges{"1A", "1B", "4A", "5A", "5B"};
const QStringList kVoltages{"2A", "2B", "4B", "6A", "6B", "9A"};
const QStringList kThermos{"3A", "3B", "8A", "8B"};
const QStringList kIepes{"7A", "7B"};
const QStringList kPotentiometers{"9B", "10A", "10B"};

QString wireChannel(const QString &channel)
{
    const int module = channel.chopped(1).toInt();
    return QStringLiteral("%1").arg(2 * module - (channel.endsWith(QLatin1Char('A')) ? 1 : 0), 2, 16,
                                    QLatin1Char('0'));
}

/// One command to each channel: code, three zero bytes, wire channel, parameter.
QStringList commandsTo(const QStringList &channels, const char *code, const char *parameter)
{
    QStringList commands;
    for (const QString &channel : channels)
        commands.append(QLatin1String(code) + QStringLiteral("000000") + wireChannel(channel) +
                        QLatin1String(parameter));
    return commands;
}

QStringList inEach(const QStringList &channels, const char *text)
{
    QStringList lines;
    for (const QString &channel : channels)
        lines.append(channel + QLatin1Char(' ') + QLatin1String(text));
    return lines;
}

QStringList without(QStringList list, const QStringList &others)
{
    for (const QString &other : others)
        list.removeAll(other);
    return list;
}

Gesture shiftPickType(int module, char channel, int index)
{
    return [=](ChannelFixture &f) { gestures::pick(f.typeBox(module, channel), index, Qt::ShiftModifier); };
}

Gesture shiftPickRange(int module, char channel, int index)
{
    return [=](ChannelFixture &f) { gestures::pick(f.rangeBox(module, channel), index, Qt::ShiftModifier); };
}

Gesture shiftEnter(int module, char channel, const char *text)
{
    return [=](ChannelFixture &f) {
        gestures::type(f.filterBox(module, channel), QString::fromLatin1(text));
        QTest::keyClick(f.filterBox(module, channel), Qt::Key_Return, Qt::ShiftModifier);
    };
}

Gesture shiftArrow(int module, char channel)
{
    return [=](ChannelFixture &f) {
        gestures::clickArrow(f.filterBox(module, channel), gestures::Arrow::Up, Qt::ShiftModifier);
    };
}

Gesture shiftAutozero(int module, char channel, std::chrono::milliseconds held)
{
    return [=](ChannelFixture &f) {
        auto *autozero = f.button(module, channel, "pushButton_Autozero");
        QTest::mousePress(autozero, Qt::LeftButton, Qt::ShiftModifier);
        f.time.skip(held / 2);
        f.time.skip(held / 2);
        QTest::mouseRelease(autozero, Qt::LeftButton, Qt::ShiftModifier);
    };
}

} // namespace

Q_DECLARE_METATYPE(Gesture)

/// A gesture with Shift reaches every matching channel of the chain, over the borders of the families, and no
/// other.
class TstGroupGestures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void gestureReachesAllMatchingChannels_data();
    void gestureReachesAllMatchingChannels();
    void autozeroOfAllIsBlackWhenItHasRun();
    void indexBeyondTheListLeavesTheBoxBlankUntilConfirmed();
    void shuntsOfAllAreSentOnceAndShownEverywhere_data();
    void shuntsOfAllAreSentOnceAndShownEverywhere();
    void specialRangeIsConfirmedOnceForAll();
    void thermoArrowsStayGroupGesturesAfterOneShiftClick();
    void everyMatchingChannelHasASecondOfItsOwn();

private:
    ChannelFixture &fixture() { return *m_fixture; }

    std::unique_ptr<ChannelFixture> m_fixture;
};

void TstGroupGestures::init()
{
    m_fixture = std::make_unique<ChannelFixture>();
    m_fixture->startChain(kChain);
}

void TstGroupGestures::gestureReachesAllMatchingChannels_data()
{
    QTest::addColumn<Gesture>("gesture");
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("changes");
    // What turns red, as the names of the controls end.
    QTest::addColumn<QString>("control");
    const auto row = [](const char *title, const Gesture &gesture, const QStringList &channels,
                        const char *code, const char *parameter, const QStringList &changes,
                        const char *control) {
        QTest::newRow(title) << gesture << commandsTo(channels, code, parameter) << changes
                             << QString::fromLatin1(control);
    };
    row("bridge type", shiftPickType(1, 'B', 1), kBridges, "20", "01", inEach(kBridges, "type=1"),
        "comboBox_BridgeType");
    row("bridge type at a universal channel", shiftPickType(4, 'A', 1), kBridges, "20", "01",
        inEach(kBridges, "type=1"), "comboBox_BridgeType");
    row("gain", shiftPickRange(5, 'A', 6), kBridges, "22", "06", inEach(kBridges, "range=6"),
        "comboBox_Gain");
    row("input", shiftPickType(6, 'A', 2), kVoltages, "20", "02", inEach(kVoltages, "type=2"),
        "comboBox_BridgeType");
    row("range of voltages", shiftPickRange(2, 'A', 4), kVoltages, "22", "04", inEach(kVoltages, "range=4"),
        "comboBox_");
    row("range of voltages at a universal channel", shiftPickRange(9, 'A', 1), kVoltages, "22", "01",
        inEach(without(kVoltages, {"6B"}), "range=1"), "comboBox_");
    row("range of voltages at the universal module's other channel", shiftPickRange(4, 'B', 3), kVoltages,
        "22", "03", inEach(kVoltages, "range=3"), "comboBox_");
    row("IEPE is no voltage", shiftPickRange(7, 'B', 2), kIepes, "22", "02", inEach(kIepes, "range=2"),
        "comboBox_RangeGain");
    row("potentiometers", shiftPickType(10, 'A', 1), kPotentiometers, "20", "01",
        inEach(kPotentiometers, "type=1"), "comboBox_BridgeType");
    row("thermo sensor", shiftPickType(8, 'B', 6), kThermos, "20", "06", inEach(kThermos, "type=6"),
        "comboBox_ThermoDeviceType");
    row("thermo filter", shiftArrow(3, 'A'), kThermos, "26", "313600", inEach(kThermos, "filter=16"),
        "filterSpinBox");
    row("filter of bridges", shiftEnter(1, 'A', "150"), kBridges, "26", "31353000",
        inEach(kBridges, "filter=150"), "filterSpinBox");
    row("filter of voltages", shiftEnter(9, 'A', "3000"), kVoltages, "26", "3330303000",
        inEach(kVoltages, "filter=3000"), "filterSpinBox");
    row("auto zero of bridges", shiftAutozero(1, 'A', 100ms), kBridges, "28", "81",
        inEach(kBridges, "zeroed=yes"), "pushButton_Autozero");
    row("auto zero of voltages", shiftAutozero(4, 'B', 100ms), kVoltages, "28", "81",
        inEach(kVoltages, "zeroed=yes"), "pushButton_Autozero");
    row("auto reset of voltages", shiftAutozero(2, 'B', 2000ms), kVoltages, "28", "80", {},
        "pushButton_Autozero");
    row("auto reset of bridges", shiftAutozero(4, 'A', 2000ms), kBridges, "28", "80", {},
        "pushButton_Autozero");
}

void TstGroupGestures::gestureReachesAllMatchingChannels()
{
    QFETCH(Gesture, gesture);
    QFETCH(QStringList, commands);
    QFETCH(QStringList, changes);
    QFETCH(QString, control);
    gesture(fixture());
    const QStringList red = fixture().unconfirmed();
    QCOMPARE(red.size(), commands.size());
    QCOMPARE(red.filter(control).size(), commands.size());
    WAIT_COMPARE(fixture().commands(), commands);
    WAIT_COMPARE(fixture().changes(), changes);
    QCOMPARE(fixture().unconfirmed(), red);
    fixture().time.skip(1s);
    fixture().time.skip(3s); // an Auto Zero is over
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    WAIT_COMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().commands(), commands);
    QCOMPARE(ChannelFixture::openDialogCount(), 0);
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstGroupGestures::autozeroOfAllIsBlackWhenItHasRun()
{
    shiftAutozero(9, 'A', 100ms)(fixture());
    WAIT_COMPARE(fixture().changes(), inEach(kVoltages, "zeroed=yes"));
    fixture().time.skip(1s);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(fixture().unconfirmed(), inEach(kVoltages, "pushButton_Autozero"));
    fixture().time.skip(2s);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
}

void TstGroupGestures::indexBeyondTheListLeavesTheBoxBlankUntilConfirmed()
{
    // Module 5 knows two bridge types only.
    shiftPickType(1, 'A', 5)(fixture());
    QCOMPARE(fixture().typeBox(1, 'B')->currentIndex(), 5);
    QCOMPARE(fixture().typeBox(5, 'A')->currentIndex(), -1);
    QCOMPARE(fixture().typeBox(5, 'B')->currentIndex(), -1);
    WAIT_COMPARE(fixture().commands(), commandsTo(kBridges, "20", "05"));
    WAIT_COMPARE(fixture().changes(), inEach({"1A", "1B", "4A"}, "type=5"));
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().typeBox(5, 'A')->currentText(), QStringLiteral("Full"));
    QCOMPARE(fixture().mismatches(), QStringList());
}

void TstGroupGestures::shuntsOfAllAreSentOnceAndShownEverywhere_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<char>("channel");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("on");
    QTest::addColumn<QString>("off");
    QTest::addColumn<QString>("change");
    QTest::newRow("positive, strain gauge") << 1 << 'B' << QByteArray("checkBox_Shunt_Pos") << "28000000028b"
                                            << "28000000028a"
                                            << "shunt+=yes";
    QTest::newRow("negative, strain gauge") << 5 << 'A' << QByteArray("checkBox_Shunt_Neg") << "28000000098d"
                                            << "28000000098c"
                                            << "shunt-=yes";
    QTest::newRow("positive, universal") << 4 << 'A' << QByteArray("checkBox_Shunt_Pos") << "28000000078b"
                                         << "28000000078a"
                                         << "shunt+=yes";
    QTest::newRow("negative, universal") << 4 << 'A' << QByteArray("checkBox_Shunt_Neg") << "28000000078d"
                                         << "28000000078c"
                                         << "shunt-=yes";
}

void TstGroupGestures::shuntsOfAllAreSentOnceAndShownEverywhere()
{
    QFETCH(int, module);
    QFETCH(char, channel);
    QFETCH(QByteArray, name);
    QFETCH(QString, on);
    QFETCH(QString, off);
    QFETCH(QString, change);
    auto *shunt = fixture().control<QPushButton>(module, channel, name);
    QTest::mouseClick(shunt, Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(fixture().activeShunts(name), kBridges);
    WAIT_COMPARE(fixture().commands(), QStringList{on});
    WAIT_COMPARE(fixture().changes(), inEach(kBridges, change.toLatin1()));
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().activeShunts(name), kBridges);

    QTest::mouseClick(shunt, Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(fixture().activeShunts(name), QStringList());
    WAIT_COMPARE(fixture().commands(), (QStringList{on, off}));
    WAIT_COMPARE(fixture().changes(), QStringList());

    QTest::mouseClick(shunt, Qt::LeftButton, Qt::ShiftModifier);
    WAIT_COMPARE(fixture().changes(), inEach(kBridges, change.toLatin1()));
    fixture().time.skip(20s);
    QCOMPARE(fixture().activeShunts(name), QStringList());
    QCOMPARE(fixture().changes(), QStringList());
    QCOMPARE(fixture().commands(), (QStringList{on, off, on}));
}

void TstGroupGestures::specialRangeIsConfirmedOnceForAll()
{
    shiftPickRange(3, 'B', 2)(fixture());
    auto *warning = qobject_cast<QMessageBox *>(fixture().openDialog("specialRangeBox"));
    QVERIFY(warning);
    QCOMPARE(fixture().commands(), QStringList());
    QTest::mouseClick(warning->button(QMessageBox::Yes), Qt::LeftButton);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    QCOMPARE(fixture().unconfirmed(), inEach(kThermos, "comboBox_TemperatureRange"));
    WAIT_COMPARE(fixture().commands(), commandsTo(kThermos, "22", "02"));
    WAIT_COMPARE(fixture().changes(), inEach(kThermos, "range=2"));
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(ChannelFixture::openDialogCount(), 0);
}

void TstGroupGestures::thermoArrowsStayGroupGesturesAfterOneShiftClick()
{
    shiftArrow(3, 'A')(fixture());
    WAIT_COMPARE(fixture().changes(), inEach(kThermos, "filter=16"));
    gestures::clickArrow(fixture().filterBox(3, 'A'), gestures::Arrow::Up);
    WAIT_COMPARE(fixture().changes(), inEach(kThermos, "filter=32"));
    // The other boxes do not take that over.
    gestures::clickArrow(fixture().filterBox(8, 'B'), gestures::Arrow::Down);
    WAIT_COMPARE(fixture().changes(), inEach({"3A", "3B", "8A"}, "filter=32") << "8B filter=16");
}

void TstGroupGestures::everyMatchingChannelHasASecondOfItsOwn()
{
    gestures::pick(fixture().rangeBox(2, 'B'), 5);
    fixture().time.skip(600ms);
    shiftPickRange(6, 'A', 3)(fixture());
    WAIT_COMPARE(fixture().changes(), inEach(kVoltages, "range=3"));
    // The gesture started the second of 2B anew.
    fixture().time.skip(900ms);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(fixture().unconfirmed().size(), kVoltages.size());
    fixture().time.skip(100ms);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().commands(), QStringList{"220000000405"} + commandsTo(kVoltages, "22", "03"));
}

QTEST_MAIN(TstGroupGestures)

#include "tst_groupgestures.moc"
