#include "channelfixture.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QtTest>
#include <functional>

namespace {

using namespace std::chrono_literals;
using Gesture = std::function<void(ChannelFixture &, QWidget *)>;

const QString kChain =
    QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                   "module type=1 serial=SG- offsetB=7.5 polarityB=yes preselectB=both\n"
                   "module type=2 serial=VO- polarityB=yes\n"
                   "module type=4 serial=TH- rangeB=2 filterB=32\n"
                   "module type=9 serial=UN- functionA=1 functionB=2 polarityB=yes preselectA=positive\n");

// How an operator uses a control.

Gesture pickItem(int index)
{
    return [index](ChannelFixture &, QWidget *box) { gestures::pick(qobject_cast<QComboBox *>(box), index); };
}

Gesture click()
{
    return [](ChannelFixture &, QWidget *button) { QTest::mouseClick(button, Qt::LeftButton); };
}

Gesture typeAndReturn(const char *text)
{
    return [text](ChannelFixture &, QWidget *box) {
        gestures::type(qobject_cast<QSpinBox *>(box), QString::fromLatin1(text));
        QTest::keyClick(box, Qt::Key_Return);
    };
}

Gesture step(gestures::Arrow arrow)
{
    return [arrow](ChannelFixture &, QWidget *box) {
        gestures::clickArrow(qobject_cast<QSpinBox *>(box), arrow);
    };
}

/// The arrows of a filter in Hz send when they have been left alone for 1.2 s.
Gesture stepAndRest(gestures::Arrow arrow, int steps = 1)
{
    return [arrow, steps](ChannelFixture &fixture, QWidget *box) {
        for (int i = 0; i < steps; ++i) {
            step(arrow)(fixture, box);
            fixture.time.skip(1100ms);
        }
        QCOMPARE(box->styleSheet(), styles::kSent);
        QCOMPARE(fixture.commands(), QStringList());
        fixture.time.skip(100ms);
    };
}

/// The offset dialog of the button, open.
QWidget *offsetDialog(ChannelFixture &fixture, QWidget *button)
{
    QTest::mouseClick(button, Qt::LeftButton);
    return fixture.openDialog("Dialog_ManualOffset");
}

Gesture enterOffset(const char *text)
{
    return [text](ChannelFixture &fixture, QWidget *button) {
        QWidget *dialog = offsetDialog(fixture, button);
        QVERIFY(dialog);
        gestures::check(childByName<QAbstractButton>(dialog, "radioButton_OptionManual"));
        auto *edit = childByName<QLineEdit>(dialog, "lineEdit_Manual");
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromLatin1(text));
        QTest::mouseClick(childByName<QAbstractButton>(dialog, "okButton"), Qt::LeftButton);
    };
}

Gesture chooseAutoOffset()
{
    return [](ChannelFixture &fixture, QWidget *button) {
        QWidget *dialog = offsetDialog(fixture, button);
        QVERIFY(dialog);
        gestures::check(childByName<QAbstractButton>(dialog, "radioButton_OptionAuto"));
        QTest::mouseClick(childByName<QAbstractButton>(dialog, "okButton"), Qt::LeftButton);
    };
}

/// Picks a special range and answers the warning.
Gesture pickSpecialRange(int index, QMessageBox::StandardButton answer)
{
    return [index, answer](ChannelFixture &fixture, QWidget *box) {
        gestures::pick(qobject_cast<QComboBox *>(box), index);
        auto *warning = qobject_cast<QMessageBox *>(fixture.openDialog("specialRangeBox"));
        QVERIFY(warning);
        QCOMPARE(fixture.commands(), QStringList());
        QTest::mouseClick(warning->button(answer), Qt::LeftButton);
    };
}

QString shown(const QWidget *control)
{
    if (const auto *box = qobject_cast<const QComboBox *>(control))
        return box->currentText();
    if (const auto *box = qobject_cast<const QSpinBox *>(control))
        return box->text();
    const auto *button = qobject_cast<const QAbstractButton *>(control);
    if (button->isCheckable())
        return button->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
    return button->text();
}

} // namespace

Q_DECLARE_METATYPE(Gesture)

