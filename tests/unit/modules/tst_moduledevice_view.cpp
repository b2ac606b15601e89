#include "base/gui/fonts.h"
#include "modules/common/rowcolumns.h"
#include "modules/moduledevice_view.h"
#include "support/childbyname.h"

#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

Q_DECLARE_METATYPE(HeaderForm)

namespace {

std::unique_ptr<ModuleDevice_View> makeRow(HeaderForm form, int firstChannel = 5)
{
    ModuleIdentification identification;
    identification.headerForm = form;
    return std::make_unique<ModuleDevice_View>(3, identification, ModuleMeasurement(), firstChannel,
                                               firstChannel + 1);
}

QLabel *label(const ModuleDevice_View &row, const char *name)
{
    return childByName<QLabel>(&row, name);
}

QString text(const ModuleDevice_View &row, const char *name)
{
    return label(row, name)->text();
}

QPushButton *button(const ModuleDevice_View &row, const char *name)
{
    return childByName<QPushButton>(&row, name);
}

QFont nameFont()
{
    QFont font(QStringLiteral("Segoe UI"));
    font.setPixelSize(12);
    font.setWeight(75);
    return font;
}

void checkNameFont(const QLabel *name)
{
    QCOMPARE(name->font().family(), nameFont().family());
    QCOMPARE(name->font().pixelSize(), nameFont().pixelSize());
    QCOMPARE(name->font().weight(), nameFont().weight());
}

const QStringList kHeaderNames{"Channel",      "FirstInfoDevice", "SecondInfoDevice", "Shunt", "Filter",
                               "ManualOffset", "RevPol"};

/// Names of a channel's header labels, that of the level left out.
QStringList headersOf(Channel channel)
{
    QStringList names;
    for (const QString &name : kHeaderNames)
        names << QStringLiteral("label_") + name + (channel == Channel::B ? QStringLiteral("_2") : QString());
    return names;
}

QStringList hiddenHeaders(const ModuleDevice_View &row, Channel channel)
{
    QStringList hidden;
    for (const QString &name : headersOf(channel)) {
        if (label(row, name.toLatin1().constData())->isHidden())
            hidden << name;
    }
    return hidden;
}

void addForms()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge;
    QTest::newRow("4 voltage") << HeaderForm::Voltage;
    QTest::newRow("5 thermo") << HeaderForm::Thermo;
    QTest::newRow("6 universal") << HeaderForm::Universal;
}

/// Whether the text of a label can be read whole.
bool showsAll(const QLabel *label)
{
    const QString shown = label->text().trimmed();
    if (shown.isEmpty())
        return true;
    const int flags = static_cast<int>(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0);
    const QRect needed = label->fontMetrics().boundingRect(label->contentsRect(), flags, shown);
    return label->contentsRect().contains(needed);
}

} // namespace

class TstModuleDeviceView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void captionsReadAsAgreed_data();
    void captionsReadAsAgreed();
    void showsIdentificationAndNumbers();
    void showsTheMeasurement();
    void everyButtonHasANameForReaders();
    void toolTipOfTheFirmware();
    void namesAreEmphasised();

    void headersOverBothChannels_data();
    void headersOverBothChannels();
    void levelIsHiddenInEveryForm_data();
    void levelIsHiddenInEveryForm();
    void separatorsAreHiddenInTheThermoFormOnly_data();
    void separatorsAreHiddenInTheThermoFormOnly();
    void functionButtonsHavePictureAndToolTip();
    void otherFormsLeaveTheButtonsPlain_data();
    void otherFormsLeaveTheButtonsPlain();

    void channelNumbers_data();
    void channelNumbers();
    void moduleButtonIsPassedOn();
    void channelButtonsTellThreeTexts();
    void tabOrderFollowsReadingOrder();

    void channelsGoIntoTheirLayouts();
    void otherChannelsAreIgnored();

    void settersShowTheirTexts();
    void moduleTextsAreNoMarkup();
    void channelLabelsApplyTheFontAgain();
    void liveValuesAreFormatted();

    void changeLabels_data();
    void changeLabels();
    void changeLabelsOfAnotherChannelDoesNothing();
    void hiddenHeadersKeepTheOthersInPlace();
    void headersHideAndShowAgain();
    void hiddenChannelLeavesNothing();

    void rowFitsTheWindow_data();
    void rowFitsTheWindow();
};

