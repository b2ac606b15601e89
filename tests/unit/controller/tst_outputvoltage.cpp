#include "controller/mydoublespinbox.h"
#include "controllerrow.h"
#include "support/messagecatcher.h"
#include "support/plainlog.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QtTest>
#include <functional>

namespace {

const QString kRed = QStringLiteral("color: red;background-color: white;selection-color: "
                                    "red;selection-background-color: white;border-width: 2;");
const QString kBlack = QStringLiteral("color: black;background-color: white;selection-color: "
                                      "white;selection-background-color: #0078d7;border-width: 2;");

MyDoubleSpinBox *setpointBox(const Row &row)
{
    return row.child<MyDoubleSpinBox>("doubleSpinBox_OutputVoltage");
}

QComboBox *modeBox(const Row &row)
{
    return row.child<QComboBox>("comboBox_OutputVoltageMode");
}

/// Types over what the box shows.
void type(const Row &row, const char *text)
{
    setpointBox(row)->setFocus();
    setpointBox(row)->selectAll();
    QTest::keyClicks(setpointBox(row), QString::fromLatin1(text));
}

/// Opens the list of the modes and picks an entry with the mouse.
void pick(const Row &row, int index)
{
    QComboBox *box = modeBox(row);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(box->view()->isVisible());
    QWidget *list = box->view()->viewport();
    // An item may be wider than what can be seen of it.
    const QPoint place = (box->view()->visualRect(box->model()->index(index, 0)) & list->rect()).center();
    QTest::mouseClick(list, Qt::LeftButton, Qt::NoModifier, place);
    QTRY_VERIFY(!box->view()->isVisible());
}

QStringList one(const char *setting)
{
    return {QString::fromLatin1(setting)};
}

const QStringList kNothing;

} // namespace

using Act = std::function<void(ModuleController_Ctrllr &)>;
Q_DECLARE_METATYPE(Act)

/// How the operator sets the output voltage of the power module, and what goes out.
class TstOutputVoltage : public QObject
{
    Q_OBJECT

private slots:
    void settingsHaveTheirCodes_data();
    void settingsHaveTheirCodes();
    void setpointIsSentInMillivolts_data();
    void setpointIsSentInMillivolts();
    void everyValueOfTheBoxIsSentExactly();
    void arrowKeySendsAfterTwoSeconds();
    void typedValueIsSentOnce();
    void changeTurnsTheBoxRedAtOnce();
    void settingGoesOutBeforeTheBoxTurnsBlack();
    void changeIsLoggedAndKept();
    void onlyTheLastOfTwoChangesIsSent();
    void timerEndsAfterOneSetting();
    void nextChangeIsPendingAnew();
    void setpointCodeFollowsTheReportedMode_data();
    void setpointCodeFollowsTheReportedMode();
    void setpointCodeIgnoresAModeThatIsOnlyChosen();
    void modeReportedWhilePendingDecidesTheCode();
    void reportWhilePendingIsShownAndStopsNothing();
    void reportWhileTypingReplacesTheTextAndSendsNothing();
    void reportOfTheShownValueSwallowsTheNextChange();
    void pickedModeIsSentAtOnce();
    void pickedPresentModeIsSentAgain();
    void modeChosenByKeysIsSent();
    void modeLeavesAPendingSetpointAlone();
    void disabledBoxesSendNothing();
    void otherColoursAreIgnored();
    void rowDeletedWhilePendingSendsNothing();
    void viewDeletedFirstWhilePendingSendsNothing();
};

void TstOutputVoltage::settingsHaveTheirCodes_data()
{
    QTest::addColumn<int>("reportedMode");
    QTest::addColumn<Act>("act");
    QTest::addColumn<QString>("setting");
    const auto setpoint = [](double volts) -> Act {
        return [volts](ModuleController_Ctrllr &c) { c.Slot_OutputVoltageSetpointChanged(volts); };
    };
    const auto mode = [](int index) -> Act {
        return [index](ModuleController_Ctrllr &c) { c.Slot_OutputVoltageModeChanged(index); };
    };
    QTest::newRow("voltage in fixed mode") << 0 << setpoint(12.3) << "1 0x10 12300";
    QTest::newRow("voltage in auto mode") << 1 << setpoint(12.3) << "1 0x11 12300";
    QTest::newRow("fixed mode") << 1 << mode(0) << "1 0x20 0";
    QTest::newRow("auto mode") << 0 << mode(1) << "1 0x21 0";
    QTest::newRow("mode 2") << 0 << mode(2) << "1 0x00 0";
    QTest::newRow("mode -1") << 1 << mode(-1) << "1 0x00 0";
    QTest::newRow("mode 256") << 0 << mode(256) << "1 0x00 0";
}

