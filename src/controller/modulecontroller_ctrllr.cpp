#include "controller/modulecontroller_ctrllr.h"

#include "base/gui/dialogs.h"
#include "base/log.h"
#include "base/variantcast.h"
#include "controller/barstyles.h"
#include "controller/modulecontroller_view.h"
#include "controller/powersetting.h"
#include "controller/powersettingsdialog.h"
#include "modules/common/faketimer.h"
#include "modules/common/livevalues.h"
#include "modules/common/versionbox.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"
#include "protocol/records/powerstatus.h"

#include <QDebug>
#include <limits>

namespace {

constexpr Timer::Period kSetpointPeriod{2000}; // in which a new setpoint replaces the one before
constexpr uchar kPowerSetCommand = 1;
constexpr float kInputRawPerVolt = 100.0F;
constexpr float kOutputRawPerVolt = 1000.0F;
constexpr float kLoadRawPerAmpere = 2000.0F;

QString controllerName()
{
    return QStringLiteral("Controller");
}

QString powerName()
{
    return QStringLiteral("Power");
}

/// Where one half of the row shows its live values.
struct LiveSetters
{
    void (ModuleController_View::*voltage)(float);
    void (ModuleController_View::*temperature)(float);
    void (ModuleController_View::*selftest)(quint8);
};

constexpr LiveSetters kControllerSetters{&ModuleController_View::setVoltage,
                                         &ModuleController_View::setTemperature,
                                         &ModuleController_View::setSelftest};
constexpr LiveSetters kPowerSetters{&ModuleController_View::setPowerVoltage,
                                    &ModuleController_View::setPowerTemperature,
                                    &ModuleController_View::setPowerSelftest};

/// Stores and shows the live values of one module; a value marked invalid leaves what was there.
void showLiveValues(const Fast_Module_Status &status, FixedModuleModel &module, ModuleController_View &view,
                    const LiveSetters &setters)
{
    const LiveValues values = liveValues(status);
    if (values.voltage) {
        module.voltage = *values.voltage;
        (view.*setters.voltage)(module.voltage);
    }
    if (values.temperature) {
        module.temperature = *values.temperature;
        (view.*setters.temperature)(module.temperature);
    }
    module.selftest = values.selftest;
    (view.*setters.selftest)(module.selftest);
}

QStringList versionNumbers(const QString &version)
{
    return version.split(QLatin1Char('.'), Qt::SkipEmptyParts);
}

} // namespace

ModuleController_Ctrllr::ModuleController_Ctrllr(int moduleNumber, int rowNumber, bool withPower,
                                                 TimeSource &time, QObject *parent)
    : QObject(parent)
    , m_rowNumber(rowNumber)
    , m_view(new ModuleController_View(moduleNumber))
    , m_setpointTimer(new FakeTimer(time, this))
{
    showController();
    showPower();
    m_view->setInputVoltageMaximum(m_data.power.limits.inputVoltageMaximum);
    m_view->setPowerVisible(withPower);
    const ModuleController_View *view = m_view;
    connect(view, &ModuleController_View::Signal_ControllerButton, this,
            &ModuleController_Ctrllr::Slot_ControllerButton);
    connect(view, &ModuleController_View::Signal_PowerButton, this,
            &ModuleController_Ctrllr::Slot_PowerButton);
    connect(view, &ModuleController_View::Signal_OutputVoltageSetpointChanged, this,
            &ModuleController_Ctrllr::Slot_OutputVoltageSetpointChanged);
    connect(view, &ModuleController_View::Signal_OutputVoltageModeChanged, this,
            &ModuleController_Ctrllr::Slot_OutputVoltageModeChanged);
    connect(m_setpointTimer, &FakeTimer::Signal_FakeTimeOver, this,
            &ModuleController_Ctrllr::Slot_OutputVoltage_FakeTimeOver);
}

ModuleController_Ctrllr::~ModuleController_Ctrllr()
{
    delete m_view; // unless the window that held the row took it along
}

ModuleController_View *ModuleController_Ctrllr::GetView()
{
    return m_view;
}

void ModuleController_Ctrllr::showController()
{
    const FixedModuleModel &controller = m_data.controller;
    m_view->setName(controllerName());
    m_view->setSerial(controller.serialNumber);
    m_view->setHardware(controller.hardware);
    m_view->setFirmware1(controller.firmware1);
    m_view->setFirmware2(controller.firmware2);
}

