#include "settings/serialparameters.h"

#include "support/messagecatcher.h"

#include <QtTest>

using model_Namespace::Settings;
using serialparameters::Field;

Q_DECLARE_METATYPE(Field)

class TstSerialParameters : public QObject
{
    Q_OBJECT

private slots:
    void goodTextSetsItsNumberAndGrowsTheText_data();
    void goodTextSetsItsNumberAndGrowsTheText();
    void badTextIsLoggedAndKeepsTheNumber_data();
    void badTextIsLoggedAndKeepsTheNumber();
    void fieldsStandInTheirOrder();
};

void TstSerialParameters::goodTextSetsItsNumberAndGrowsTheText_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Settings>("expected");

    const auto row = [](Field field, const char *text, const char *config, int Settings::*number, int value) {
        Settings expected;
        expected.serialConfig = QString::fromLatin1(config);
        expected.*number = value;
        QTest::newRow(text) << field << QString::fromLatin1(text) << expected;
    };
    row(Field::BaudRate, "1200", "1200", &Settings::baudRate, 1200);
    row(Field::BaudRate, "2400", "2400", &Settings::baudRate, 2400);
    row(Field::BaudRate, "4800", "4800", &Settings::baudRate, 4800);
    row(Field::BaudRate, "9600", "9600", &Settings::baudRate, 9600);
    row(Field::BaudRate, "19200", "19200", &Settings::baudRate, 19200);
    row(Field::BaudRate, "38400", "38400", &Settings::baudRate, 38400);
    row(Field::BaudRate, "57600", "57600", &Settings::baudRate, 57600);
    row(Field::BaudRate, "115200", "115200", &Settings::baudRate, 115200);
    row(Field::Parity, "N", "old:N", &Settings::parity, 0);
    row(Field::Parity, "E", "old:E", &Settings::parity, 2);
    row(Field::Parity, "O", "old:O", &Settings::parity, 3);
    row(Field::Parity, "S", "old:S", &Settings::parity, 4);
    row(Field::Parity, "M", "old:M", &Settings::parity, 5);
    row(Field::Parity, "EVEN", "old:E", &Settings::parity, 2);
    row(Field::Parity, "ODD", "old:O", &Settings::parity, 3);
    row(Field::Parity, "MARK", "old:M", &Settings::parity, 5);
    row(Field::Parity, "SPACE", "old:S", &Settings::parity, 4);
    row(Field::Parity, "NONE", "old:N", &Settings::parity, 0);
    row(Field::DataBits, "7", "old,7", &Settings::dataBits, 7);
    row(Field::DataBits, "8", "old,8", &Settings::dataBits, 8);
    row(Field::DataBits, "7 bits", "old,7", &Settings::dataBits, 7);
    row(Field::DataBits, "8 bits", "old,8", &Settings::dataBits, 8);
    row(Field::DataBits, "89", "old,8", &Settings::dataBits, 8);
    row(Field::StopBits, "1", "old,1", &Settings::stopBits, 1);
    row(Field::StopBits, "2", "old,2", &Settings::stopBits, 2);
    row(Field::StopBits, "1 bit", "old,1", &Settings::stopBits, 1);
    row(Field::StopBits, "2 bits", "old,2", &Settings::stopBits, 2);
}

void TstSerialParameters::goodTextSetsItsNumberAndGrowsTheText()
{
    QFETCH(Field, field);
    QFETCH(QString, text);
    QFETCH(Settings, expected);
    Settings settings;
    settings.serialConfig = QStringLiteral("old");
    if (field == Field::Parity && expected.parity == 0)
        settings.parity = 2;
    MessageCatcher log;
    QVERIFY(serialparameters::parse(field, text, settings));
    QCOMPARE(settings, expected);
    QCOMPARE(log.lines(), QStringList());
}

void TstSerialParameters::badTextIsLoggedAndKeepsTheNumber_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("config");
    QTest::addColumn<QString>("complaint");

    const QString baud = QStringLiteral("Baud Rate not Parsed");
    QTest::newRow("9601") << Field::BaudRate << "9601"
                          << "old" << baud;
    QTest::newRow("no number") << Field::BaudRate << "E"
                               << "old" << baud;
    QTest::newRow("no baud") << Field::BaudRate << ""
                             << "old" << baud;
    QTest::newRow("zero") << Field::BaudRate << "0"
                          << "old" << baud;
    QTest::newRow("begins like a rate") << Field::BaudRate << "9600x"
                                        << "old" << baud;
    const QString parity = QStringLiteral("Error in parsing Parity");
    QTest::newRow("parity X") << Field::Parity << "X"
                              << "old:X" << parity;
    QTest::newRow("parity in lower case") << Field::Parity << "e"
                                          << "old:e" << parity;
    QTest::newRow("no parity") << Field::Parity << ""
                               << "old:" << parity;
    const QString dataBits = QStringLiteral("Error in parsing data bits");
    QTest::newRow("6 data bits") << Field::DataBits << "6"
                                 << "old,6" << dataBits;
    QTest::newRow("9 data bits") << Field::DataBits << "9"
                                 << "old,9" << dataBits;
    QTest::newRow("no data bits") << Field::DataBits << ""
                                  << "old," << dataBits;
    const QString stopBits = QStringLiteral("Error in parsing Stop Bit");
    QTest::newRow("no stop bit at all") << Field::StopBits << "0"
                                        << "old,0" << stopBits;
    QTest::newRow("3 stop bits") << Field::StopBits << "3"
                                 << "old,3" << stopBits;
    QTest::newRow("no stop bits") << Field::StopBits << ""
                                  << "old," << stopBits;
}

void TstSerialParameters::badTextIsLoggedAndKeepsTheNumber()
{
    QFETCH(Field, field);
    QFETCH(QString, text);
    QFETCH(QString, config);
    QFETCH(QString, complaint);
    Settings settings;
    settings.serialConfig = QStringLiteral("old");
    settings.baudRate = 4800;
    settings.parity = 3;
    settings.dataBits = 7;
    settings.stopBits = 2;
    Settings expected = settings;
    expected.serialConfig = config;
    MessageCatcher log;
    QVERIFY(!serialparameters::parse(field, text, settings));
    QCOMPARE(settings, expected);
    QCOMPARE(log.lines(), QStringList{complaint});
}

void TstSerialParameters::fieldsStandInTheirOrder()
{
    Settings settings;
    settings.serialConfig = QStringLiteral("old");
    const QStringList texts = {QStringLiteral("9600"), QStringLiteral("O"), QStringLiteral("7"),
                               QStringLiteral("2")};
    int i = 0;
    for (const Field field : serialparameters::kFields)
        QVERIFY(serialparameters::parse(field, texts.at(i++), settings));
    QCOMPARE(settings.serialConfig, QStringLiteral("9600:O,7,2"));
}

QTEST_GUILESS_MAIN(TstSerialParameters)
#include "tst_serialparameters.moc"
