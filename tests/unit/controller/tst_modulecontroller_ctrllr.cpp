#include "controllerrow.h"
#include "support/messagecatcher.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QtTest>

namespace {

const QString kFirstController = QStringLiteral("Controller|S/N XXXXXXX|XX.XX.XX|XX.XX.XX|XX.XX");
const QString kFirstPower = QStringLiteral("Power|S/N XXXXXXX|XX.XX.XX|XX.XX.XX");

} // namespace

class TstModuleControllerCtrllr : public QObject
{
    Q_OBJECT

private slots:
    void beginsWithInitialTexts();
    void powerPartFollowsTheRequest();
    void controllerStatusIsShown();
    void controllerWithoutSerialNumberIsSkipped();
    void analogModuleChangesNoText();
    void powerModuleStatusIsShown();
    void moduleStatusOfAWrongTypeIsSkipped();
    void powerStatusIsShown();
    void powerStatusWithoutSerialNumberHidesForTheSession();
    void powerStatusOfTheControllerOnlyLogs();
    void powerStatusOfAWrongTypeIsSkipped();
    void fastStatusShowsBothEntries();
    void invalidVoltageLeavesTheText();
    void invalidTemperatureLeavesTheText();
    void invalidFirstValuesStayEmpty();
    void shortFastStatusReadsAsZero();
    void versionBoxShowsTheController();
    void versionBoxBeforeAnyStatusShowsTheInitialTexts();
    void rowMayBeDeletedWhileTheBoxIsOpen();
    void rowMayGoBeforeItsController();
    void reportsAfterTheRowIsGoneDoNothing();
};

void TstModuleControllerCtrllr::beginsWithInitialTexts()
{
    const Row row;
    QCOMPARE(row.controllerIdentity(), kFirstController);
    QCOMPARE(row.powerIdentity(), kFirstPower);
    QCOMPARE(row.controllerLive(), QStringLiteral("||"));
    QCOMPARE(row.powerLive(), QStringLiteral("||"));
    QCOMPARE(row.text("label_ModuleNumber"), QStringLiteral("1"));
    QCOMPARE(row.controller->rowNumber(), 1);
}

void TstModuleControllerCtrllr::powerPartFollowsTheRequest()
{
    QVERIFY(!Row(true).powerIsHidden());
    QVERIFY(Row(false).powerIsHidden());
}

void TstModuleControllerCtrllr::controllerStatusIsShown()
{
    Row row;
    const MessageCatcher log;
    row.take(moduleStatus(kControllerType, "03.04"));
    QCOMPARE(row.controllerIdentity(), QStringLiteral("Controller|S/N 4711|01.02|03.04|05.06"));
    QCOMPARE(row.powerIdentity(), kFirstPower);
    QVERIFY(log.contains(QStringLiteral("retrieved StaticModuleStatus with module type = Controller")));
    QCOMPARE(row.mismatch.count(), 0);
}

void TstModuleControllerCtrllr::controllerWithoutSerialNumberIsSkipped()
{
    Row row;
    const MessageCatcher log;
    row.take(moduleStatus(kControllerType, "03.04", ""));
    row.take(moduleStatus(1, "99.99", ""));
    QCOMPARE(row.controllerIdentity(), kFirstController);
    QCOMPARE(row.mismatch.count(), 0);
    QVERIFY(log.contains(QStringLiteral("retrieved StaticModuleStatus with serialNumber empty")));
}

void TstModuleControllerCtrllr::analogModuleChangesNoText()
{
    Row row;
    row.take(moduleStatus(1, "03.04"));
    QCOMPARE(row.controllerIdentity(), kFirstController);
    QCOMPARE(row.powerIdentity(), kFirstPower);
}

void TstModuleControllerCtrllr::powerModuleStatusIsShown()
{
    Row row;
    const MessageCatcher log;
    row.take(moduleStatus(kPowerType, "03.04"));
    QCOMPARE(row.powerIdentity(), QStringLiteral("Power|S/N 4711|01.02|03.04"));
    QCOMPARE(row.controllerIdentity(), kFirstController);
    QVERIFY(log.contains(QStringLiteral("retrieved StaticModuleStatuss with module type Power")));
    QCOMPARE(row.mismatch.count(), 0);
}

