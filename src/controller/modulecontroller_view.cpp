#include "controller/modulecontroller_view.h"

#include "base/gui/fonts.h"
#include "modules/common/displayformat.h"
#include "ui_modulecontroller_view.h"

namespace {

QString powerButtonStyle()
{
    return QStringLiteral("background-image: url(:/pictures/PowerM_button.png);");
}

QString serialText(const QString &serialNumber)
{
    return QStringLiteral("S/N ") + serialNumber;
}

} // namespace

ModuleController_View::ModuleController_View(int moduleNumber, QWidget *parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::ModuleController_View>())
{
    setFont(fonts::text());
    m_ui->setupUi(this); // also joins the buttons to the slots named after them
    m_ui->pushButton_powModType->setStyleSheet(powerButtonStyle());
    for (QLabel *label : {m_ui->label_ModuleNumber, m_ui->label_ModuleNumber_Pow})
        label->setText(QString::number(moduleNumber));
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
