#include "controller/modulecontroller_view.h"

#include "base/gui/fonts.h"
#include "base/log.h"
#include "controller/barstyles.h"
#include "controller/powersetting.h"
#include "modules/common/displayformat.h"
#include "modules/common/widgetstyle.h"
#include "modules/widgets/ignorewheel.h"
#include "ui_modulecontroller_view.h"

#include <array>
#include <limits>

namespace {

constexpr int kFixedModeEntry = 0;
constexpr int kAutoModeEntry = 1;
constexpr int kMilliamperesPerAmpere = 1000;

QString powerButtonStyle()
{
    return QStringLiteral("background-image: url(:/pictures/PowerM_button.png);");
}

QString serialText(const QString &serialNumber)
{
    return QStringLiteral("S/N ") + serialNumber;
}

QString statusFlagStyle(bool set)
{
    return set ? QStringLiteral("color: #ffdb1c;background-color: red;")
               : QStringLiteral("color: black;background-color: #F0F0F0;");
}

struct ColourStyle
{
    const char *colour;
    const char *style;
};

constexpr std::array<ColourStyle, 2> kSetpointStyles{{
    {"red", "color: red;background-color: white;selection-color: red;"
            "selection-background-color: white;border-width: 2;"},
    {"black", "color: black;background-color: white;selection-color: white;"
              "selection-background-color: #0078d7;border-width: 2;"},
}};

/// Shows as much of a value as the scale of the bar has: whole steps, no fraction. A value that is no
/// number reads as the lower end.
void showInBar(QProgressBar &bar, double value)
{
    // The float nearest to a round value may lie a little below it.
    constexpr double kFloatError = 0.001;
    const double steps = value + kFloatError;
    int shown = bar.minimum();
    if (steps >= bar.maximum())
        shown = bar.maximum();
    else if (steps > bar.minimum())
        shown = static_cast<int>(steps);
    bar.setValue(shown);
}

} // namespace

ModuleController_View::ModuleController_View(int moduleNumber, QWidget *parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::ModuleController_View>())
{
    setFont(fonts::text());
    m_ui->setupUi(this); // also joins the buttons to the slots named after them
    setStyleIfChanged(*m_ui->pushButton_powModType, powerButtonStyle());
    setInputVoltageStyle(barstyles::good());
    m_ui->label_StatusFlag->setFont(fonts::strong());
    setStatusFlag(false);
    for (QLabel *label : {m_ui->label_ModuleNumber, m_ui->label_ModuleNumber_Pow})
        label->setText(QString::number(moduleNumber));
    ignoreWheel(*m_ui->doubleSpinBox_OutputVoltage);
    ignoreWheel(*m_ui->comboBox_OutputVoltageMode);
    connect(m_ui->doubleSpinBox_OutputVoltage, &MyDoubleSpinBox::valueChangedByUser, this,
            &ModuleController_View::Slot_OutputVoltageSetpointChanged);
    connect(m_ui->comboBox_OutputVoltageMode, qOverload<int>(&QComboBox::activated), this,
            &ModuleController_View::Slot_OutputVoltageModeChanged);
}

ModuleController_View::~ModuleController_View() = default;

void ModuleController_View::setName(const QString &name)
{
    m_ui->pushButton_modType->setText(name);
}

void ModuleController_View::setSerial(const QString &serialNumber)
{
    m_ui->label_SerialNumber->setText(serialText(serialNumber));
}

void ModuleController_View::setHardware(const QString &hardware)
{
    m_ui->label_HwVersion->setText(hardware);
}

void ModuleController_View::setFirmware1(const QString &firmware)
{
    m_ui->label_SwVersion->setText(firmware);
}

void ModuleController_View::setFirmware2(const QString &firmware)
{
    m_ui->label_FpgaVersn->setText(firmware);
}

void ModuleController_View::setVoltage(float volts)
{
    m_ui->label_Voltage->setText(displayformat::voltage(volts));
}

void ModuleController_View::setTemperature(float celsius)
{
    m_ui->label_Temperature->setText(displayformat::temperature(celsius));
}

void ModuleController_View::setSelftest(quint8 code)
{
    m_ui->label_SelftestSt->setText(displayformat::selftest(code));
}

void ModuleController_View::setPowerName(const QString &name)
{
    m_ui->pushButton_powModType->setText(name);
}

void ModuleController_View::setPowerSerial(const QString &serialNumber)
{
    m_ui->label_SerialNumber_Pow->setText(serialText(serialNumber));
}

void ModuleController_View::setPowerHardware(const QString &hardware)
{
    m_ui->label_HwVersion_Pow->setText(hardware);
}