void ModuleController_Ctrllr::showPower()
{
    const FixedModuleModel &power = m_data.power;
    m_view->setPowerName(powerName());
    m_view->setPowerSerial(power.serialNumber);
    m_view->setPowerHardware(power.hardware);
    m_view->setPowerFirmware(power.firmware1);
}

void ModuleController_Ctrllr::Slot_ControllerButton()
{
    if (!m_view)
        return;
    const FixedModuleModel &controller = m_data.controller;
    showVersionBox(m_view, controller.hardware, controller.firmware1, controller.firmware2);
}

void ModuleController_Ctrllr::Slot_PowerButton()
{
    if (!m_view)
        return;
    auto *dialog = new PowerSettingsDialog(m_view);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { setProtection(dialog->selectedText()); });
    showModalOnce(*dialog);
}

void ModuleController_Ctrllr::setProtection(const QString &name)
{
    if (name.isEmpty())
        return;
    const int index = protectionNames().indexOf(name);
    debugLine("void ModuleController_Ctrllr::Slot_PowerButton()")
        << "user selected" << name << "list index" << index;
    sendPowerSetting(protectionSetting(index));
}

void ModuleController_Ctrllr::sendPowerSetting(PowerSetting setting, quint16 value)
{
    emit Signal_COMMAND_POWER_SET(kPowerSetCommand, static_cast<uchar>(setting), value);
}

void ModuleController_Ctrllr::Slot_CheckFrmwrVersion(QString remote, int flag)
{
    const QStringList localNumbers = versionNumbers(m_referenceFirmware);
    const QStringList remoteNumbers = versionNumbers(remote);
    // On purpose a greater number at an early position does not end the comparison.
    for (int i = 0; i < localNumbers.size(); ++i) {
        if (localNumbers.at(i).toInt() < remoteNumbers.value(i).toInt()) {
            emit Signal_FirmwareMismatch(QStringLiteral("remote"), flag);
            return;
        }
    }
}

void ModuleController_Ctrllr::Slot_FastSystemStatus(QVariant data)
{
    if (!m_view)
        return;
    const auto status = recordFromVariant<Fast_System_Status>(data);
    const float loadCurrent = status.loadCurrentRaw / kLoadRawPerAmpere;
    const float outputPower = status.outputVoltageRaw / kOutputRawPerVolt * loadCurrent;
    takeInputVoltage(status.voltageRaw / kInputRawPerVolt);
    PowerModuleModel &power = m_data.power;
    power.outputPower = outputPower;
    m_view->setLoadCurrent(loadCurrent);
    power.statusFlag = (status.statusFlags & 1U) != 0;
    m_view->setStatusFlag(power.statusFlag);
}

void ModuleController_Ctrllr::takeInputVoltage(float volts)
{
    PowerModuleModel &power = m_data.power;
    power.inputVoltage = volts;
    m_view->setInputVoltage(volts);
    m_view->setInputVoltageStyle(isInputVoltageGood(volts, power.limits) ? barstyles::good()
                                                                         : barstyles::fault());
}

void ModuleController_Ctrllr::Slot_FastModuleStatus(QVariant data)
{
    if (!m_view)
        return;
    const auto entries = recordFromVariant<QVector<Fast_Module_Status>>(data);
    showLiveValues(entries.value(kControllerEntry), m_data.controller, *m_view, kControllerSetters);
    showLiveValues(entries.value(kPowerEntry), m_data.power, *m_view, kPowerSetters);
}

void ModuleController_Ctrllr::Slot_StaticModuleStatus(QVariant data)
{
    if (!m_view)
        return;
    const auto status = recordFromVariant<Module_Status>(data);
    if (status.serialNumber.isEmpty()) {
        qDebug() << "retrieved StaticModuleStatus with serialNumber empty";
        return;
    }
    if (status.moduleType == wireCode(ModuleType::Controller)) {
        qDebug() << "retrieved StaticModuleStatus with module type = Controller";
        takeController(status);
    } else if (status.moduleType == wireCode(ModuleType::Power)) {
        qDebug() << "retrieved StaticModuleStatuss with module type Power";
        takePower(status.serialNumber, status.hardwareVersion, status.firmware1Version);
        takeLimits(status.rangeList);
    } else {
        checkLocalFirmware(status.firmware1Version);
    }
}

