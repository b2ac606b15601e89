#include "base/gui/fonts.h"
#include "controller/modulecontroller_view.h"
#include "support/childbyname.h"
#include "support/windowacts.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int kRoom = 1120; // what the window leaves to the rows

QString text(const ModuleController_View &row, const char *name)
{
    return childByName<QLabel>(&row, name)->text();
}

/// Number of the spacers that stand in the row beside its two parts.
int spacers(const ModuleController_View &row)
{
    int count = 0;
    for (int i = 0; i < row.layout()->count(); ++i)
        count += row.layout()->itemAt(i)->spacerItem() ? 1 : 0;
    return count;
}

} // namespace

class TstModuleControllerView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void frameAndMargins();
    void captionsReadAsAgreed_data();
    void captionsReadAsAgreed();
    void groupsAreTitled();
    void moduleNumberIsShown();
    void toolTipsOfTheFirmware();
    void powerButtonHasItsPicture();
    void settersShowTheirTexts_data();
    void settersShowTheirTexts();
    void serialNumbersHaveAPrefix();
    void liveValuesBeginEmpty();
    void liveValuesAreFormatted();
    void buttonsArePassedOn();
    void wheelLeavesThePowerSettings_data();
    void wheelLeavesThePowerSettings();
    void powerPartHidesAndShows();
    void controllerPartKeepsItsWidth();
    void spacerStandsInThePlaceOfThePowerPart();
    void rowFitsTheWindow_data();
    void rowFitsTheWindow();
};

void TstModuleControllerView::initTestCase()
{
    fonts::installSubstitutions();
}

void TstModuleControllerView::frameAndMargins()
{
    const ModuleController_View row(1);
    QCOMPARE(row.frameShape(), QFrame::StyledPanel);
    QCOMPARE(row.frameShadow(), QFrame::Sunken);
    QCOMPARE(row.maximumHeight(), 144);
    QCOMPARE(row.layout()->contentsMargins(), QMargins(0, 2, 0, 2));
    QCOMPARE(row.layout()->spacing(), 0);
}

void TstModuleControllerView::captionsReadAsAgreed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("label_TxtModule") << "Module";
    QTest::newRow("label_TxtHw") << "HW:";
    QTest::newRow("label_TxtSw") << "FW1:";
    QTest::newRow("label_TxtSw_2") << "FW2:";
    QTest::newRow("label_TxtVoltage") << "Voltage";
    QTest::newRow("label_TxtTemperature") << "Temp.";
    QTest::newRow("label_TxtSelftest") << "Selftest";
    QTest::newRow("label_TxtModule_Pow") << "Module";
    QTest::newRow("label_TxtHw_Pow") << "HW:";
    QTest::newRow("label_TxtSw_Pow") << "FW:";
    QTest::newRow("label_TxtVoltage_Pow") << "Voltage:";
    QTest::newRow("label_TxtTemperature_Pow") << "Temp.:";
    QTest::newRow("label_TxtSelftest_Pow") << "Selftest:";
}

void TstModuleControllerView::captionsReadAsAgreed()
{
    const ModuleController_View row(1);
    QTEST(text(row, QTest::currentDataTag()), "text");
}

void TstModuleControllerView::groupsAreTitled()
{
    const ModuleController_View row(1);
    QCOMPARE(row.findChildren<QGroupBox *>().size(), 3);
    for (const char *name : {"groupBox_Status", "groupBox_Status_Pow"})
        QCOMPARE(childByName<QGroupBox>(&row, name)->title(), QStringLiteral("Module Status"));
    QCOMPARE(childByName<QGroupBox>(&row, "groupBox_OutputVoltage")->title(),
             QStringLiteral("Output Voltage Settings"));
}

void TstModuleControllerView::moduleNumberIsShown()
{
    const ModuleController_View row(7);
    QCOMPARE(text(row, "label_ModuleNumber"), QStringLiteral("7"));
    QCOMPARE(text(row, "label_ModuleNumber_Pow"), QStringLiteral("7"));
}

void TstModuleControllerView::toolTipsOfTheFirmware()
{
    const ModuleController_View row(1);
    for (const char *name : {"label_TxtSw", "label_SwVersion"})
        QCOMPARE(childByName<QLabel>(&row, name)->toolTip(), QStringLiteral("Firmware1 Version"));
    for (const char *name : {"label_TxtSw_2", "label_FpgaVersn"})
        QCOMPARE(childByName<QLabel>(&row, name)->toolTip(), QStringLiteral("Firmware2 Version"));
}