void TstModuleControllerCtrllr::moduleStatusOfAWrongTypeIsSkipped()
{
    Row row;
    row.controller->Slot_StaticModuleStatus(QVariant(QStringLiteral("no status")));
    QCOMPARE(row.controllerIdentity(), kFirstController);
    QCOMPARE(row.mismatch.count(), 0);
}

void TstModuleControllerCtrllr::powerStatusIsShown()
{
    Row row;
    const MessageCatcher log;
    row.take(powerStatus(kPowerType, "03.04"));
    QCOMPARE(row.powerIdentity(), QStringLiteral("Power|S/N 4712|07.08|03.04"));
    QVERIFY(!row.powerIsHidden());
    QVERIFY(log.contains(QStringLiteral("retrieved StaticPowerStatus with module type = Power")));
}

void TstModuleControllerCtrllr::powerStatusWithoutSerialNumberHidesForTheSession()
{
    Row row;
    row.take(powerStatus(kPowerType, "03.04", ""));
    QVERIFY(row.powerIsHidden());
    QCOMPARE(row.mismatch.count(), 0);
    row.take(powerStatus(kPowerType, "03.04"));
    QVERIFY(row.powerIsHidden());
}

void TstModuleControllerCtrllr::powerStatusOfTheControllerOnlyLogs()
{
    Row row;
    const MessageCatcher log;
    row.take(powerStatus(kControllerType, "99.99"));
    QVERIFY(log.contains(QStringLiteral("retrieved StaticPowerStatus with module type = Controller")));
    QCOMPARE(row.powerIdentity(), kFirstPower);
    QVERIFY(!row.powerIsHidden());
    QCOMPARE(row.mismatch.count(), 0);
}

void TstModuleControllerCtrllr::powerStatusOfAWrongTypeIsSkipped()
{
    Row row;
    row.take(moduleStatus(kControllerType, "03.04"));
    row.controller->Slot_StaticPowerStatus(QVariant(QStringLiteral("no status")));
    QVERIFY(!row.powerIsHidden());
    QCOMPARE(row.powerIdentity(), kFirstPower);
    QCOMPARE(row.mismatch.count(), 0);
}

void TstModuleControllerCtrllr::fastStatusShowsBothEntries()
{
    Row row;
    QVector<Fast_Module_Status> entries(kFastModuleStatusCount);
    entries[127].supplyVoltage = 111;
    entries[128].supplyVoltage = 1200;
    entries[128].temperature = 0;
    entries[128].moduleState = 10;
    entries[129].supplyVoltage = 950;
    entries[129].temperature = 161;
    entries[129].moduleState = 0;
    row.take(entries);
    QCOMPARE(row.controllerLive(), QString::fromUtf8("12.00 V|-55.0 °C|0x0A"));
    QCOMPARE(row.powerLive(), QString::fromUtf8("9.50 V|25.5 °C|O.K."));
}

void TstModuleControllerCtrllr::invalidVoltageLeavesTheText()
{
    Row row;
    QVector<Fast_Module_Status> entries(kFastModuleStatusCount);
    for (const int entry : {128, 129}) {
        entries[entry].supplyVoltage = 1200;
        entries[entry].temperature = 110;
    }
    row.take(entries);
    for (const int entry : {128, 129}) {
        entries[entry].supplyVoltage = 700;
        entries[entry].supplyVoltageInvalid = 1;
        entries[entry].temperature = 120;
    }
    row.take(entries);
    QCOMPARE(row.controllerLive(), QString::fromUtf8("12.00 V|5.0 °C|O.K."));
    QCOMPARE(row.powerLive(), QString::fromUtf8("12.00 V|5.0 °C|O.K."));
}

void TstModuleControllerCtrllr::invalidTemperatureLeavesTheText()
{
    Row row;
    QVector<Fast_Module_Status> entries(kFastModuleStatusCount);
    entries[128].temperature = 110;
    row.take(entries);
    entries[128].temperature = 200;
    entries[128].temperatureInvalid = 1;
    entries[128].supplyVoltage = 100;
    row.take(entries);
    QCOMPARE(row.controllerLive(), QString::fromUtf8("1.00 V|0.0 °C|O.K."));
}