void ModuleController_Ctrllr::takeController(const Module_Status &status)
{
    FixedModuleModel &controller = m_data.controller;
    controller.serialNumber = status.serialNumber;
    controller.hardware = status.hardwareVersion;
    controller.firmware1 = status.firmware1Version;
    controller.firmware2 = status.firmware2Version;
    m_referenceFirmware = status.firmware1Version;
    showController();
}

void ModuleController_Ctrllr::takePower(const QString &serialNumber, const QString &hardware,
                                        const QString &firmware)
{
    FixedModuleModel &power = m_data.power;
    power.serialNumber = serialNumber;
    power.hardware = hardware;
    power.firmware1 = firmware;
    showPower();
}

void ModuleController_Ctrllr::takeLimits(const QString &list)
{
    PowerModuleModel &power = m_data.power;
    power.limits = withReportedLimits(power.limits, list);
    m_view->setInputVoltageMaximum(power.limits.inputVoltageMaximum);
    m_view->setInputVoltageStyle(barstyles::limits());
    power.limitsReceived = true;
}

void ModuleController_Ctrllr::Slot_StaticPowerStatus(QVariant data)
{
    if (!m_view)
        return;
    const auto status = recordFromVariant<Power_Status>(data);
    if (status == Power_Status())
        return; // a foreign variant: no report at all
    if (status.moduleType == wireCode(ModuleType::Controller)) {
        qDebug() << "retrieved StaticPowerStatus with module type = Controller";
        return;
    }
    if (status.moduleType == wireCode(ModuleType::Power)) {
        if (status.serialNumber.isEmpty()) {
            m_view->setPowerVisible(false);
            return;
        }
        qDebug() << "retrieved StaticPowerStatus with module type = Power";
        takePower(status.serialNumber, status.hardwareVersion, status.firmware1Version);
        takePowerSettings(status);
    }
    checkLocalFirmware(status.firmware1Version);
}

void ModuleController_Ctrllr::takePowerSettings(const Power_Status &status)
{
    PowerModuleModel &power = m_data.power;
    m_view->SetOutputVoltageMode(status.powerMode);
    power.voltageMode = status.powerMode;
    const quint16 millivolts = status.powerMode == 0 ? status.fixedVoltage : status.autoVoltage;
    m_view->setOutputVoltageSetpoint(millivolts / kMillivoltsPerVolt);
    m_view->setProtection(status.powerProtection);
    power.protectionMode = status.powerProtection;
    qDebug() << "fixed_voltage =" << status.fixedVoltage << ", auto_voltage =" << status.autoVoltage
             << "Power mode =" << status.powerMode << "Power protection =" << status.powerProtection;
}

void ModuleController_Ctrllr::Slot_OutputVoltageSetpointChanged(double volts)
{
    if (!m_view)
        return;
    qDebug() << "void ModuleController_Ctrllr::Slot_OutputVoltageSetpointChanged(double)"
             << ": got this : " << volts;
    constexpr double kLargest = std::numeric_limits<float>::max();
    m_data.power.outputVoltageSetpoint = static_cast<float>(qBound(-kLargest, volts, kLargest));
    m_setpointTimer->start(kSetpointPeriod);
    m_view->setSetpointColour(QStringLiteral("red"));
}

void ModuleController_Ctrllr::Slot_OutputVoltage_FakeTimeOver()
{
    m_setpointTimer->stop(); // also when the row is gone: it would repeat
    if (!m_view)
        return;
    const PowerModuleModel &power = m_data.power;
    sendPowerSetting(power.voltageMode == 0 ? PowerSetting::FixedVoltage : PowerSetting::AutoVoltage,
                     setpointMillivolts(static_cast<double>(power.outputVoltageSetpoint)));
    m_view->setSetpointColour(QStringLiteral("black"));
}

void ModuleController_Ctrllr::Slot_OutputVoltageModeChanged(int index)
{
    if (!m_view)
        return;
    sendPowerSetting(modeSetting(index));
}

void ModuleController_Ctrllr::checkLocalFirmware(const QString &firmware)
{
    if (firmware == m_referenceFirmware || !m_firmwareCheckPending)
        return;
    m_firmwareCheckPending = false;
    emit Signal_FirmwareMismatch(QStringLiteral("local"), 0);
}