void TstModuleDeviceView::initTestCase()
{
    fonts::installSubstitutions();
}

void TstModuleDeviceView::captionsReadAsAgreed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("label_TxtModuleStatus") << "Module Status";
    QTest::newRow("label_TxtVoltage") << "Voltage";
    QTest::newRow("label_TxtTemperature") << "Temp.";
    QTest::newRow("label_TxtSelftest") << "Selftest";
    QTest::newRow("label_TxtSN") << "S/N";
    QTest::newRow("label_TxtHw") << "HW:  ";
    QTest::newRow("label_TxtSw") << "FW1:";
    QTest::newRow("label_TxtSw_2") << "FW2:";
    QTest::newRow("label_TxtModule") << "Module";
}

void TstModuleDeviceView::captionsReadAsAgreed()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    QTEST(text(*row, QTest::currentDataTag()), "text");
    QVERIFY(!label(*row, QTest::currentDataTag())->isHidden());
}

void TstModuleDeviceView::showsIdentificationAndNumbers()
{
    const ModuleIdentification identification{QStringLiteral("Name"),  QStringLiteral("4711"),
                                              QStringLiteral("01.02"), QStringLiteral("03.04"),
                                              QStringLiteral("05.06"), HeaderForm::Voltage};
    const ModuleDevice_View row(17, identification, ModuleMeasurement(), 33, 34);
    QCOMPARE(text(row, "label_DeviceName"), QStringLiteral("Name"));
    QCOMPARE(text(row, "label_SnVersion"), QStringLiteral("4711"));
    QCOMPARE(text(row, "label_SwVersion"), QStringLiteral("01.02"));
    QCOMPARE(text(row, "label_FpgaVersn"), QStringLiteral("03.04"));
    QCOMPARE(text(row, "label_HwVersion"), QStringLiteral("05.06"));
    QCOMPARE(text(row, "ChDeviceLabel_A"), QStringLiteral("Name"));
    QCOMPARE(text(row, "ChDeviceLabel_B"), QStringLiteral("Name"));
    QCOMPARE(button(row, "pushButton_DeviceButton")->text(), QStringLiteral("17"));
    QCOMPARE(button(row, "pushButton_ChA")->text(), QStringLiteral("33"));
    QCOMPARE(button(row, "pushButton_ChB")->text(), QStringLiteral("34"));
}

void TstModuleDeviceView::showsTheMeasurement()
{
    ModuleMeasurement measurement;
    measurement.voltage = 12.0F;
    measurement.temperature = -55.0F;
    measurement.selftest = 10;
    const ModuleDevice_View row(1, ModuleIdentification(), measurement, 1, 2);
    QCOMPARE(text(row, "label_Voltage"), QStringLiteral("12.00 V"));
    QCOMPARE(text(row, "label_Temperature"), QString::fromUtf8("-55.0 °C"));
    QCOMPARE(text(row, "label_SelftestSt"), QStringLiteral("0x0A"));
}

void TstModuleDeviceView::everyButtonHasANameForReaders()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    QCOMPARE(button(*row, "pushButton_DeviceButton")->accessibleName(), QStringLiteral("Module 3"));
    QCOMPARE(button(*row, "pushButton_ChA")->accessibleName(), QStringLiteral("Channel 5"));
    QCOMPARE(button(*row, "pushButton_ChB")->accessibleName(), QStringLiteral("Channel 6"));
}

void TstModuleDeviceView::toolTipOfTheFirmware()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    const QString tip = QStringLiteral("Controller Version    FPGA Version");
    QCOMPARE(label(*row, "label_TxtSw")->toolTip(), tip);
    QCOMPARE(label(*row, "label_SwVersion")->toolTip(), tip);
}

void TstModuleDeviceView::namesAreEmphasised()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    for (const char *name : {"label_DeviceName", "ChDeviceLabel_A", "ChDeviceLabel_B"})
        checkNameFont(label(*row, name));
    QCOMPARE(label(*row, "label_SnVersion")->font().pixelSize(), 12);
    QCOMPARE(label(*row, "label_SnVersion")->font().family(), QStringLiteral("Segoe UI"));
}

