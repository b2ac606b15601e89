// The part of Framework_Ctrllr that makes rows of what the device reports, and takes them away again.

#include "app/dynamicmodulesframe_view.h"
#include "app/framework_ctrllr.h"
#include "app/framework_view.h"
#include "app/initmodulenotfound_view.h"
#include "app/lamps.h"
#include "base/log.h"
#include "base/timesource.h"
#include "base/variantcast.h"
#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"
#include "firmware/versionchecker.h"
#include "modules/analogmodule_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "modules/modulefactory.h"
#include "modules/modulerequests.h"
#include "protocol/communication.h"
#include "protocol/records/devicecodes.h"
#include "protocol/records/moduletypes.h"
#include "protocol/records/systemstatus.h"
#include "system/modulesyssettings_ctrllr.h"

namespace {

constexpr int kStays = -1; // a status line without a time limit
constexpr int kNoControllerKind = 1;
constexpr int kNoModuleKind = 3;
constexpr int kChannelsOfModule = 2;

bool hasPreselectedShunts(quint8 type)
{
    const ModuleFamily family = moduleFamily(type);
    return family == ModuleFamily::Type1 || family == ModuleFamily::Type4;
}

} // namespace

void Framework_Ctrllr::Slot_SystemStatus(QVariant data)
{
    const auto status = recordFromVariant<System_Status>(data);
    debugLine("void Framework_Ctrllr::Slot_SystemStatus(QVariant)") << "retrieved system status";
    emit Signal_EnableSamplingRate();
    m_sysSettings->setModules(status.nModules);
    m_sysSettings->setChannels(status.nModules * kChannelsOfModule);
    showSystemTexts(status);
    qDebug() << "sizeof(systemStatus.sModules): " << status.sModules.size();
    createFixedModules(status);
    createAnalogModules(status);
}

void Framework_Ctrllr::showSystemTexts(const System_Status &status)
{
    m_sysSettings->setBitRate(status.bitRate);
    m_sysSettings->setSamplingRate(status.samplingRate);
    m_sysSettings->setPoweringMode(status.poweringMode);
    m_sysSettings->setDataTransmission(status.dataTransmission);
}

void Framework_Ctrllr::createFixedModules(const System_Status &status)
{
    const bool controller = status.hasFixedModule(wireCode(ModuleType::Controller));
    const bool power = status.hasFixedModule(wireCode(ModuleType::Power));
    if (controller && power) {
        qDebug() << "Controller and Power Module request received -> creating";
        addControllerModule(true);
        m_view->setConnectionLamp(ConnectionState::SystemKnown);
    } else if (controller) {
        addControllerModule(false);
        m_view->setConnectionLamp(ConnectionState::SystemKnown);
        qDebug() << "Warning: Controller Modul request received, but without Power Modul!!!";
    } else if (power) {
        qDebug() << "Warning: Power Module request received, but without Controller Modul!!!";
    } else {
        qDebug() << "Error: Neither Controller nor Power Module request received!!!";
    }
}

void Framework_Ctrllr::createAnalogModules(const System_Status &status)
{
    qDebug() << "Checking analog moduls.";
    emit m_view->Signal_DebugMessage(QStringLiteral("System Status Message:"));
    for (int index = 0; index < status.nModules; ++index) {
        const quint8 type = status.analogModuleType(index);
        emit m_view->Signal_DebugMessage(
            QString::asprintf("Index %d Module Type: %d", index + 1, static_cast<int>(type)));
        qDebug() << "Index " << index << "Module :" << type;
        AddAnalogModule(type);
    }
    emit m_view->Signal_DebugMessage(QStringLiteral("Static Module Status Message:\n"));
}

void Framework_Ctrllr::addControllerModule(bool withPower)
{
    if (m_controllerCount != 0) {
        m_view->showMessage(QStringLiteral("Controller Module exists already"));
        return;
    }
    delete m_noControllerView.data();
    m_controllerModule = new ModuleController_Ctrllr(m_controllerCount + 1, m_controllerRowCount + 1,
                                                     withPower, m_environment.time, this);
    connectControllerModule();
    ++m_controllerCount;
    ++m_controllerRowCount;
    m_view->addController(m_controllerModule->GetView());
}

