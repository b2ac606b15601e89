#include "channelfixture.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QLineEdit>
#include <QtTest>
#include <functional>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Step = std::function<void(ChannelFixture &)>;

const QString kChain = QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                                      "module type=1 serial=SG-\n"
                                      "module type=2 serial=VO- filterA=200\n"
                                      "module type=4 serial=TH-\n"
                                      "module type=9 serial=UN- functionA=1 functionB=2\n");

void openVersions(ChannelFixture &f)
{
    QTest::mouseClick(childByName<QPushButton>(f.row(1), "pushButton_DeviceButton"), Qt::LeftButton);
    QVERIFY(f.openDialog("versionBox"));
}

void openOffsetDialog(ChannelFixture &f)
{
    QTest::mouseClick(f.button(1, 'B', "pushButton_ManualOffset"), Qt::LeftButton);
    QWidget *dialog = f.openDialog("Dialog_ManualOffset");
    QVERIFY(dialog);
    gestures::check(childByName<QAbstractButton>(dialog, "radioButton_OptionManual"));
    QTest::keyClicks(childByName<QLineEdit>(dialog, "lineEdit_Manual"), QStringLiteral("5"));
}

void openFunctionDialog(ChannelFixture &f)
{
    QTest::mouseClick(childByName<QPushButton>(f.row(4), "pushButton_ChB"), Qt::LeftButton);
    QWidget *dialog = f.openDialog("ChangeModuleType");
    QVERIFY(dialog);
    gestures::check(childByName<QAbstractButton>(dialog, "iepeBtn"));
}

void openSpecialRangeWarning(ChannelFixture &f)
{
    gestures::pick(f.rangeBox(3, 'A'), 2);
    QVERIFY(f.openDialog("specialRangeBox"));
}

void openFilterWarning(ChannelFixture &f)
{
    f.filterBox(2, 'A')->setFocus();
    QTest::keyClick(f.filterBox(2, 'A'), Qt::Key_Down);
    f.time.skip(1200ms);
    QVERIFY(f.openDialog("filterWarningBox"));
    WAIT_COMPARE(f.changes(), QStringList{"2A filter=100"});
}

void openCombo(ChannelFixture &f)
{
    gestures::openList(f.rangeBox(2, 'B'));
    QVERIFY(QApplication::activePopupWidget());
}

void openShiftedCombo(ChannelFixture &f)
{
    // The press with Shift is there, the release that picks is not yet.
    gestures::openList(f.typeBox(1, 'A'));
    QWidget *list = f.typeBox(1, 'A')->view()->viewport();
    QTest::mousePress(list, Qt::LeftButton, Qt::ShiftModifier, QPoint(5, 30));
}

void typeFilter(ChannelFixture &f)
{
    gestures::type(f.filterBox(1, 'A'), QStringLiteral("777"));
    QVERIFY(f.filterBox(1, 'A')->hasFocus());
}

void stepFilter(ChannelFixture &f)
{
    f.filterBox(2, 'B')->setFocus();
    QTest::keyClick(f.filterBox(2, 'B'), Qt::Key_Up);
    QCOMPARE(f.filterBox(2, 'B')->value(), 1100);
}

void holdAutozero(ChannelFixture &f)
{
    QTest::mousePress(f.button(4, 'A', "pushButton_Autozero"), Qt::LeftButton, Qt::ShiftModifier);
    f.time.skip(1000ms);
}

void switchShunt(ChannelFixture &f)
{
    QTest::mouseClick(f.button(1, 'A', "checkBox_Shunt_Pos"), Qt::LeftButton);
    WAIT_COMPARE(f.commands().size(), 1);
}

QAbstractSpinBox *setpoint(const ChannelFixture &f)
{
    return childByName<QAbstractSpinBox>(f.window(), "doubleSpinBox_OutputVoltage");
}

void typeSetpoint(ChannelFixture &f)
{
    gestures::type(setpoint(f), QStringLiteral("14.5"));
    f.time.skip(1900ms);
}

void stepSetpoint(ChannelFixture &f)
{
    gestures::clickArrow(setpoint(f), gestures::Arrow::Up);
}

void openProtection(ChannelFixture &f)
{
    QTest::mouseClick(childByName<QPushButton>(f.window(), "pushButton_powModType"), Qt::LeftButton);
    QWidget *dialog = f.openDialog("powerSettingsDialog");
    QVERIFY(dialog);
    gestures::pick(childByName<QComboBox>(dialog, "comboBox_Protection"), 1);
}

void openProtectionList(ChannelFixture &f)
{
    openProtection(f);
    gestures::openList(childByName<QComboBox>(f.openDialog("powerSettingsDialog"), "comboBox_Protection"));
}

void openModes(ChannelFixture &f)
{
    gestures::openList(childByName<QComboBox>(f.window(), "comboBox_OutputVoltageMode"));
}

void openControllerVersions(ChannelFixture &f)
{
    QTest::mouseClick(childByName<QPushButton>(f.window(), "pushButton_modType"), Qt::LeftButton);
    QVERIFY(f.openDialog("versionBox"));
}

void changeAll(ChannelFixture &f)
{
    gestures::pick(f.rangeBox(2, 'A'), 3, Qt::ShiftModifier);
    WAIT_COMPARE(f.commands().size(), 3);
}

} // namespace

Q_DECLARE_METATYPE(Step)

/// Rows vanish whenever the device or the link says so, whatever the operator is at: what he had open goes
/// with its row, and what he had begun is sent to nobody.
class TstRowRemoval : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void nothingIsSentAfterTheRowIsGone_data();
    void nothingIsSentAfterTheRowIsGone();
    void programEndsMeanwhile_data();
    void programEndsMeanwhile();
    void queuedCommandsGoWithTheRows();
    void gesturesOnALostLinkAreForgotten();
    void newRowsWorkAsTheOldOnes();