void TstModuleDeviceView::headersOverBothChannels_data()
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

void TstModuleDeviceView::headersOverBothChannels()
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

void TstModuleDeviceView::levelIsHiddenInEveryForm_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QString>("text");
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge << "Level  [%]";
    QTest::newRow("4 voltage") << HeaderForm::Voltage << "Level  [%]";
    QTest::newRow("5 thermo") << HeaderForm::Thermo << "       ";
    QTest::newRow("6 universal") << HeaderForm::Universal << "Level  [%]";
}

void TstModuleDeviceView::levelIsHiddenInEveryForm()
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

void TstModuleDeviceView::separatorsAreHiddenInTheThermoFormOnly_data()
{
    addForms();
}

void TstModuleDeviceView::separatorsAreHiddenInTheThermoFormOnly()
{
    QFETCH(HeaderForm, form);
    const auto row = makeRow(form);
    for (const char *name : {"vline_1", "vline_2"})
        QCOMPARE(childByName<QFrame>(row.get(), name)->isHidden(), form == HeaderForm::Thermo);
}

void TstModuleDeviceView::functionButtonsHavePictureAndToolTip()
{
    const auto row = makeRow(HeaderForm::Universal);
    QVERIFY(!QPixmap(QStringLiteral(":/pictures/analog_button.png")).isNull());
    for (const char *name : {"pushButton_ChA", "pushButton_ChB"}) {
        QCOMPARE(button(*row, name)->styleSheet(),
                 QStringLiteral("background-image: url(:/pictures/analog_button.png);QToolTip { color: "
                                "#000000; border: 0px; }"));
        QCOMPARE(button(*row, name)->toolTip(),
                 QStringLiteral("\nClick this button to change the channel function"));
    }
}

void TstModuleDeviceView::otherFormsLeaveTheButtonsPlain_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge;
    QTest::newRow("4 voltage") << HeaderForm::Voltage;
    QTest::newRow("5 thermo") << HeaderForm::Thermo;
}

void TstModuleDeviceView::otherFormsLeaveTheButtonsPlain()
{
    QFETCH(HeaderForm, form);
    const auto row = makeRow(form);
    QCOMPARE(button(*row, "pushButton_ChA")->styleSheet(), QString());
    QCOMPARE(button(*row, "pushButton_ChA")->toolTip(), QString());
}

void TstModuleDeviceView::channelNumbers_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("readA");
    QTest::addColumn<int>("readB");
    QTest::newRow("first module") << 1 << 1 << 2;
    QTest::newRow("last module: 256 reads as 0") << 255 << 255 << 0;
    QTest::newRow("256 on A too") << 256 << 0 << 257;
}

void TstModuleDeviceView::channelNumbers()
{
    QFETCH(int, first);
    const auto row = makeRow(HeaderForm::StrainGauge, first);
    QTEST(row->channelNumberA(), "readA");
    QTEST(row->channelNumberB(), "readB");
}

void TstModuleDeviceView::moduleButtonIsPassedOn()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    QSignalSpy pressed(row.get(), &ModuleDevice_View::Signal_DeviceButton);
    QTest::mouseClick(button(*row, "pushButton_DeviceButton"), Qt::LeftButton);
    QCOMPARE(pressed.count(), 1);
}

void TstModuleDeviceView::channelButtonsTellThreeTexts()
{
    const auto row = makeRow(HeaderForm::Universal);
    row->setChannelLabels(QStringLiteral("Voltage"), QStringLiteral("Potentiometer"));
    QSignalSpy pressed(row.get(), &ModuleDevice_View::Signal_Channelbutton);
    QTest::mouseClick(button(*row, "pushButton_ChA"), Qt::LeftButton);
    QTest::mouseClick(button(*row, "pushButton_ChB"), Qt::LeftButton);
    QCOMPARE(pressed.count(), 2);
    QCOMPARE(pressed.at(0).at(0).toStringList(),
             (QStringList{QStringLiteral("Voltage"), QStringLiteral("Potentiometer"), QStringLiteral("5")}));
    QCOMPARE(pressed.at(1).at(0).toStringList(),
             (QStringList{QStringLiteral("Potentiometer"), QStringLiteral("Voltage"), QStringLiteral("6")}));
}