void TstModuleControllerView::powerButtonHasItsPicture()
{
    const ModuleController_View row(1);
    QVERIFY(childByName<QPushButton>(&row, "pushButton_powModType")
                ->styleSheet()
                .contains(QStringLiteral(":/pictures/PowerM_button.png")));
    QVERIFY(!QPixmap(QStringLiteral(":/pictures/PowerM_button.png")).isNull());
}

using Setter = void (ModuleController_View::*)(const QString &);
Q_DECLARE_METATYPE(Setter)

void TstModuleControllerView::settersShowTheirTexts_data()
{
    QTest::addColumn<Setter>("setter");
    QTest::newRow("label_HwVersion") << &ModuleController_View::setHardware;
    QTest::newRow("label_SwVersion") << &ModuleController_View::setFirmware1;
    QTest::newRow("label_FpgaVersn") << &ModuleController_View::setFirmware2;
    QTest::newRow("label_HwVersion_Pow") << &ModuleController_View::setPowerHardware;
    QTest::newRow("label_SwVersion_Pow") << &ModuleController_View::setPowerFirmware;
}

void TstModuleControllerView::settersShowTheirTexts()
{
    QFETCH(Setter, setter);
    ModuleController_View row(1);
    (row.*setter)(QStringLiteral("12.34"));
    QCOMPARE(text(row, QTest::currentDataTag()), QStringLiteral("12.34"));
    const auto labels = row.findChildren<QLabel *>();
    QCOMPARE(std::count_if(labels.begin(), labels.end(),
                           [](const QLabel *label) { return label->text() == QStringLiteral("12.34"); }),
             1);
}

void TstModuleControllerView::serialNumbersHaveAPrefix()
{
    ModuleController_View row(1);
    row.setSerial(QStringLiteral("4711"));
    row.setPowerSerial(QStringLiteral("4712"));
    row.setName(QStringLiteral("One"));
    row.setPowerName(QStringLiteral("Two"));
    QCOMPARE(text(row, "label_SerialNumber"), QStringLiteral("S/N 4711"));
    QCOMPARE(text(row, "label_SerialNumber_Pow"), QStringLiteral("S/N 4712"));
    QCOMPARE(childByName<QPushButton>(&row, "pushButton_modType")->text(), QStringLiteral("One"));
    QCOMPARE(childByName<QPushButton>(&row, "pushButton_powModType")->text(), QStringLiteral("Two"));
}

void TstModuleControllerView::liveValuesBeginEmpty()
{
    const ModuleController_View row(1);
    for (const char *name : {"label_Voltage", "label_Temperature", "label_SelftestSt", "label_Voltage_Pow",
                             "label_Temperature_Pow", "label_SelftestSt_Pow"})
        QCOMPARE(text(row, name), QString());
}

void TstModuleControllerView::liveValuesAreFormatted()
{
    ModuleController_View row(1);
    row.setVoltage(12);
    row.setTemperature(-55);
    row.setSelftest(10);
    row.setPowerVoltage(9.5F);
    row.setPowerTemperature(25.5F);
    row.setPowerSelftest(0);
    QCOMPARE(text(row, "label_Voltage"), QStringLiteral("12.00 V"));
    QCOMPARE(text(row, "label_Temperature"), QString::fromUtf8("-55.0 °C"));
    QCOMPARE(text(row, "label_SelftestSt"), QStringLiteral("0x0A"));
    QCOMPARE(text(row, "label_Voltage_Pow"), QStringLiteral("9.50 V"));
    QCOMPARE(text(row, "label_Temperature_Pow"), QString::fromUtf8("25.5 °C"));
    QCOMPARE(text(row, "label_SelftestSt_Pow"), QStringLiteral("O.K."));
}

void TstModuleControllerView::buttonsArePassedOn()
{
    const ModuleController_View row(1);
    QSignalSpy controller(&row, &ModuleController_View::Signal_ControllerButton);
    QSignalSpy power(&row, &ModuleController_View::Signal_PowerButton);
    QTest::mouseClick(childByName<QPushButton>(&row, "pushButton_modType"), Qt::LeftButton);
    QCOMPARE(controller.count(), 1);
    QCOMPARE(power.count(), 0);
    QTest::mouseClick(childByName<QPushButton>(&row, "pushButton_powModType"), Qt::LeftButton);
    QCOMPARE(controller.count(), 1);
    QCOMPARE(power.count(), 1);
}

void TstModuleControllerView::wheelLeavesThePowerSettings_data()
{
    QTest::addColumn<bool>("focused");
    QTest::newRow("without the focus") << false;
    QTest::newRow("with the focus") << true;
}