/// One gesture at one control of one channel: the bytes that it sends, what they do in the device, and what
/// the control shows until and after the device has confirmed it.
class TstChannels : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void changeIsSentShownAndConfirmed_data();
    void changeIsSentShownAndConfirmed();
    void lowFilterByTheArrowsWarns();
    void lowFilterByReturnWarnsWhenTheBoxIsLeft();
    void cancelledOffsetSendsNothing();
    void closedSpecialRangeWarningIsAnAbort();
    void channelsOfOneModuleArePendingByThemselves();
    void wheelSendsNothing();

private:
    ChannelFixture &fixture() { return *m_fixture; }

    std::unique_ptr<ChannelFixture> m_fixture;
};

void TstChannels::init()
{
    m_fixture = std::make_unique<ChannelFixture>();
    m_fixture->startChain(kChain);
}

void TstChannels::changeIsSentShownAndConfirmed_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<char>("channel");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<Gesture>("gesture");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("payload");
    QTest::addColumn<QStringList>("change");
    const auto row = [](const char *title, int module, char channel, const char *name, const Gesture &gesture,
                        const char *wanted, const char *payload, const QStringList &change) {
        QTest::newRow(title) << module << channel << QByteArray(name) << gesture << QString::fromUtf8(wanted)
                             << QString::fromLatin1(payload) << change;
    };
    using gestures::Arrow;
    constexpr auto kContinue = QMessageBox::Yes;
    constexpr auto kAbort = QMessageBox::No;

    row("strain gauge: bridge type", 1, 'A', "comboBox_BridgeType", pickItem(4), "350 Half", "200000000104",
        {"1A type=4"});
    row("strain gauge: gain", 1, 'B', "comboBox_Gain", pickItem(3), "5", "220000000203", {"1B range=3"});
    row("strain gauge: filter by Return", 1, 'A', "filterSpinBox", typeAndReturn("2500"), "2500",
        "26000000013235303000", {"1A filter=2500"});
    row("strain gauge: filter by an arrow", 1, 'B', "filterSpinBox", stepAndRest(Arrow::Up), "1100",
        "26000000023131303000", {"1B filter=1100"});
    row("strain gauge: filter by arrows, sent once", 1, 'A', "filterSpinBox", stepAndRest(Arrow::Down, 3),
        "700", "260000000137303000", {"1A filter=700"});
    row("strain gauge: offset by hand", 1, 'A', "pushButton_ManualOffset", enterOffset("-12.5"), "-12.5",
        "24000000012d31322e3500", {"1A offset=-12.5"});
    row("strain gauge: automatic offset", 1, 'B', "pushButton_ManualOffset", chooseAutoOffset(), "Auto",
        "24000000024175746f00", {"1B offset=Auto"});
    row("strain gauge: polarity on", 1, 'A', "checkBox_RevPol_100", click(), "on", "280000000185",
        {"1A reversed=yes"});
    row("strain gauge: polarity off", 1, 'B', "checkBox_RevPol_100", click(), "off", "280000000284",
        {"1B reversed=no"});
    row("voltage: input", 2, 'B', "comboBox_BridgeType", pickItem(2), "Differential", "200000000402",
        {"2B type=2"});
    row("voltage: range", 2, 'A', "comboBox_RangeGain", pickItem(6), "10", "220000000306", {"2A range=6"});
    row("voltage: filter by Return", 2, 'B', "filterSpinBox", typeAndReturn("150"), "150",
        "260000000431353000", {"2B filter=150"});
    row("voltage: filter by an arrow", 2, 'A', "filterSpinBox", stepAndRest(Arrow::Down), "900",
        "260000000339303000", {"2A filter=900"});
    row("voltage: polarity on", 2, 'A', "checkBox_RevPol", click(), "on", "280000000385",
        {"2A reversed=yes"});
    row("voltage: polarity off", 2, 'B', "checkBox_RevPol", click(), "off", "280000000484",
        {"2B reversed=no"});
    row("thermo: sensor", 3, 'A', "comboBox_ThermoDeviceType", pickItem(5), "PT100", "200000000505",
        {"3A type=5"});
    row("thermo: standard range", 3, 'B', "comboBox_TemperatureRange", pickItem(0), "-200...1370",
        "220000000600", {"3B range=0"});
    row("thermo: special range", 3, 'A', "comboBox_TemperatureRange", pickSpecialRange(3, kContinue),
        "0...500", "220000000503", {"3A range=3"});
    row("thermo: special range aborted", 3, 'B', "comboBox_TemperatureRange", pickSpecialRange(3, kAbort),
        "-200...1370", "220000000600", {"3B range=0"});
    row("thermo: special range aborted from the standard range", 3, 'A', "comboBox_TemperatureRange",
        pickSpecialRange(1, kAbort), "-200...1370", "220000000500", {});
    row("thermo: filter doubled", 3, 'A', "filterSpinBox", step(Arrow::Up), "16", "2600000005313600",
        {"3A filter=16"});
    row("thermo: filter halved", 3, 'B', "filterSpinBox", step(Arrow::Down), "16", "2600000006313600",
        {"3B filter=16"});
    row("universal: bridge type", 4, 'A', "comboBox_BridgeType", pickItem(7), "350 Quarter", "200000000707",
        {"4A type=7"});
    row("universal: input", 4, 'B', "comboBox_BridgeType", pickItem(1), "AC", "200000000801", {"4B type=1"});
    row("universal: gain of a bridge", 4, 'A', "comboBox_Gain", pickItem(7), "100", "220000000707",
        {"4A range=7"});
    row("universal: range of a voltage", 4, 'B', "comboBox_Gain", pickItem(5), "5", "220000000805",
        {"4B range=5"});
    row("universal: filter by Return", 4, 'A', "filterSpinBox", typeAndReturn("0"), "0", "26000000073000",
        {"4A filter=0"});
    row("universal: filter by an arrow", 4, 'B', "filterSpinBox", stepAndRest(Arrow::Up), "1100",
        "26000000083131303000", {"4B filter=1100"});
    row("universal: offset by hand", 4, 'A', "pushButton_ManualOffset", enterOffset("999.9"), "999.9",
        "24000000073939392e3900", {"4A offset=999.9"});
    row("universal: polarity on", 4, 'A', "checkBox_RevPol", click(), "on", "280000000785",
        {"4A reversed=yes"});
    row("universal: polarity off", 4, 'B', "checkBox_RevPol", click(), "off", "280000000884",
        {"4B reversed=no"});
}