void ModuleController_View::setPowerFirmware(const QString &firmware)
{
    m_ui->label_SwVersion_Pow->setText(firmware);
}

void ModuleController_View::setPowerVoltage(float volts)
{
    m_ui->label_Voltage_Pow->setText(displayformat::voltage(volts));
}

void ModuleController_View::setPowerTemperature(float celsius)
{
    m_ui->label_Temperature_Pow->setText(displayformat::temperature(celsius));
}

void ModuleController_View::setPowerSelftest(quint8 code)
{
    m_ui->label_SelftestSt_Pow->setText(displayformat::selftest(code));
}

void ModuleController_View::SetOutputVoltageMode(int mode)
{
    m_ui->comboBox_OutputVoltageMode->setEnabled(true);
    m_ui->comboBox_OutputVoltageMode->setCurrentIndex(mode == 0 ? kFixedModeEntry : kAutoModeEntry);
    debugLine("void ModuleController_View::SetOutputVoltageMode(int)") << mode;
}

void ModuleController_View::setOutputVoltageSetpoint(double volts)
{
    m_ui->doubleSpinBox_OutputVoltage->setEnabled(true);
    m_ui->doubleSpinBox_OutputVoltage->setValueByCode(volts);
}

void ModuleController_View::setSetpointColour(const QString &colour)
{
    for (const ColourStyle &known : kSetpointStyles) {
        if (colour == QLatin1String(known.colour))
            setStyleIfChanged(*m_ui->doubleSpinBox_OutputVoltage, QLatin1String(known.style));
    }
}

void ModuleController_View::setProtection(quint8 code)
{
    m_ui->label_Protection->setText(protectionName(code));
}

void ModuleController_View::setLoadCurrent(float amperes)
{
    const auto value = static_cast<double>(amperes);
    m_ui->label_LoadCurrent->setText(QString::number(value, 'f', 3));
    showInBar(*m_ui->progressBar_LoadCurrent, value * kMilliamperesPerAmpere);
}

void ModuleController_View::setInputVoltage(float volts)
{
    const auto value = static_cast<double>(volts);
    m_ui->label_InputVoltage->setText(QString::number(value, 'f', 1));
    showInBar(*m_ui->progressBar_InputVoltage, value);
}

void ModuleController_View::setInputVoltageMaximum(float volts)
{
    // A bar of the range 0 to 0 would show that the program is busy.
    constexpr double kLowest = 1;
    constexpr double kHighest = std::numeric_limits<int>::max();
    const auto value = static_cast<double>(volts);
    const int maximum =
        value >= kLowest ? static_cast<int>(qMin(value, kHighest)) : static_cast<int>(kLowest);
    QProgressBar &bar = *m_ui->progressBar_InputVoltage;
    const int shown = qMin(bar.value(), maximum); // a bar forgets a value beyond its new range
    bar.setMaximum(maximum);
    bar.setValue(shown);
}

void ModuleController_View::setInputVoltageStyle(const QString &style)
{
    QProgressBar &bar = *m_ui->progressBar_InputVoltage;
    setStyleIfChanged(bar, style);
    bar.setFormat(QString()); // the bar has no text in any style
}

void ModuleController_View::setStatusFlag(bool set)
{
    m_ui->label_StatusFlag->setText(set ? QStringLiteral("!") : QString());
    setStyleIfChanged(*m_ui->label_StatusFlag, statusFlagStyle(set));
    const QFont font = set ? fonts::strong() : fonts::text();
    m_ui->label_TxtTemperature_Pow->setFont(font);
    m_ui->label_Temperature_Pow->setFont(font);
}

void ModuleController_View::setPowerVisible(bool visible)
{
    if (visible && m_powerSpacer) {
        m_ui->rowLayout->removeItem(m_powerSpacer);
        delete m_powerSpacer;
        m_powerSpacer = nullptr;
    } else if (!visible && !m_powerSpacer) {
        m_powerSpacer = new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum);
        m_ui->rowLayout->addItem(m_powerSpacer);
    }
    if (m_ui->powerFrame->isHidden() ==
        visible) // asked to appear, it would have the whole row laid out at once
        m_ui->powerFrame->setVisible(visible);
}

void ModuleController_View::on_pushButton_modType_clicked()
{
    emit Signal_ControllerButton();
}

void ModuleController_View::on_pushButton_powModType_clicked()
{
    emit Signal_PowerButton();
}

void ModuleController_View::Slot_OutputVoltageSetpointChanged(double volts)
{
    emit Signal_OutputVoltageSetpointChanged(volts);
}

void ModuleController_View::Slot_OutputVoltageModeChanged(int index)
{
    emit Signal_OutputVoltageModeChanged(index);
}