void TstOutputVoltage::settingsHaveTheirCodes()
{
    QFETCH(int, reportedMode);
    QFETCH(Act, act);
    QFETCH(QString, setting);
    Row row;
    row.take(outputStatus(reportedMode, 12000, 12000));
    act(*row.controller);
    row.time.advance(2000);
    QCOMPARE(row.takeSettings(), QStringList{setting});
}

void TstOutputVoltage::setpointIsSentInMillivolts_data()
{
    QTest::addColumn<double>("volts");
    QTest::addColumn<int>("millivolts");
    QTest::newRow("0") << 0.0 << 0;
    QTest::newRow("rounded down") << 12.3004 << 12300;
    QTest::newRow("rounded up") << 12.3006 << 12301;
    QTest::newRow("5.0") << 5.0 << 5000;
    QTest::newRow("12.3") << 12.3 << 12300;
    QTest::newRow("20.0") << 20.0 << 20000;
    QTest::newRow("64.9") << 64.9 << 64900;
    QTest::newRow("65.0") << 65.0 << 65000;
    QTest::newRow("65.1") << 65.1 << 65000;
    QTest::newRow("1000") << 1000.0 << 65000;
}

void TstOutputVoltage::setpointIsSentInMillivolts()
{
    QFETCH(double, volts);
    QFETCH(int, millivolts);
    Row row;
    row.controller->Slot_OutputVoltageSetpointChanged(volts);
    row.time.advance(2000);
    QCOMPARE(row.takeSettings(), QStringList{QStringLiteral("1 0x10 %1").arg(millivolts)});
}

void TstOutputVoltage::everyValueOfTheBoxIsSentExactly()
{
    Row row;
    for (int tenths = 50; tenths <= 200; ++tenths) {
        row.controller->Slot_OutputVoltageSetpointChanged(tenths / 10.0);
        row.time.advance(2000);
        QCOMPARE(row.takeSettings(), QStringList{QStringLiteral("1 0x10 %1").arg(tenths * 100)});
    }
}

void TstOutputVoltage::arrowKeySendsAfterTwoSeconds()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    setpointBox(row)->setFocus();
    QTest::keyClick(setpointBox(row), Qt::Key_Up);
    QCOMPARE(setpointBox(row)->text(), QStringLiteral("12.1"));
    row.time.advance(1999);
    QCOMPARE(row.takeSettings(), kNothing);
    row.time.advance(1);
    QCOMPARE(row.takeSettings(), one("1 0x10 12100"));
    QCOMPARE(setpointBox(row)->styleSheet(), kBlack);
}

void TstOutputVoltage::typedValueIsSentOnce()
{
    Row row;
    row.take(outputStatus(1, 12000, 8000));
    row.controller->GetView()->show();
    type(row, "12.3");
    row.time.advance(2000);
    QCOMPARE(row.takeSettings(), one("1 0x11 12300"));
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
}

void TstOutputVoltage::changeTurnsTheBoxRedAtOnce()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    QVERIFY(setpointBox(row)->styleSheet() != kRed);
    row.controller->GetView()->show();
    setpointBox(row)->setFocus();
    QTest::keyClick(setpointBox(row), Qt::Key_Down);
    QCOMPARE(setpointBox(row)->styleSheet(), kRed);
    row.time.advance(1999);
    QCOMPARE(setpointBox(row)->styleSheet(), kRed);
    row.time.advance(1);
    QCOMPARE(setpointBox(row)->styleSheet(), kBlack);
}