void TstModuleControllerView::wheelLeavesThePowerSettings()
{
    QFETCH(bool, focused);
    ModuleController_View row(1);
    row.setOutputVoltageSetpoint(12.0);
    row.SetOutputVoltageMode(0);
    row.show();
    QVERIFY(QTest::qWaitForWindowActive(&row));
    auto *setpoint = childByName<QDoubleSpinBox>(&row, "doubleSpinBox_OutputVoltage");
    auto *mode = childByName<QComboBox>(&row, "comboBox_OutputVoltageMode");
    QSignalSpy picked(mode, qOverload<int>(&QComboBox::activated));
    for (QWidget *control : {static_cast<QWidget *>(setpoint), static_cast<QWidget *>(mode)}) {
        if (focused)
            control->setFocus();
        QCOMPARE(control->hasFocus(), focused);
        windowacts::turnWheel(*control, true);
        windowacts::turnWheel(*control, false);
        windowacts::turnWheel(*control, false);
    }
    QCOMPARE(setpoint->value(), 12.0);
    QCOMPARE(mode->currentIndex(), 0);
    QCOMPARE(picked.count(), 0);
}

void TstModuleControllerView::powerPartHidesAndShows()
{
    ModuleController_View row(1);
    const auto *power = childByName<QFrame>(&row, "powerFrame");
    QVERIFY(!power->isHidden());
    QCOMPARE(spacers(row), 0);
    for (int twice = 0; twice < 2; ++twice) {
        row.setPowerVisible(false);
        QVERIFY(power->isHidden());
        QCOMPARE(spacers(row), 1);
    }
    for (int twice = 0; twice < 2; ++twice) {
        row.setPowerVisible(true);
        QVERIFY(!power->isHidden());
        QCOMPARE(spacers(row), 0);
    }
}

void TstModuleControllerView::controllerPartKeepsItsWidth()
{
    ModuleController_View row(1);
    row.resize(kRoom, 100);
    row.show();
    row.layout()->activate();
    const QRect before = childByName<QFrame>(&row, "controllerFrame")->geometry();
    row.setPowerVisible(false);
    row.layout()->activate();
    QCOMPARE(childByName<QFrame>(&row, "controllerFrame")->geometry(), before);
}

void TstModuleControllerView::spacerStandsInThePlaceOfThePowerPart()
{
    ModuleController_View row(1);
    row.resize(kRoom, 100);
    row.show();
    row.layout()->activate();
    const QRect power = childByName<QFrame>(&row, "powerFrame")->geometry();
    row.setPowerVisible(false);
    row.layout()->activate();
    const QLayoutItem *spacer = nullptr;
    for (int i = 0; i < row.layout()->count(); ++i) {
        if (row.layout()->itemAt(i)->spacerItem())
            spacer = row.layout()->itemAt(i);
    }
    QVERIFY(spacer);
    QCOMPARE(spacer->geometry().left(), power.left());
    QCOMPARE(spacer->geometry().right(), power.right());
}

void TstModuleControllerView::rowFitsTheWindow_data()
{
    QTest::addColumn<QString>("family");
    QTest::newRow("Open Sans") << "Open Sans";
    QTest::newRow("DejaVu Sans") << "DejaVu Sans";
}

void TstModuleControllerView::rowFitsTheWindow()
{
    QFETCH(QString, family);
    QVERIFY2(QFontDatabase().hasFamily(family), "The font is not installed.");
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), family);
    ModuleController_View row(1);
    row.setSerial(QStringLiteral("1234567"));
    row.setPowerSerial(QStringLiteral("1234567"));
    row.setVoltage(20.47F);
    row.setTemperature(200.5F);
    row.setSelftest(31);
    row.setPowerVoltage(20.47F);
    row.setPowerTemperature(200.5F);
    row.setPowerSelftest(31);
    row.resize(kRoom, 100);
    row.show();
    row.layout()->activate();
    const auto labels = row.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        QVERIFY2(label->fontMetrics().horizontalAdvance(label->text()) <= label->width(),
                 qPrintable(label->objectName()));
    for (const char *group : {"groupBox_Status", "groupBox_Status_Pow"}) {
        const auto *box = childByName<QGroupBox>(&row, group);
        const auto inside = box->findChildren<QLabel *>();
        for (const QLabel *label : inside)
            QVERIFY2(box->rect().contains(label->geometry()), qPrintable(label->objectName()));
    }
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    fonts::installSubstitutions();
}

QTEST_MAIN(TstModuleControllerView)
#include "tst_modulecontroller_view.moc"
