#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/powerstatus.h"
#include "support/childbyname.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

namespace {

/// The top row with short ways to play a device and to read it.
class Row
{
public:
    explicit Row(bool withPower = true)
        : controller(std::make_unique<ModuleController_Ctrllr>(1, 1, withPower, m_time))
        , mismatch(controller.get(), &ModuleController_Ctrllr::Signal_FirmwareMismatch)
    {}

    QString text(const char *name) const { return childByName<QLabel>(controller->GetView(), name)->text(); }

    QString button(const char *name) const
    {
        return childByName<QPushButton>(controller->GetView(), name)->text();
    }

    bool powerIsHidden() const
    {
        return childByName<QFrame>(controller->GetView(), "powerFrame")->isHidden();
    }

    QString controllerIdentity() const
    {
        return button("pushButton_modType") + QLatin1Char('|') + text("label_SerialNumber") +
               QLatin1Char('|') + text("label_HwVersion") + QLatin1Char('|') + text("label_SwVersion") +
               QLatin1Char('|') + text("label_FpgaVersn");
    }

    QString powerIdentity() const
    {
        return button("pushButton_powModType") + QLatin1Char('|') + text("label_SerialNumber_Pow") +
               QLatin1Char('|') + text("label_HwVersion_Pow") + QLatin1Char('|') +
               text("label_SwVersion_Pow");
    }

    QString controllerLive() const
    {
        return text("label_Voltage") + QLatin1Char('|') + text("label_Temperature") + QLatin1Char('|') +
               text("label_SelftestSt");
    }

    QString powerLive() const
    {
        return text("label_Voltage_Pow") + QLatin1Char('|') + text("label_Temperature_Pow") +
               QLatin1Char('|') + text("label_SelftestSt_Pow");
    }

    void take(const Module_Status &status)
    {
        controller->Slot_StaticModuleStatus(QVariant::fromValue(status));
    }
    void take(const Power_Status &status) { controller->Slot_StaticPowerStatus(QVariant::fromValue(status)); }

    void take(const QVector<Fast_Module_Status> &entries)
    {
        controller->Slot_FastModuleStatus(QVariant::fromValue(entries));
    }

private:
    VirtualTime m_time;

public:
    std::unique_ptr<ModuleController_Ctrllr> controller;
    QSignalSpy mismatch;
};

Module_Status moduleStatus(int type, const char *firmware, const char *serialNumber = "4711")
{
    Module_Status status;
    status.moduleType = static_cast<quint8>(type);
    status.serialNumber = QString::fromLatin1(serialNumber);
    status.hardwareVersion = QStringLiteral("01.02");
    status.firmware1Version = QString::fromLatin1(firmware);
    status.firmware2Version = QStringLiteral("05.06");
    return status;
}

Power_Status powerStatus(int type, const char *firmware, const char *serialNumber = "4712")
{
    Power_Status status;
    status.moduleType = static_cast<quint8>(type);
    status.serialNumber = QString::fromLatin1(serialNumber);
    status.hardwareVersion = QStringLiteral("07.08");
    status.firmware1Version = QString::fromLatin1(firmware);
    return status;
}

constexpr int kControllerType = 100;
constexpr int kPowerType = 120;

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

    void differentModuleFirmwareWarnsOnce();
    void equalFirmwareIsSilent();
    void firmwareIsComparedAsText();
    void powerFirmwareIsCheckedToo();
    void otherPowerStatusTypesAreChecked();
    void newRowWarnsAgain();

    void remoteFirmware_data();
    void remoteFirmware();
    void remoteCheckWithoutReferenceIsSilent();

    void versionBoxShowsTheController();
    void rowMayBeDeletedWhileTheBoxIsOpen();
    void rowMayGoBeforeItsController();
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

void TstModuleControllerCtrllr::differentModuleFirmwareWarnsOnce()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(1, "01.01"));
    row.take(moduleStatus(2, "01.02"));
    QCOMPARE(row.mismatch.count(), 1);
    QCOMPARE(row.mismatch.at(0).at(0).toString(), QStringLiteral("local"));
    QCOMPARE(row.mismatch.at(0).at(1).toInt(), 0);
}

void TstModuleControllerCtrllr::equalFirmwareIsSilent()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(1, "01.00"));
    row.take(powerStatus(kPowerType, "01.00"));
    QCOMPARE(row.mismatch.count(), 0);
}

void TstModuleControllerCtrllr::firmwareIsComparedAsText()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(1, "1.0"));
    QCOMPARE(row.mismatch.count(), 1);
}

void TstModuleControllerCtrllr::powerFirmwareIsCheckedToo()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(powerStatus(kPowerType, "01.01"));
    QCOMPARE(row.mismatch.count(), 1);
}

void TstModuleControllerCtrllr::otherPowerStatusTypesAreChecked()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(powerStatus(7, "01.00", ""));
    QCOMPARE(row.mismatch.count(), 0);
    row.take(powerStatus(7, "01.01", ""));
    QCOMPARE(row.mismatch.count(), 1);
    QVERIFY(!row.powerIsHidden());
}

void TstModuleControllerCtrllr::newRowWarnsAgain()
{
    for (int session = 0; session < 2; ++session) {
        Row row;
        row.take(moduleStatus(kControllerType, "01.00"));
        row.take(moduleStatus(1, "01.01"));
        QCOMPARE(row.mismatch.count(), 1);
    }
}

void TstModuleControllerCtrllr::remoteFirmware_data()
{
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("remote");
    QTest::addColumn<bool>("outdated");
    QTest::newRow("equal") << "1.2.3"
                           << "1.2.3" << false;
    QTest::newRow("leading zeros do not count") << "01.02"
                                                << "1.2" << false;
    QTest::newRow("first number") << "1.2.3"
                                  << "2.2.3" << true;
    QTest::newRow("last number") << "1.2.3"
                                 << "1.2.4" << true;
    QTest::newRow("newer than the web") << "1.2.3"
                                        << "1.2.2" << false;
    QTest::newRow("a greater number in front does not end it") << "2.0.0"
                                                               << "1.5.0" << true;
    QTest::newRow("numbers, not texts") << "1.9"
                                        << "1.10" << true;
    QTest::newRow("a missing remote number counts as 0") << "1.2.3"
                                                         << "1.2" << false;
    QTest::newRow("further remote numbers are not read") << "1.2"
                                                         << "1.2.9" << false;
    QTest::newRow("empty parts are dropped") << "1..2"
                                             << ".1.3" << true;
    QTest::newRow("no remote version") << "1.2"
                                       << "" << false;
    QTest::newRow("no local version") << ""
                                      << "9.9" << false;
}

void TstModuleControllerCtrllr::remoteFirmware()
{
    QFETCH(QString, local);
    QFETCH(QString, remote);
    QFETCH(bool, outdated);
    Row row;
    row.take(moduleStatus(kControllerType, local.toLatin1().constData()));
    row.controller->Slot_CheckFrmwrVersion(remote, 5);
    QCOMPARE(row.mismatch.count(), outdated ? 1 : 0);
    if (outdated) {
        QCOMPARE(row.mismatch.at(0).at(0).toString(), QStringLiteral("remote"));
        QCOMPARE(row.mismatch.at(0).at(1).toInt(), 5);
    }
}

void TstModuleControllerCtrllr::remoteCheckWithoutReferenceIsSilent()
{
    Row row;
    row.controller->Slot_CheckFrmwrVersion(QStringLiteral("9.9.9"), 1);
    QCOMPARE(row.mismatch.count(), 0);
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

QTEST_MAIN(TstModuleControllerCtrllr)
#include "tst_modulecontroller_ctrllr.moc"
