#include "base/gui/fonts.h"
#include "rowfixture.h"

namespace {

/// Where the buttons, the names, and what stands under them, are in the row.
QList<QPoint> placesInRow(const ModuleDevice_View &row)
{
    QList<QPoint> places;
    for (const char *name :
         {"pushButton_ChA", "ChDeviceLabel_A", "headers_A", "pushButton_ChB", "headers_B", "strip_B"}) {
        places << childByName<QWidget>(&row, name)->mapTo(&row, QPoint(0, 0));
    }
    return places;
}

} // namespace

/// The column headers of a row and what is hidden with them.
class TstModuleDeviceHeaders : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void headersOverBothChannels_data();
    void headersOverBothChannels();
    void levelIsHiddenInEveryForm_data();
    void levelIsHiddenInEveryForm();
    void separatorsAreHiddenInTheThermoFormOnly_data();
    void separatorsAreHiddenInTheThermoFormOnly();
    void changeLabels_data();
    void changeLabels();
    void changeLabelsAppliesTheFontAgain();
    void changeLabelsOfAnotherChannelDoesNothing();
    void hiddenHeadersKeepTheOthersInPlace();
    void headersHideAndShowAgain();
    void hiddenControlsLeaveButtonAndName();
    void hiddenChannelLeavesNothing();
};

void TstModuleDeviceHeaders::initTestCase()
{
    fonts::installSubstitutions();
}

void TstModuleDeviceHeaders::headersOverBothChannels_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QStringList>("texts"); // in the order of the header names
    const QStringList strainGauge{"Channel",      "BridgeType  [Ohm]", QString::fromUtf8("Range  [±mV/V]"),
                                  " Shunt  sel.", "Filter [Hz]",       "Offset ",
                                  "Invert"};
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge << strainGauge;
    QTest::newRow("6 universal") << HeaderForm::Universal << strainGauge;
    QTest::newRow("4 voltage") << HeaderForm::Voltage
                               << QStringList{"Channel", "Input",       QString::fromUtf8("Range  [±V]   "),
                                              "  ",      "Filter [Hz]", "",
                                              "Invert"};
    QTest::newRow("5 thermo") << HeaderForm::Thermo
                              << QStringList{
                                     "Channel",  "Sensor Type      ", QString::fromUtf8("Temp.Range  [°C]"),
                                     "  ",       "Filter [Hz]",       "",
                                     "         "};
}

void TstModuleDeviceHeaders::headersOverBothChannels()
{
    QFETCH(HeaderForm, form);
    const auto row = makeRow(form);
    for (const Channel channel : {Channel::A, Channel::B}) {
        QStringList shown;
        for (const QString &name : headersOf(channel))
            shown << text(*row, name.toLatin1().constData());
        QTEST(shown, "texts");
        QCOMPARE(hiddenHeaders(*row, channel), QStringList());
    }
}

void TstModuleDeviceHeaders::levelIsHiddenInEveryForm_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QString>("text");
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge << "Level  [%]";
    QTest::newRow("4 voltage") << HeaderForm::Voltage << "Level  [%]";
    QTest::newRow("5 thermo") << HeaderForm::Thermo << "       ";
    QTest::newRow("6 universal") << HeaderForm::Universal << "Level  [%]";
}

void TstModuleDeviceHeaders::levelIsHiddenInEveryForm()
{
    QFETCH(HeaderForm, form);
    const auto row = makeRow(form);
    for (const char *name : {"label_Level", "label_Level_2"}) {
        QTEST(text(*row, name), "text");
        QVERIFY(label(*row, name)->isHidden());
    }
    row->setHeadersVisible(Channel::A, true);
    QVERIFY(label(*row, "label_Level")->isHidden());
}

void TstModuleDeviceHeaders::separatorsAreHiddenInTheThermoFormOnly_data()
{
    addForms();
}

void TstModuleDeviceHeaders::separatorsAreHiddenInTheThermoFormOnly()
{
    QFETCH(HeaderForm, form);
    const auto row = makeRow(form);
    for (const char *name : {"vline_1", "vline_2"})
        QCOMPARE(childByName<QFrame>(row.get(), name)->isHidden(), form == HeaderForm::Thermo);
}

void TstModuleDeviceHeaders::changeLabels_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("strainGauge");
    QTest::newRow("1") << 1 << "Strain Gauge" << true;
    QTest::newRow("2") << 2 << "Voltage" << false;
    QTest::newRow("3") << 3 << QString::fromUtf8("IEPE/ICP®") << false;
    QTest::newRow("6") << 6 << "Potentiometer" << false;
    QTest::newRow("0") << 0 << "Unknown" << false;
    QTest::newRow("4 is no function") << 4 << "Unknown" << false;
    QTest::newRow("5 is no function") << 5 << "Unknown" << false;
    QTest::newRow("7 is no function") << 7 << "Unknown" << false;
    QTest::newRow("9 is no function") << 9 << "Unknown" << false;
    QTest::newRow("255") << 255 << "Unknown" << false;
}