void TstModuleDeviceView::tabOrderFollowsReadingOrder()
{
    const auto row = makeRow(HeaderForm::Universal);
    row->show();
    row->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(row.get()));
    button(*row, "pushButton_DeviceButton")->setFocus();
    QStringList order;
    for (int i = 0; i < 3; ++i) {
        order << row->focusWidget()->objectName();
        QTest::keyClick(row->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, (QStringList{"pushButton_DeviceButton", "pushButton_ChA", "pushButton_ChB"}));
}

void TstModuleDeviceView::channelsGoIntoTheirLayouts()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    auto *stripA = new QFrame;
    auto *stripB = new QFrame;
    row->addChannel(1, stripA);
    row->addChannel(2, stripB);
    QCOMPARE(childByName<QHBoxLayout>(row.get(), "horizontalLayout_10")->indexOf(stripA), 0);
    QCOMPARE(childByName<QHBoxLayout>(row.get(), "horizontalLayout_12")->indexOf(stripB), 0);
    QVERIFY(row->isAncestorOf(stripA));
    QVERIFY(row->isAncestorOf(stripB));
}

void TstModuleDeviceView::otherChannelsAreIgnored()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    for (const int channel : {0, 3, -1}) {
        QFrame strip;
        row->addChannel(channel, &strip);
        QVERIFY(!strip.parent());
    }
    QCOMPARE(childByName<QHBoxLayout>(row.get(), "horizontalLayout_10")->count(), 0);
    QCOMPARE(childByName<QHBoxLayout>(row.get(), "horizontalLayout_12")->count(), 0);
}

void TstModuleDeviceView::settersShowTheirTexts()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    row->setDeviceName(QStringLiteral("a"));
    row->setSerialNumber(QStringLiteral("b"));
    row->setHardware(QStringLiteral("c"));
    row->setFirmware1(QStringLiteral("d"));
    row->setFirmware2(QStringLiteral("e"));
    row->setChannelLabels(QStringLiteral("f"), QStringLiteral("g"));
    row->setInfoHeaders(QStringLiteral("h"), QStringLiteral("i"));
    QStringList shown;
    for (const char *name : {"label_DeviceName", "label_SnVersion", "label_HwVersion", "label_SwVersion",
                             "label_FpgaVersn", "ChDeviceLabel_A", "ChDeviceLabel_B", "label_FirstInfoDevice",
                             "label_SecondInfoDevice", "label_FirstInfoDevice_2", "label_SecondInfoDevice_2"})
        shown << text(*row, name);
    QCOMPARE(shown.join(QLatin1Char(' ')), QStringLiteral("a b c d e f g h i h i"));
}

void TstModuleDeviceView::moduleTextsAreNoMarkup()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    for (const char *name : {"label_SnVersion", "label_HwVersion", "label_SwVersion", "label_FpgaVersn"})
        QCOMPARE(label(*row, name)->textFormat(), Qt::PlainText);
}

void TstModuleDeviceView::channelLabelsApplyTheFontAgain()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    label(*row, "label_DeviceName")->setFont(QFont());
    label(*row, "ChDeviceLabel_A")->setFont(QFont());
    row->setChannelLabels(QStringLiteral("A"), QStringLiteral("B"));
    checkNameFont(label(*row, "label_DeviceName"));
    checkNameFont(label(*row, "ChDeviceLabel_A"));
    checkNameFont(label(*row, "ChDeviceLabel_B"));
}

void TstModuleDeviceView::liveValuesAreFormatted()
{
    const auto row = makeRow(HeaderForm::StrainGauge);
    row->setVoltage(9.5F);
    row->setTemperature(25.5F);
    row->setSelftest(31);
    QCOMPARE(text(*row, "label_Voltage"), QStringLiteral("9.50 V"));
    QCOMPARE(text(*row, "label_Temperature"), QString::fromUtf8("25.5 °C"));
    QCOMPARE(text(*row, "label_SelftestSt"), QStringLiteral("0x1F"));
    row->setSelftest(0);
    QCOMPARE(text(*row, "label_SelftestSt"), QStringLiteral("O.K."));
}