void TstModuleControllerCtrllr::invalidFirstValuesStayEmpty()
{
    Row row;
    QVector<Fast_Module_Status> entries(kFastModuleStatusCount);
    entries[128].supplyVoltageInvalid = 1;
    entries[128].temperatureInvalid = 1;
    row.take(entries);
    QCOMPARE(row.controllerLive(), QStringLiteral("||O.K."));
}

void TstModuleControllerCtrllr::shortFastStatusReadsAsZero()
{
    Row row;
    row.take(QVector<Fast_Module_Status>(5));
    QCOMPARE(row.controllerLive(), QString::fromUtf8("0.00 V|-55.0 °C|O.K."));
    row.controller->Slot_FastModuleStatus(QVariant(7));
    QCOMPARE(row.powerLive(), QString::fromUtf8("0.00 V|-55.0 °C|O.K."));
}

void TstModuleControllerCtrllr::versionBoxShowsTheController()
{
    Row row;
    row.take(moduleStatus(kControllerType, "03.04"));
    row.take(powerStatus(kPowerType, "03.04"));
    QTest::mouseClick(childByName<QPushButton>(row.controller->GetView(), "pushButton_modType"),
                      Qt::LeftButton);
    const auto *box = row.controller->GetView()->findChild<QMessageBox *>();
    QVERIFY(box);
    QCOMPARE(box->windowTitle(), QStringLiteral("Module Version Info"));
    QCOMPARE(box->text(), QStringLiteral("Component version numbers\nHardware:\t01.02\nFirmware 1:\t03.04\n"
                                         "Firmware 2:\t05.06\n"));
}

void TstModuleControllerCtrllr::versionBoxBeforeAnyStatusShowsTheInitialTexts()
{
    Row row;
    QTest::mouseClick(childByName<QPushButton>(row.controller->GetView(), "pushButton_modType"),
                      Qt::LeftButton);
    const auto *box = row.controller->GetView()->findChild<QMessageBox *>();
    QVERIFY(box);
    QCOMPARE(box->text(), QStringLiteral("Component version numbers\nHardware:\tXX.XX.XX\n"
                                         "Firmware 1:\tXX.XX.XX\nFirmware 2:\tXX.XX\n"));
}

void TstModuleControllerCtrllr::rowMayBeDeletedWhileTheBoxIsOpen()
{
    Row row;
    row.controller->GetView()->show();
    row.controller->Slot_ControllerButton();
    const QPointer<QMessageBox> box(row.controller->GetView()->findChild<QMessageBox *>());
    QVERIFY(box);
    row.controller.reset();
    QVERIFY(!box);
    QCoreApplication::processEvents();
}

void TstModuleControllerCtrllr::rowMayGoBeforeItsController()
{
    Row row;
    delete row.controller->GetView();
    QVERIFY(!row.controller->GetView());
    row.controller.reset();
}

void TstModuleControllerCtrllr::reportsAfterTheRowIsGoneDoNothing()
{
    Row row;
    row.take(moduleStatus(kControllerType, "03.04"));
    QSignalSpy settings(row.controller.get(), &ModuleController_Ctrllr::Signal_COMMAND_POWER_SET);
    delete row.controller->GetView();
    row.take(moduleStatus(1, "99.99"));
    row.take(moduleStatus(kPowerType, "03.04"));
    row.take(powerStatus(kPowerType, "99.99"));
    row.take(QVector<Fast_Module_Status>(kFastModuleStatusCount));
    row.controller->Slot_FastSystemStatus(QVariant());
    row.controller->Slot_OutputVoltageSetpointChanged(12.3);
    row.controller->Slot_OutputVoltage_FakeTimeOver();
    row.controller->Slot_OutputVoltageModeChanged(1);
    row.controller->Slot_PowerButton();
    row.controller->Slot_ControllerButton();
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
    QCOMPARE(row.mismatch.count(), 0);
    QCOMPARE(settings.count(), 0);
}

QTEST_MAIN(TstModuleControllerCtrllr)
#include "tst_modulecontroller_ctrllr.moc"