void TstChannels::changeIsSentShownAndConfirmed()
{
    QFETCH(int, module);
    QFETCH(char, channel);
    QFETCH(QByteArray, name);
    QFETCH(Gesture, gesture);
    QFETCH(QString, wanted);
    QFETCH(QString, payload);
    QFETCH(QStringList, change);
    auto *control = fixture().control<QWidget>(module, channel, name);
    const bool offset = name == "pushButton_ManualOffset";
    const bool polarity = name.startsWith("checkBox_RevPol");
    const bool off = wanted == QStringLiteral("off");
    const QString sent = offset ? styles::kOffsetSent
                                : (polarity ? (off ? styles::kOff : styles::kSwitchedOn) : styles::kSent);
    const QString confirmed =
        offset ? (wanted == QStringLiteral("Auto") ? styles::kOffsetAuto : styles::kOffsetConfirmed)
               : (polarity ? (off ? styles::kOff : styles::kOn) : styles::kConfirmed);
    const QString before = control->styleSheet();

    gesture(fixture(), control);
    QCOMPARE(control->styleSheet(), sent);
    QCOMPARE(shown(control), wanted);
    WAIT_COMPARE(fixture().commands(), QStringList{payload});
    WAIT_COMPARE(fixture().changes(), change);
    QCOMPARE(control->styleSheet(), sent);
    QCOMPARE(shown(control), wanted);

    fixture().time.skip(1s);
    WAIT_COMPARE(control->styleSheet(), confirmed);
    if (!off)
        QVERIFY(before != sent);
    QCOMPARE(shown(control), wanted);
    WAIT_COMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().commands(), QStringList{payload});
    QCOMPARE(ChannelFixture::openDialogCount(), 0);
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstChannels::lowFilterByTheArrowsWarns()
{
    auto *box = fixture().filterBox(2, 'A');
    gestures::type(box, QStringLiteral("200"));
    QTest::keyClick(box, Qt::Key_Return);
    WAIT_COMPARE(fixture().commands(), QStringList{"260000000332303000"});
    QVERIFY(!fixture().openDialog("filterWarningBox"));
    QTest::keyClick(box, Qt::Key_Down);
    fixture().time.skip(1200ms);
    auto *warning = qobject_cast<QMessageBox *>(fixture().openDialog("filterWarningBox"));
    QVERIFY(warning);
    QCOMPARE(warning->text(),
             QStringLiteral("Warning: Filter response may be deteriorated below 200 Hz filter frequency."));
    QTest::mouseClick(warning->button(QMessageBox::Ok), Qt::LeftButton);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    WAIT_COMPARE(fixture().changes(), QStringList{"2A filter=100"});
    for (const QString &command : fixture().commands().mid(1))
        QCOMPARE(command, QStringLiteral("260000000331303000"));
    fixture().time.skip(1s);
    WAIT_COMPARE(box->styleSheet(), styles::kConfirmed);
}