void Framework_Ctrllr::connectControllerModule()
{
    auto *communication = m_communication.get();
    connect(communication, &Communication::Signal_FastSystemStatus, m_controllerModule,
            &ModuleController_Ctrllr::Slot_FastSystemStatus);
    connect(m_controllerModule, &ModuleController_Ctrllr::Signal_COMMAND_POWER_SET, communication,
            &Communication::Slot_SendPowerModuleSetting);
    connect(communication, &Communication::Signal_FastModuleStatus, m_controllerModule,
            &ModuleController_Ctrllr::Slot_FastModuleStatus);
    connect(communication, &Communication::Signal_StaticModuleStatus, m_controllerModule,
            &ModuleController_Ctrllr::Slot_StaticModuleStatus);
    connect(communication, &Communication::Signal_StaticPowerStatus, m_controllerModule,
            &ModuleController_Ctrllr::Slot_StaticPowerStatus);
    connect(m_controllerModule, &ModuleController_Ctrllr::Signal_FirmwareMismatch, this,
            &Framework_Ctrllr::Slot_FirmwareMismatch);
    connect(m_versionChecker.get(), &VersionChecker::frmwrVersion, m_controllerModule,
            &ModuleController_Ctrllr::Slot_CheckFrmwrVersion);
}

void Framework_Ctrllr::AddAnalogModule(quint8 type)
{
    if (m_controllerCount == 0) {
        m_view->showMessage(QStringLiteral("No Controller Module available"));
        return;
    }
    if (m_analogModuleCount == 0)
        delete m_noModuleView.data();
    if (m_analogModuleCount >= kMaxAnalogModules) {
        m_view->showMessage(QStringLiteral("Maximal Number of connected Devices achieved"));
        return;
    }
    const bool known = moduleFamily(type) != ModuleFamily::Unknown;
    if (!known) {
        // The row is made in spite of these words: it keeps its place, so that later modules keep their
        // addresses, and sends nothing.
        debugLine("void Framework_Ctrllr::AddAnalogModule(quint8)") << "Unknown device type detected!";
        debugLine("void Framework_Ctrllr::AddAnalogModule(quint8)") << "-> ignoring Modul creation!";
    }
    AnalogModule_Ctrllr *module =
        createModule(type, m_nextModuleAddress + 1, m_nextChannelNumber + 1, m_environment.time, this);
    if (known) {
        connectKnownModule(module);
        if (hasPreselectedShunts(type))
            connect(m_sysSettings.get(), &ModuleSysSettings_Ctrllr::Signal_ldPresel, module,
                    &AnalogModule_Ctrllr::Slot_FilterOrRangeHandle);
    } else {
        connectStatus(module);
        module->showAsUnknownModule();
        m_view->showMessage(QStringLiteral("Connection of unknown device type is ignored"));
    }
    ++m_nextModuleAddress;
    m_nextChannelNumber += 2;
    const int row = m_analogModuleCount++;
    m_view->addModule(module->GetView(), row);
    m_analogModules.push_back(module);
}

void Framework_Ctrllr::connectKnownModule(AnalogModule_Ctrllr *module)
{
    auto *communication = m_communication.get();
    ModuleRequests requests;
    requests.context = this;
    requests.channelRequest = [this](const QVariant &request) { Slot_SendChannelCommand(request); };
    requests.channelChange = [communication](uchar channel, uchar function) {
        communication->Slot_SendChannnelChangeReq(channel, function);
    };
    requests.voltageSupply = [communication](uchar channel, uchar onOff, uchar voltage) {
        communication->Slot_SendVoltageSupply(channel, onOff, voltage);
    };
    module->connectRequests(requests);
    connect(module, &AnalogModule_Ctrllr::Signal_HwResponseDelay, this,
            &Framework_Ctrllr::Slot_HwResponseDelay);
    connect(module, &AnalogModule_Ctrllr::Signal_GetChannelData, this,
            &Framework_Ctrllr::Slot_GetChannelData);
    connectStatus(module);
    connect(this, &Framework_Ctrllr::Signal_SendAll, module, &AnalogModule_Ctrllr::Slot_FilterOrRangeHandle);
    connect(module, &AnalogModule_Ctrllr::Signal_ShiftClickCommand, this, &Framework_Ctrllr::Signal_SendAll);
}

