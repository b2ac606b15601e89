#include "modules/common/channelfunction.h"

#include <QtTest>

class TstChannelFunction : public QObject
{
    Q_OBJECT

private slots:
    void nameGivesItsCode_data();
    void nameGivesItsCode();
    void codeGivesItsName_data();
    void codeGivesItsName();
};

void TstChannelFunction::nameGivesItsCode_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("code");
    QTest::newRow("unknown") << QByteArray("Unknown") << 0;
    QTest::newRow("strain gauge") << QByteArray("Strain Gauge") << 1;
    QTest::newRow("voltage") << QByteArray("Voltage") << 2;
    QTest::newRow("IEPE") << QByteArray("IEPE/ICP\xC2\xAE") << 3;
    QTest::newRow("thermo") << QByteArray("Thermo") << 4;
    QTest::newRow("XVDT") << QByteArray("XVDT") << 5;
    QTest::newRow("potentiometer") << QByteArray("Potentiometer") << 6;
    QTest::newRow("current loop is a module only") << QByteArray("4_20") << -1;
    QTest::newRow("universal is a module only") << QByteArray("Analog") << -1;
    QTest::newRow("IEPE without its sign") << QByteArray("IEPE/ICP") << -1;
    QTest::newRow("other case") << QByteArray("voltage") << -1;
    QTest::newRow("space behind") << QByteArray("Voltage ") << -1;
    QTest::newRow("empty") << QByteArray() << -1;
}

void TstChannelFunction::nameGivesItsCode()
{
    QFETCH(QByteArray, name);
    QTEST(functionCode(QString::fromUtf8(name)), "code");
}

void TstChannelFunction::codeGivesItsName_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("name");
    for (int code = 0; code <= 255; ++code) {
        QByteArray name("Unknown");
        if (code == 1)
            name = "Strain Gauge";
        else if (code == 2)
            name = "Voltage";
        else if (code == 3)
            name = "IEPE/ICP\xC2\xAE";
        else if (code == 6)
            name = "Potentiometer";
        QTest::newRow(qPrintable(QString::number(code))) << code << name;
    }
}

void TstChannelFunction::codeGivesItsName()
{
    QFETCH(int, code);
    QFETCH(QByteArray, name);
    QCOMPARE(functionName(static_cast<quint8>(code)), QString::fromUtf8(name));
}

QTEST_GUILESS_MAIN(TstChannelFunction)
#include "tst_channelfunction.moc"
