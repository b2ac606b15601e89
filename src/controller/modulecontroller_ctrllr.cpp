#include "controller/modulecontroller_ctrllr.h"

#include "base/variantcast.h"
#include "controller/modulecontroller_view.h"
#include "modules/common/livevalues.h"
#include "modules/common/versionbox.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"
#include "protocol/records/powerstatus.h"

#include <QDebug>

namespace {

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
                                                 TimeSource &, QObject *parent)
    : QObject(parent)
    , m_rowNumber(rowNumber)
    , m_view(new ModuleController_View(moduleNumber))
{
    showController();
    showPower();
    m_view->setPowerVisible(withPower);
    connect(m_view, &ModuleController_View::Signal_ControllerButton, this,
            &ModuleController_Ctrllr::Slot_ControllerButton);
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
    const FixedModuleModel &controller = m_data.controller;
    showVersionBox(m_view, controller.hardware, controller.firmware1, controller.firmware2);
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

void ModuleController_Ctrllr::Slot_FastModuleStatus(QVariant data)
{
    const auto entries = recordFromVariant<QVector<Fast_Module_Status>>(data);
    showLiveValues(entries.value(kControllerEntry), m_data.controller, *m_view, kControllerSetters);
    showLiveValues(entries.value(kPowerEntry), m_data.power, *m_view, kPowerSetters);
}

void ModuleController_Ctrllr::Slot_StaticModuleStatus(QVariant data)
{
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

void ModuleController_Ctrllr::Slot_StaticPowerStatus(QVariant data)
{
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
    }
    checkLocalFirmware(status.firmware1Version);
}

void ModuleController_Ctrllr::checkLocalFirmware(const QString &firmware)
{
    if (firmware == m_referenceFirmware || !m_firmwareCheckPending)
        return;
    m_firmwareCheckPending = false;
    emit Signal_FirmwareMismatch(QStringLiteral("local"), 0);
}