void TstChannels::lowFilterByReturnWarnsWhenTheBoxIsLeft()
{
    auto *box = fixture().filterBox(1, 'B');
    gestures::type(box, QStringLiteral("199"));
    QTest::keyClick(box, Qt::Key_Return);
    WAIT_COMPARE(fixture().commands(), QStringList{"260000000231393900"});
    QVERIFY(!fixture().openDialog("filterWarningBox"));
    QTest::keyClick(box, Qt::Key_Tab);
    QVERIFY(fixture().openDialog("filterWarningBox"));
    WAIT_COMPARE(fixture().commands(), (QStringList{"260000000231393900", "260000000231393900"}));
    fixture().time.skip(1s);
    WAIT_COMPARE(box->styleSheet(), styles::kConfirmed);
    QCOMPARE(fixture().commands().size(), 2);
}

void TstChannels::cancelledOffsetSendsNothing()
{
    auto *button = fixture().button(1, 'B', "pushButton_ManualOffset");
    QWidget *dialog = offsetDialog(fixture(), button);
    QVERIFY(dialog);
    auto *edit = childByName<QLineEdit>(dialog, "lineEdit_Manual");
    QCOMPARE(edit->text(), QStringLiteral("7.5"));
    QTest::keyClicks(edit, QStringLiteral("99"));
    QTest::mouseClick(childByName<QAbstractButton>(dialog, "cancelButton"), Qt::LeftButton);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    QCOMPARE(button->text(), QStringLiteral("7.5"));
    QCOMPARE(button->styleSheet(), styles::kOffsetConfirmed);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(fixture().commands(), QStringList());
}

void TstChannels::closedSpecialRangeWarningIsAnAbort()
{
    auto *box = fixture().rangeBox(3, 'B');
    gestures::pick(box, 4);
    QWidget *warning = fixture().openDialog("specialRangeBox");
    QVERIFY(warning);
    QTest::keyClick(warning, Qt::Key_Escape);
    QCOMPARE(box->currentIndex(), 0);
    WAIT_COMPARE(fixture().commands(), QStringList{"220000000600"});
    WAIT_COMPARE(fixture().changes(), QStringList{"3B range=0"});
}

void TstChannels::channelsOfOneModuleArePendingByThemselves()
{
    auto *a = fixture().rangeBox(2, 'A');
    auto *b = fixture().rangeBox(2, 'B');
    gestures::pick(a, 2);
    fixture().time.skip(900ms);
    gestures::pick(b, 4);
    WAIT_COMPARE(fixture().changes(), (QStringList{"2A range=2", "2B range=4"}));
    QCOMPARE(a->styleSheet(), styles::kSent);
    // The status that A waited for comes within the second of B.
    fixture().time.skip(100ms);
    WAIT_COMPARE(a->styleSheet(), styles::kConfirmed);
    QCOMPARE(b->styleSheet(), styles::kSent);
    fixture().time.skip(900ms);
    WAIT_COMPARE(b->styleSheet(), styles::kConfirmed);
    QCOMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().commands(), (QStringList{"220000000302", "220000000404"}));
}

void TstChannels::wheelSendsNothing()
{
    for (QWidget *control : {static_cast<QWidget *>(fixture().rangeBox(2, 'A')),
                             static_cast<QWidget *>(fixture().filterBox(2, 'A')),
                             static_cast<QWidget *>(fixture().filterBox(3, 'A'))}) {
        const QPointF place(control->rect().center());
        QWheelEvent wheel(place, control->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(control, &wheel);
    }
    fixture().time.skip(1200ms);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(fixture().mismatches(), QStringList());
}

QTEST_MAIN(TstChannels)

#include "tst_channels.moc"
