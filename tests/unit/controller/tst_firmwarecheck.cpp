#include "controllerrow.h"

#include <QtTest>

/// When the top row warns of firmware: of modules that differ, and of newer firmware on the web.
class TstFirmwareCheck : public QObject
{
    Q_OBJECT

private slots:
    void differentModuleFirmwareWarnsOnce();
    void equalFirmwareIsSilent();
    void firmwareIsComparedAsText();
    void powerFirmwareIsCheckedToo();
    void otherPowerStatusTypesAreChecked();
    void newRowWarnsAgain();
    void firmwareBeforeTheControllersIsAMismatch();
    void secondControllerStatusReplacesTheReference();
    void remoteFirmware_data();
    void remoteFirmware();
    void remoteCheckWithoutReferenceIsSilent();
    void remoteCheckWarnsAgainAfterALocalWarning();
};

void TstFirmwareCheck::differentModuleFirmwareWarnsOnce()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(1, "01.01"));
    row.take(moduleStatus(2, "01.02"));
    QCOMPARE(row.mismatch.count(), 1);
    QCOMPARE(row.mismatch.at(0).at(0).toString(), QStringLiteral("local"));
    QCOMPARE(row.mismatch.at(0).at(1).toInt(), 0);
}

void TstFirmwareCheck::equalFirmwareIsSilent()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(1, "01.00"));
    row.take(powerStatus(kPowerType, "01.00"));
    QCOMPARE(row.mismatch.count(), 0);
}

void TstFirmwareCheck::firmwareIsComparedAsText()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(1, "1.0"));
    QCOMPARE(row.mismatch.count(), 1);
}

void TstFirmwareCheck::powerFirmwareIsCheckedToo()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(powerStatus(kPowerType, "01.01"));
    QCOMPARE(row.mismatch.count(), 1);
}

void TstFirmwareCheck::otherPowerStatusTypesAreChecked()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(powerStatus(7, "01.00", ""));
    QCOMPARE(row.mismatch.count(), 0);
    row.take(powerStatus(7, "01.01", ""));
    QCOMPARE(row.mismatch.count(), 1);
    QVERIFY(!row.powerIsHidden());
}

void TstFirmwareCheck::newRowWarnsAgain()
{
    for (int session = 0; session < 2; ++session) {
        Row row;
        row.take(moduleStatus(kControllerType, "01.00"));
        row.take(moduleStatus(1, "01.01"));
        QCOMPARE(row.mismatch.count(), 1);
    }
}

void TstFirmwareCheck::firmwareBeforeTheControllersIsAMismatch()
{
    // Without a controller status the reference is empty, and every firmware differs from it.
    Row row;
    row.take(moduleStatus(1, "01.00"));
    QCOMPARE(row.mismatch.count(), 1);
    QCOMPARE(row.mismatch.at(0).at(0).toString(), QStringLiteral("local"));
    Row silent;
    silent.take(moduleStatus(1, ""));
    QCOMPARE(silent.mismatch.count(), 0);
}

void TstFirmwareCheck::secondControllerStatusReplacesTheReference()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(kControllerType, "02.00"));
    row.take(moduleStatus(1, "02.00"));
    QCOMPARE(row.mismatch.count(), 0);
    row.controller->Slot_CheckFrmwrVersion(QStringLiteral("1.5"), 0);
    QCOMPARE(row.mismatch.count(), 1); // 2 is not less than 1, but 0 is less than 5
    row.take(moduleStatus(1, "01.00"));
    QCOMPARE(row.mismatch.count(), 2);
    QCOMPARE(row.mismatch.at(1).at(0).toString(), QStringLiteral("local"));
}

void TstFirmwareCheck::remoteFirmware_data()
{
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("remote");
    QTest::addColumn<bool>("outdated");
    QTest::newRow("equal") << "1.2.3"
                           << "1.2.3" << false;
    QTest::newRow("two greater numbers tell it once") << "1.2.3"
                                                      << "1.3.4" << true;
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
    QTest::newRow("a remote part that is no number counts as 0") << "1.2"
                                                                 << "1.a" << false;
    QTest::newRow("a local part that is no number counts as 0") << "1.a"
                                                                << "1.1" << true;
    QTest::newRow("no number on either side") << "1.a"
                                              << "1.b" << false;
    QTest::newRow("no remote version") << "1.2"
                                       << "" << false;
    QTest::newRow("no local version") << ""
                                      << "9.9" << false;
}

void TstFirmwareCheck::remoteFirmware()
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

void TstFirmwareCheck::remoteCheckWithoutReferenceIsSilent()
{
    Row row;
    row.controller->Slot_CheckFrmwrVersion(QStringLiteral("9.9.9"), 1);
    QCOMPARE(row.mismatch.count(), 0);
}

void TstFirmwareCheck::remoteCheckWarnsAgainAfterALocalWarning()
{
    Row row;
    row.take(moduleStatus(kControllerType, "1.2"));
    row.take(moduleStatus(1, "1.1"));
    QCOMPARE(row.mismatch.count(), 1);
    for (const int flag : {0, 1, 1}) {
        row.mismatch.clear();
        row.controller->Slot_CheckFrmwrVersion(QStringLiteral("1.3"), flag);
        QCOMPARE(row.mismatch.count(), 1);
        QCOMPARE(row.mismatch.at(0).at(0).toString(), QStringLiteral("remote"));
        QCOMPARE(row.mismatch.at(0).at(1).toInt(), flag);
    }
    row.mismatch.clear();
    row.take(moduleStatus(2, "1.0")); // that warning was given
    QCOMPARE(row.mismatch.count(), 0);
}

QTEST_MAIN(TstFirmwareCheck)
#include "tst_firmwarecheck.moc"