void TstOutputVoltage::settingGoesOutBeforeTheBoxTurnsBlack()
{
    Row row;
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    QString styleAtSending;
    connect(row.controller.get(), &ModuleController_Ctrllr::Signal_COMMAND_POWER_SET, this,
            [&] { styleAtSending = setpointBox(row)->styleSheet(); });
    row.time.advance(2000);
    QCOMPARE(styleAtSending, kRed);
    QCOMPARE(setpointBox(row)->styleSheet(), kBlack);
}

void TstOutputVoltage::changeIsLoggedAndKept()
{
    Row row;
    const MessageCatcher log;
    row.controller->Slot_OutputVoltageSetpointChanged(12.5);
    const QString text = plainLog(log.lines());
    QVERIFY2(text.contains(QStringLiteral("void ModuleController_Ctrllr::Slot_OutputVoltageSetpointChanged"
                                          "(double) : got this : 12.5")),
             qPrintable(text));
    QCOMPARE(row.controller->model().power.outputVoltageSetpoint, 12.5F);
}

void TstOutputVoltage::onlyTheLastOfTwoChangesIsSent()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    setpointBox(row)->setFocus();
    QTest::keyClick(setpointBox(row), Qt::Key_Up);
    row.time.advance(1999);
    QTest::keyClick(setpointBox(row), Qt::Key_Up);
    row.time.advance(1999);
    QCOMPARE(row.takeSettings(), kNothing);
    row.time.advance(1);
    QCOMPARE(row.takeSettings(), one("1 0x10 12200"));
}

void TstOutputVoltage::timerEndsAfterOneSetting()
{
    Row row;
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.time.advance(60000);
    QCOMPARE(row.takeSettings(), one("1 0x10 12300"));
}

void TstOutputVoltage::nextChangeIsPendingAnew()
{
    Row row;
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.time.advance(2000);
    row.takeSettings();
    row.controller->Slot_OutputVoltageSetpointChanged(12.4);
    QCOMPARE(setpointBox(row)->styleSheet(), kRed);
    row.time.advance(1999);
    QCOMPARE(row.takeSettings(), kNothing);
    row.time.advance(1);
    QCOMPARE(row.takeSettings(), one("1 0x10 12400"));
}

void TstOutputVoltage::setpointCodeFollowsTheReportedMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("setting");
    QTest::newRow("fixed") << 0 << "1 0x10 12300";
    QTest::newRow("auto") << 1 << "1 0x11 12300";
    QTest::newRow("unknown mode") << 2 << "1 0x11 12300";
    QTest::newRow("highest mode") << 255 << "1 0x11 12300";
    QTest::newRow("not reported") << -1 << "1 0x10 12300";
}

void TstOutputVoltage::setpointCodeFollowsTheReportedMode()
{
    QFETCH(int, mode);
    QFETCH(QString, setting);
    Row row;
    if (mode >= 0)
        row.take(outputStatus(mode, 12000, 8000));
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.time.advance(2000);
    QCOMPARE(row.takeSettings(), QStringList{setting});
}

void TstOutputVoltage::setpointCodeIgnoresAModeThatIsOnlyChosen()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    pick(row, 1);
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.time.advance(2000);
    QCOMPARE(row.takeSettings(), (QStringList{"1 0x21 0", "1 0x10 12300"}));
}

void TstOutputVoltage::modeReportedWhilePendingDecidesTheCode()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.time.advance(1000);
    row.take(outputStatus(1, 12000, 8000));
    row.time.advance(1000);
    QCOMPARE(row.takeSettings(), one("1 0x11 12300"));
}

void TstOutputVoltage::reportWhilePendingIsShownAndStopsNothing()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    setpointBox(row)->setFocus();
    QTest::keyClick(setpointBox(row), Qt::Key_Up);
    row.time.advance(1000);
    row.take(outputStatus(0, 9000, 8000));
    QCOMPARE(setpointBox(row)->text(), QStringLiteral("9.0"));
    QCOMPARE(setpointBox(row)->styleSheet(), kRed);
    row.time.advance(999);
    QCOMPARE(row.takeSettings(), kNothing);
    row.time.advance(1);
    QCOMPARE(row.takeSettings(), one("1 0x10 12100")); // what the operator chose
    QCOMPARE(setpointBox(row)->text(), QStringLiteral("9.0"));
}