void TstModuleDeviceView::changeLabels_data()
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

void TstModuleDeviceView::changeLabels()
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

void TstModuleDeviceView::changeLabelsOfAnotherChannelDoesNothing()
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

void TstModuleDeviceView::hiddenHeadersKeepTheOthersInPlace()
{
    const auto row = makeRow(HeaderForm::Universal);
    row->show();
    const QRect filter = label(*row, "label_Filter")->geometry();
    const QRect button5 = button(*row, "pushButton_ChA")->geometry();
    row->Slot_ChangeLabels(1, 2);
    row->setHeadersVisible(Channel::A, false);
    row->setHeadersVisible(Channel::A, true);
    row->layout()->activate();
    QCOMPARE(label(*row, "label_Filter")->geometry(), filter);
    QCOMPARE(button(*row, "pushButton_ChA")->geometry(), button5);
}

void TstModuleDeviceView::headersHideAndShowAgain()
{
    const auto row = makeRow(HeaderForm::Universal);
    row->setHeadersVisible(Channel::B, false);
    QCOMPARE(hiddenHeaders(*row, Channel::B), headersOf(Channel::B));
    QCOMPARE(hiddenHeaders(*row, Channel::A), QStringList());
    QVERIFY(!button(*row, "pushButton_ChB")->isHidden());
    row->setHeadersVisible(Channel::B, true);
    QCOMPARE(hiddenHeaders(*row, Channel::B), QStringList());
}

void TstModuleDeviceView::hiddenChannelLeavesNothing()
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

void TstModuleDeviceView::rowFitsTheWindow_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QString>("family");
    for (const char *family : {"Open Sans", "DejaVu Sans"}) {
        for (const HeaderForm form :
             {HeaderForm::StrainGauge, HeaderForm::Voltage, HeaderForm::Thermo, HeaderForm::Universal})
            QTest::addRow("form %d, %s", static_cast<int>(form), family) << form << QString(family);
    }
}

void TstModuleDeviceView::rowFitsTheWindow()
{
    QFETCH(HeaderForm, form);
    QFETCH(QString, family);
    if (!QFontDatabase().hasFamily(family))
        QSKIP("The font is not installed.");
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), family);
    const auto row = makeRow(form, 255);
    row->setSerialNumber(QStringLiteral("1234567"));
    row->setDeviceName(QStringLiteral("Potentiometer"));
    row->setChannelLabels(QStringLiteral("Potentiometer"), QStringLiteral("Potentiometer"));
    row->setVoltage(20.47F);
    row->setTemperature(200.5F);
    row->setSelftest(31);
    row->resize(rowcolumns::kRowWidth, rowcolumns::kRowHeight);
    row->show();
    row->layout()->activate();
    QVERIFY(row->minimumSizeHint().width() <= rowcolumns::kRowWidth);
    QCOMPARE(row->height(), rowcolumns::kRowHeight);
    const auto labels = row->findChildren<QLabel *>();
    for (const QLabel *shown : labels) {
        if (shown->isHidden())
            continue;
        QVERIFY2(showsAll(shown), qPrintable(shown->objectName()));
        const QRect inRow(shown->mapTo(row.get(), QPoint(0, 0)), shown->size());
        QVERIFY2(row->rect().contains(inRow), qPrintable(shown->objectName()));
    }
    for (const QWidget *strip :
         {childByName<QWidget>(row.get(), "strip_A"), childByName<QWidget>(row.get(), "strip_B")}) {
        QCOMPARE(strip->size(), QSize(rowcolumns::kStripWidth, rowcolumns::kStripHeight));
        QVERIFY(row->rect().contains(QRect(strip->mapTo(row.get(), QPoint(0, 0)), strip->size())));
    }
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    fonts::installSubstitutions();
}

QTEST_MAIN(TstModuleDeviceView)
#include "tst_moduledevice_view.moc"