void Framework_Ctrllr::connectStatus(AnalogModule_Ctrllr *module)
{
    auto *communication = m_communication.get();
    connect(communication, &Communication::Signal_FastModuleStatus, module,
            &AnalogModule_Ctrllr::Slot_FastModuleStatus);
    connect(communication, &Communication::Signal_StaticModuleStatus, module,
            &AnalogModule_Ctrllr::Slot_StaticModuleStatus);
}

void Framework_Ctrllr::removeModule(std::size_t index)
{
    if (m_analogModuleCount != 0) {
        ModuleDevice_Ctrllr *module = m_analogModules.at(index);
        module->retire();
        m_view->removeModule(module->GetView());
        m_analogModules.erase(m_analogModules.begin() + static_cast<std::ptrdiff_t>(index));
        delete module;
        if (--m_analogModuleCount != 0)
            return;
    }
    if (!m_noModuleView)
        showNoModule();
}

void Framework_Ctrllr::removeAllModules()
{
    // Analog modules cannot exist without a controller.
    if (m_controllerCount == 0)
        return;
    while (m_analogModuleCount != 0)
        removeModule(m_analogModules.size() - 1);
    delete m_controllerModule;
    m_controllerModule = nullptr;
    m_controllerCount = 0;
    m_controllerRowCount = 0;
    m_nextModuleAddress = 0;
    m_nextChannelNumber = 0;
    showNoController();
    qDebug() << "<<Controller Removed>>";
}

void Framework_Ctrllr::showNoController()
{
    m_noControllerView = new InitModuleNotFound_View(kNoControllerKind);
    m_view->addController(m_noControllerView);
}

void Framework_Ctrllr::showNoModule()
{
    m_noModuleView = new InitModuleNotFound_View(kNoModuleKind);
    m_view->addModule(m_noModuleView, 0);
}

void Framework_Ctrllr::Slot_CleanSlateProtocol()
{
    m_view->showMessage(QStringLiteral("Retrying to connect with Torvex"));
    showSystemTexts({}); // the numbers of modules and channels stay
    removeAllModules();
    emit Signal_DisableSamplingRate();
    m_view->setConnectionLamp(ConnectionState::LinkOpen);
}

void Framework_Ctrllr::Slot_UpdateSamplingNBitRate(QVariant data)
{
    const auto status = recordFromVariant<System_Status>(data);
    qDebug() << "***********System status received Bitrate:" << status.bitRate
             << "Sampling Rate:" << status.samplingRate;
    m_sysSettings->setBitRate(status.bitRate);
    m_sysSettings->setSamplingRate(status.samplingRate);
}

void Framework_Ctrllr::Slot_FirmwareMismatch(QString origin, int flag)
{
    if (origin == QLatin1String("local")) {
        m_view->showWarning(
            QStringLiteral("The firmware versions in the individual modules are different. This "
                           "may lead to communication problems. We strongly recommend that you "
                           "perform a firmware update. The latest firmware can be found on the "
                           "qor Torvex Support website.\n\n") +
            m_environment.deployment.downloadPage);
        m_view->showColoured(
            QStringLiteral("Warning: Firmware mismatch between individual modules. We strongly "
                           "recommended to update the firmware."),
            kStays, 1);
    } else if (origin == QLatin1String("remote")) {
        m_view->showColoured(
            QStringLiteral("Warning: Please download the latest vxupdate.exe, current version is outdated"),
            kStays, flag);
    }
}