void TstOutputVoltage::reportWhileTypingReplacesTheTextAndSendsNothing()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    type(row, "1"); // no value of the box yet
    row.take(outputStatus(0, 9000, 8000));
    QCOMPARE(setpointBox(row)->text(), QStringLiteral("9.0"));
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
}

void TstOutputVoltage::reportOfTheShownValueSwallowsTheNextChange()
{
    // As agreed: the box takes the next change for one of the program.
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    setpointBox(row)->setFocus();
    QTest::keyClick(setpointBox(row), Qt::Key_Up);
    QVERIFY(setpointBox(row)->styleSheet() != kRed);
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
    QTest::keyClick(setpointBox(row), Qt::Key_Up);
    row.time.advance(2000);
    QCOMPARE(row.takeSettings(), one("1 0x10 12200"));
}

void TstOutputVoltage::pickedModeIsSentAtOnce()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    pick(row, 1);
    QCOMPARE(row.takeSettings(), one("1 0x21 0"));
    pick(row, 0);
    QCOMPARE(row.takeSettings(), one("1 0x20 0"));
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
}

void TstOutputVoltage::pickedPresentModeIsSentAgain()
{
    Row row;
    row.take(outputStatus(1, 12000, 8000));
    row.controller->GetView()->show();
    pick(row, 1);
    QCOMPARE(row.takeSettings(), one("1 0x21 0"));
}

void TstOutputVoltage::modeChosenByKeysIsSent()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    modeBox(row)->setFocus();
    QTest::keyClick(modeBox(row), Qt::Key_Down);
    QCOMPARE(row.takeSettings(), one("1 0x21 0"));
    QTest::keyClick(modeBox(row), Qt::Key_Down); // there is no further entry
    QCOMPARE(row.takeSettings(), kNothing);
    QTest::keyClick(modeBox(row), Qt::Key_Up);
    QCOMPARE(row.takeSettings(), one("1 0x20 0"));
}

void TstOutputVoltage::modeLeavesAPendingSetpointAlone()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->GetView()->show();
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.time.advance(1500);
    pick(row, 1);
    QCOMPARE(row.takeSettings(), one("1 0x21 0"));
    QCOMPARE(setpointBox(row)->styleSheet(), kRed);
    row.time.advance(500);
    QCOMPARE(row.takeSettings(), one("1 0x10 12300"));
}

void TstOutputVoltage::disabledBoxesSendNothing()
{
    Row row;
    row.controller->GetView()->show();
    QTest::keyClick(setpointBox(row), Qt::Key_Up);
    QTest::keyClick(modeBox(row), Qt::Key_Down);
    QTest::mouseClick(modeBox(row), Qt::LeftButton);
    QVERIFY(!modeBox(row)->view()->isVisible());
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
}

void TstOutputVoltage::otherColoursAreIgnored()
{
    const Row row;
    ModuleController_View *view = row.controller->GetView();
    for (const QString &style : {kRed, kBlack}) {
        view->setSetpointColour(style == kRed ? QStringLiteral("red") : QStringLiteral("black"));
        QCOMPARE(setpointBox(row)->styleSheet(), style);
        for (const char *other : {"", "blue", "Red", "BLACK", "red "}) {
            view->setSetpointColour(QString::fromLatin1(other));
            QCOMPARE(setpointBox(row)->styleSheet(), style);
        }
    }
}

void TstOutputVoltage::rowDeletedWhilePendingSendsNothing()
{
    Row row;
    row.take(outputStatus(0, 12000, 8000));
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.time.advance(1000);
    row.controller.reset();
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
}

void TstOutputVoltage::viewDeletedFirstWhilePendingSendsNothing()
{
    Row row;
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    delete row.controller->GetView(); // the window took it along
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
    const auto timers = row.controller->findChildren<Timer *>();
    QVERIFY(!timers.isEmpty());
    for (const Timer *timer : timers)
        QVERIFY(!timer->isActive());
    row.controller.reset();
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), kNothing);
}

QTEST_MAIN(TstOutputVoltage)
#include "tst_outputvoltage.moc"