private:
    using NamedStep = std::pair<const char *, Step>;
    static const std::vector<NamedStep> &occupations();

    ChannelFixture &fixture() { return *m_fixture; }

    std::unique_ptr<ChannelFixture> m_fixture;
};

void TstRowRemoval::init()
{
    m_fixture = std::make_unique<ChannelFixture>();
    m_fixture->startChain(kChain);
}

const std::vector<TstRowRemoval::NamedStep> &TstRowRemoval::occupations()
{
    static const std::vector<NamedStep> steps = {
        {"versions", openVersions},
        {"offset dialog", openOffsetDialog},
        {"function dialog", openFunctionDialog},
        {"special range warning", openSpecialRangeWarning},
        {"filter warning", openFilterWarning},
        {"open list", openCombo},
        {"open list, pressed with Shift", openShiftedCombo},
        {"typed filter", typeFilter},
        {"stepped filter", stepFilter},
        {"Auto Zero held", holdAutozero},
        {"shunt on", switchShunt},
        {"group gesture pending", changeAll},
        {"typed setpoint", typeSetpoint},
        {"stepped setpoint", stepSetpoint},
        {"protection dialog", openProtection},
        {"open list of protections", openProtectionList},
        {"open list of modes", openModes},
        {"versions of the controller", openControllerVersions},
    };
    return steps;
}

void TstRowRemoval::nothingIsSentAfterTheRowIsGone_data()
{
    QTest::addColumn<Step>("occupation");
    QTest::addColumn<Step>("loss");
    const NamedStep losses[] = {
        {"device reset", [](ChannelFixture &f) { f.addFaults("reset-flag code=0x08 count=1"); }},
        {"connection closed", [](ChannelFixture &f) { f.addFaults("close code=0x08 count=1"); }},
        {"unplugged",
         [](ChannelFixture &f) {
             f.unplug();
             WAIT_COMPARE(f.statusText(), QStringLiteral("COM Port unavailable: COM40"));
             f.plug(kChain);
         }},
    };
    for (const auto &occupation : occupations()) {
        for (const auto &loss : losses)
            QTest::addRow("%s, %s", occupation.first, loss.first) << occupation.second << loss.second;
    }
}

void TstRowRemoval::nothingIsSentAfterTheRowIsGone()
{
    QFETCH(Step, occupation);
    QFETCH(Step, loss);
    const QPointer<QWidget> row = fixture().row(1);
    const QPointer<sim::Server> device = fixture().device.get();
    occupation(fixture());
    const QStringList commands = fixture().commands();
    loss(fixture());
    WAIT_VERIFY(!row);
    QCOMPARE(ChannelFixture::openDialogCount(), 0);
    QVERIFY(!QApplication::activePopupWidget());
    fixture().waitUntilRead();
    // A button that was held is let go, and all timers of the old rows would be over.
    QTest::mouseRelease(fixture().window(), Qt::LeftButton);
    fixture().time.skip(2s);
    fixture().waitForPolls();
    fixture().time.skip(20s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), device ? commands : QStringList());
    QCOMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(ChannelFixture::openDialogCount(), 0);
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstRowRemoval::programEndsMeanwhile_data()
{
    QTest::addColumn<Step>("occupation");
    for (const auto &occupation : occupations())
        QTest::newRow(occupation.first) << occupation.second;
}

void TstRowRemoval::programEndsMeanwhile()
{
    QFETCH(Step, occupation);
    occupation(fixture());
    const QStringList commands = fixture().commands();
    fixture().app.reset();
    QCOMPARE(ChannelFixture::openDialogCount(), 0);
    QVERIFY(!QApplication::activePopupWidget());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    fixture().time.skip(20s);
    QCoreApplication::processEvents();
    QCOMPARE(fixture().commands(), commands);
}

void TstRowRemoval::queuedCommandsGoWithTheRows()
{
    fixture().addFaults("reset-flag code=0x22 count=1");
    const QPointer<QWidget> row = fixture().row(2);
    gestures::pick(fixture().rangeBox(2, 'A'), 4, Qt::ShiftModifier);
    QCOMPARE(fixture().unconfirmed().size(), 3);
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    fixture().time.skip(2s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{"220000000304"});
    QCOMPARE(fixture().changes(), QStringList{"2A range=4"});
}

void TstRowRemoval::gesturesOnALostLinkAreForgotten()
{
    const QPointer<QWidget> row = fixture().row(2);
    fixture().unplug();
    WAIT_COMPARE(fixture().statusText(), QStringLiteral("COM Port unavailable: COM40"));
    // The rows are still there: they go when the chain answers again.
    QVERIFY(row);
    auto *range = row->findChild<QComboBox *>(QStringLiteral("comboBox_RangeGain"));
    gestures::pick(range, 5, Qt::ShiftModifier);
    QCOMPARE(range->styleSheet(), styles::kSent);
    fixture().plug(kChain);
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    fixture().time.skip(2s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(fixture().mismatches(), QStringList());
}

void TstRowRemoval::newRowsWorkAsTheOldOnes()
{
    const QPointer<QWidget> row = fixture().row(2);
    openShiftedCombo(fixture());
    fixture().addFaults("reset-flag code=0x08 count=1");
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    // The Shift of the old row is forgotten.
    gestures::pick(fixture().typeBox(1, 'A'), 3);
    WAIT_COMPARE(fixture().commands(), QStringList{"200000000103"});
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().changes(), QStringList{"1A type=3"});
}

QTEST_MAIN(TstRowRemoval)

#include "tst_rowremoval.moc"
