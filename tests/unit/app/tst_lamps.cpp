#include "app/lamps.h"

#include <QLineEdit>
#include <QtTest>

class TstLamps : public QObject
{
    Q_OBJECT

private slots:
    void codeColoursTheBaseRoleOfAllGroups_data();
    void codeColoursTheBaseRoleOfAllGroups();
    void sameColourAgainChangesNothing();
    void unknownCodeLeavesThePalette_data();
    void unknownCodeLeavesThePalette();
    void otherRolesStay();
};

void TstLamps::codeColoursTheBaseRoleOfAllGroups_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QColor>("colour");

    QTest::newRow("0") << 0 << QColor(154, 237, 191);
    QTest::newRow("2 gray") << 2 << QColor(160, 160, 164);
    QTest::newRow("3 yellow") << 3 << QColor(255, 255, 0);
    QTest::newRow("4") << 4 << QColor(240, 240, 240);
    QTest::newRow("5 green") << 5 << QColor(0, 255, 0);
}

void TstLamps::codeColoursTheBaseRoleOfAllGroups()
{
    QFETCH(int, code);
    QFETCH(QColor, colour);
    QLineEdit lamp;
    setLampColour(&lamp, code);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        QCOMPARE(lamp.palette().color(group, QPalette::Base), colour);
}

void TstLamps::sameColourAgainChangesNothing()
{
    QLineEdit lamp;
    setLampColour(&lamp, LampColour::Yellow);
    const qint64 before = lamp.palette().cacheKey();
    setLampColour(&lamp, LampColour::Yellow);
    QCOMPARE(lamp.palette().cacheKey(), before);
    setLampColour(&lamp, LampColour::Green);
    QVERIFY(lamp.palette().cacheKey() != before);
}

void TstLamps::unknownCodeLeavesThePalette_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {-1, 1, 6, 7, 255})
        QTest::newRow(qPrintable(QString::number(code))) << code;
}

void TstLamps::unknownCodeLeavesThePalette()
{
    QFETCH(int, code);
    QLineEdit lamp;
    setLampColour(&lamp, LampColour::Yellow);
    const QPalette before = lamp.palette();
    setLampColour(&lamp, code);
    QCOMPARE(lamp.palette(), before);
}

void TstLamps::otherRolesStay()
{
    QLineEdit lamp;
    const QColor text = lamp.palette().color(QPalette::Text);
    const QColor window = lamp.palette().color(QPalette::Window);
    setLampColour(&lamp, LampColour::Green);
    QCOMPARE(lamp.palette().color(QPalette::Text), text);
    QCOMPARE(lamp.palette().color(QPalette::Window), window);
}

QTEST_MAIN(TstLamps)

#include "tst_lamps.moc"
