#include "link/permissionadvice.h"

#include <QtTest>

class TstPermissionAdvice : public QObject
{
    Q_OBJECT

private slots:
    void portGroupAndRemedyAreNamed();
    void nobodyIsSentIntoTheGroupOfTheSuperuser();
    void aGroupWithoutNameIsToldByItsNumber();
};

void TstPermissionAdvice::portGroupAndRemedyAreNamed()
{
    QCOMPARE(permissionAdvice(QStringLiteral("COM33"), QStringLiteral("/dev/ttyUSB0"),
                              QStringLiteral("dialout"), 20),
             QStringLiteral("No permission to open port COM33 (/dev/ttyUSB0), which belongs to the group "
                            "\"dialout\": add your user to this group with \"sudo usermod -aG dialout "
                            "$USER\", then log out and in again."));
}

void TstPermissionAdvice::nobodyIsSentIntoTheGroupOfTheSuperuser()
{
    const QString advice =
        permissionAdvice(QStringLiteral("COM1"), QStringLiteral("/dev/ttyS0"), QStringLiteral("root"), 0);
    QVERIFY(advice.contains(QStringLiteral("belongs to the group \"root\": ask the administrator")));
    QVERIFY(!advice.contains(QStringLiteral("usermod")));
}

void TstPermissionAdvice::aGroupWithoutNameIsToldByItsNumber()
{
    const QString advice =
        permissionAdvice(QStringLiteral("COM1"), QStringLiteral("/dev/ttyS0"), QString(), 54321);
    QVERIFY(
        advice.contains(QStringLiteral("belongs to the group number 54321, which has no name here: ask")));
    QVERIFY(!advice.contains(QStringLiteral("usermod")));
    QVERIFY(!advice.contains(QStringLiteral("\"\"")));
}

QTEST_APPLESS_MAIN(TstPermissionAdvice)
#include "tst_permissionadvice.moc"
