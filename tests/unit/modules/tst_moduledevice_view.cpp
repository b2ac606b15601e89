#include "base/gui/fonts.h"
#include "modules/common/rowcolumns.h"
#include "rowfixture.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QSignalSpy>
#include <QXmlStreamReader>

namespace {

/// The text that the form gives a widget.
QString textInForm(const char *widget)
{
    QFile file(QFINDTESTDATA("../../../src/forms/moduledevice_view.ui"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader form(&file);
    const auto find = [&form](const char *element, const QString &name) {
        while (!form.atEnd()) {
            if (form.readNext() == QXmlStreamReader::StartElement && form.name() == QLatin1String(element) &&
                form.attributes().value(QLatin1String("name")) == name)
                return;
        }
    };
    find("widget", QString::fromLatin1(widget));
    find("property", QStringLiteral("text"));
    form.readNextStartElement();
    return form.readElementText();
}

} // namespace

class TstModuleDeviceView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void captionsReadAsAgreed_data();
    void captionsReadAsAgreed();
    void formTextsReadAsAgreed();
    void showsIdentificationAndNumbers();
    void showsTheMeasurement();
    void everyButtonHasANameForReaders();
    void toolTipOfTheFirmware();
    void namesAreEmphasised();
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

void TstModuleDeviceView::formTextsReadAsAgreed()
{
    // What the form says before the constructor fills the labels.
    QCOMPARE(textInForm("label_SnVersion"), QStringLiteral("0000000"));
    for (const char *name : {"label_DeviceName", "ChDeviceLabel_A", "ChDeviceLabel_B"})
        QCOMPARE(textInForm(name), QStringLiteral("Device_Name"));
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

void TstModuleDeviceView::rowFitsTheWindow_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("style");
    for (const char *style : {"Fusion", "Windows"}) {
        for (const char *family : {"Open Sans", "DejaVu Sans"}) {
            for (const HeaderForm form :
                 {HeaderForm::StrainGauge, HeaderForm::Voltage, HeaderForm::Thermo, HeaderForm::Universal})
                QTest::addRow("form %d, %s, %s", static_cast<int>(form), family, style)
                    << form << QString(family) << QString(style);
        }
    }
}

void TstModuleDeviceView::rowFitsTheWindow()
{
    QFETCH(HeaderForm, form);
    QFETCH(QString, family);
    QFETCH(QString, style);
    QVERIFY2(QFontDatabase().hasFamily(family), "The font is not installed.");
    QApplication::setStyle(style);
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
    QVERIFY(row->layout()->totalMinimumSize().height() <= rowcolumns::kRowHeight);
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