void TstModuleDeviceHeaders::changeLabels()
{
    QFETCH(int, code);
    QFETCH(QString, name);
    QFETCH(bool, strainGauge);
    const auto row = makeRow(HeaderForm::Universal);
    for (const Channel channel : {Channel::A, Channel::B}) {
        // From the other state, so that the change is seen.
        emit row->Signal_ChangeLabels(static_cast<int>(channel), strainGauge ? 2 : 1);
        emit row->Signal_ChangeLabels(static_cast<int>(channel), static_cast<uchar>(code));
        const QByteArray suffix = channel == Channel::B ? "_2" : "";
        QCOMPARE(text(*row, channel == Channel::A ? "ChDeviceLabel_A" : "ChDeviceLabel_B"), name);
        QCOMPARE(text(*row, "label_FirstInfoDevice" + suffix),
                 strainGauge ? QStringLiteral("BridgeType  [Ohm]") : QStringLiteral("Input"));
        QCOMPARE(text(*row, "label_SecondInfoDevice" + suffix),
                 strainGauge ? QString::fromUtf8("Range  [±mV/V]") : QString::fromUtf8("Range  [±V]   "));
        QVERIFY(!label(*row, "label_SecondInfoDevice" + suffix)->isHidden());
        QCOMPARE(label(*row, "label_ManualOffset" + suffix)->isHidden(), !strainGauge);
        QCOMPARE(label(*row, "label_Shunt" + suffix)->isHidden(), !strainGauge);
    }
}

void TstModuleDeviceHeaders::changeLabelsAppliesTheFontAgain()
{
    const auto row = makeRow(HeaderForm::Universal);
    for (const char *name : {"label_DeviceName", "ChDeviceLabel_A", "ChDeviceLabel_B"})
        label(*row, name)->setFont(QFont());
    row->Slot_ChangeLabels(1, 2);
    for (const char *name : {"label_DeviceName", "ChDeviceLabel_A", "ChDeviceLabel_B"})
        checkNameFont(label(*row, name));
}

void TstModuleDeviceHeaders::changeLabelsOfAnotherChannelDoesNothing()
{
    const auto row = makeRow(HeaderForm::Universal);
    for (const int channel : {0, 3, -1})
        row->Slot_ChangeLabels(channel, 2);
    QCOMPARE(text(*row, "ChDeviceLabel_A"), QStringLiteral("Unknown"));
    QCOMPARE(text(*row, "ChDeviceLabel_B"), QStringLiteral("Unknown"));
    QCOMPARE(hiddenHeaders(*row, Channel::A), QStringList());
    QCOMPARE(hiddenHeaders(*row, Channel::B), QStringList());
    // Channel A alone: B stays.
    row->Slot_ChangeLabels(1, 2);
    QCOMPARE(text(*row, "ChDeviceLabel_B"), QStringLiteral("Unknown"));
    QCOMPARE(hiddenHeaders(*row, Channel::B), QStringList());
}

void TstModuleDeviceHeaders::hiddenHeadersKeepTheOthersInPlace()
{
    const auto row = makeRow(HeaderForm::Universal);
    row->show();
    QVERIFY(QTest::qWaitForWindowExposed(row.get()));
    const QList<QPoint> before = placesInRow(*row);
    row->Slot_ChangeLabels(1, 2);
    QCoreApplication::processEvents(); // the layouts follow
    QCOMPARE(placesInRow(*row), before);
    row->setHeadersVisible(Channel::A, false);
    QCoreApplication::processEvents(); // the layouts follow
    QCOMPARE(placesInRow(*row), before);
}

void TstModuleDeviceHeaders::headersHideAndShowAgain()
{
    const auto row = makeRow(HeaderForm::Universal);
    row->setHeadersVisible(Channel::B, false);
    QCOMPARE(hiddenHeaders(*row, Channel::B), headersOf(Channel::B));
    QCOMPARE(hiddenHeaders(*row, Channel::A), QStringList());
    QVERIFY(!button(*row, "pushButton_ChB")->isHidden());
    row->setHeadersVisible(Channel::B, true);
    QCOMPARE(hiddenHeaders(*row, Channel::B), QStringList());
}

void TstModuleDeviceHeaders::hiddenControlsLeaveButtonAndName()
{
    const auto row = makeRow(HeaderForm::Universal);
    auto *strip = new QFrame;
    row->addChannel(2, strip);
    row->show();
    QVERIFY(QTest::qWaitForWindowExposed(row.get()));
    const QList<QPoint> before = placesInRow(*row);
    row->setControlsVisible(Channel::B, false);
    QCoreApplication::processEvents(); // the layouts follow
    QVERIFY(!strip->isVisible());
    QCOMPARE(hiddenHeaders(*row, Channel::B), headersOf(Channel::B));
    QCOMPARE(hiddenHeaders(*row, Channel::A), QStringList());
    QVERIFY(button(*row, "pushButton_ChB")->isVisible());
    QVERIFY(label(*row, "ChDeviceLabel_B")->isVisible());
    QVERIFY(childByName<QWidget>(row.get(), "strip_A")->isVisible());
    QCOMPARE(placesInRow(*row), before);
    row->setControlsVisible(Channel::B, true);
    QVERIFY(strip->isVisible());
    QCOMPARE(hiddenHeaders(*row, Channel::B), QStringList());
}

void TstModuleDeviceHeaders::hiddenChannelLeavesNothing()
{
    const auto row = makeRow(HeaderForm::Universal);
    auto *strip = new QFrame;
    row->addChannel(1, strip);
    row->show();
    QVERIFY(strip->isVisible());
    row->setChannelVisible(Channel::A, false);
    QVERIFY(!strip->isVisible());
    QVERIFY(!button(*row, "pushButton_ChA")->isVisible());
    QVERIFY(!label(*row, "ChDeviceLabel_A")->isVisible());
    QCOMPARE(hiddenHeaders(*row, Channel::A), headersOf(Channel::A));
    QVERIFY(button(*row, "pushButton_ChB")->isVisible());
    row->setChannelVisible(Channel::A, true);
    QVERIFY(strip->isVisible());
    QVERIFY(button(*row, "pushButton_ChA")->isVisible());
}

QTEST_MAIN(TstModuleDeviceHeaders)
#include "tst_moduledevice_headers.moc"
