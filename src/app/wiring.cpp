#include "app/wiring.h"

#include "app/framework_ctrllr.h"
#include "app/framework_view.h"
#include "base/timesource.h"
#include "firmware/firmwareupdate.h"
#include "firmware/versionchecker.h"
#include "protocol/communication.h"
#include "reports/moduleconfigurationmanager.h"
#include "settings/appconfigurationmanager.h"
#include "settings/portlister.h"
#include "system/modulesyssettings_ctrllr.h"

#include <QPointer>

namespace {

void wireSession(const ApplicationParts &p)
{
    QObject::connect(p.view, &Framework_View::Signal_SelectedComPort, p.controller,
                     &Framework_Ctrllr::Slot_ComConfigurationChanged);
    QObject::connect(p.appConfig, &AppConfigurationManager::updateConfig, p.portLister,
                     &PortLister::updateConfig);
    QObject::connect(p.communication, &Communication::Signal_SystemStatus, p.controller,
                     &Framework_Ctrllr::Slot_SystemStatus);
    QObject::connect(p.communication, &Communication::Signal_SystemStatus, p.view,
                     &Framework_View::Slot_SystemStatus);
    QObject::connect(p.communication, &Communication::ModuleRead, p.view, &Framework_View::Slot_ModulesRead);
    QObject::connect(p.communication, &Communication::Signal_CleanSlateProtocol, p.controller,
                     &Framework_Ctrllr::Slot_CleanSlateProtocol);
    QObject::connect(p.communication, &Communication::passRetryPort, p.controller,
                     &Framework_Ctrllr::StartSerialTimer);
    QObject::connect(p.retryTimer, &Timer::timeout, p.controller, &Framework_Ctrllr::retryCommOpen);
}

void wireSettings(const ApplicationParts &p)
{
    QObject::connect(p.moduleConfig, &ModuleConfigurationManager::DefltLctn, p.appConfig,
                     &AppConfigurationManager::HandleDefltPath);
    QObject::connect(p.appConfig, &AppConfigurationManager::updatePath, p.moduleConfig,
                     &ModuleConfigurationManager::setPath);
    QObject::connect(p.appConfig, &AppConfigurationManager::Signal_updateFwFilpth, p.view->firmwareUpdate(),
                     &FirmwareUpdate::Slot_UpdateFirmwrFilePath);
    QObject::connect(p.appConfig, &AppConfigurationManager::debugMessage, p.view,
                     &Framework_View::Signal_DebugMessage);
    QObject::connect(p.moduleConfig, &ModuleConfigurationManager::debugMessage, p.view,
                     &Framework_View::Signal_DebugMessage);
    QObject::connect(p.sysSettings, &ModuleSysSettings_Ctrllr::debugMessage, p.view,
                     &Framework_View::Signal_DebugMessage);
    QObject::connect(p.sysSettings, &ModuleSysSettings_Ctrllr::Signal_HwResponseDelay, p.controller,
                     &Framework_Ctrllr::Slot_HwResponseDelay);
    QObject::connect(p.sysSettings, &ModuleSysSettings_Ctrllr::Signal_SamplingRates, p.communication,
                     &Communication::Slot_SendSamplingRates);
    QObject::connect(p.controller, &Framework_Ctrllr::statusAvailbl, p.view,
                     &Framework_View::SetAvailableStatus);
    QObject::connect(p.controller, &Framework_Ctrllr::statusBusy, p.view, &Framework_View::SetBusyStatus);
    QObject::connect(p.view, &Framework_View::Signal_SystemList, p.moduleConfig,
                     &ModuleConfigurationManager::displaySystemReport);
    QObject::connect(p.sysSettings, &ModuleSysSettings_Ctrllr::Signal_ZRTGateway, p.appConfig,
                     &AppConfigurationManager::Slot_ZrtGateway);
    QObject::connect(p.appConfig, &AppConfigurationManager::serverInfo, p.view,
                     &Framework_View::handleServerSettings);
    QObject::connect(p.appConfig, &AppConfigurationManager::serverInfo, p.portLister,
                     &PortLister::settingsServer);
    QObject::connect(p.appConfig, &AppConfigurationManager::activateMode, p.portLister,
                     &PortLister::Slot_ActivateMode);
    QObject::connect(p.portLister, &PortLister::Signal_ActivateMode, p.appConfig,
                     &AppConfigurationManager::SaveComDetails);
    QObject::connect(p.portLister, &PortLister::Signal_ActivateMode, p.controller,
                     &Framework_Ctrllr::Slot_ActivateMode);
    QObject::connect(p.view, &Framework_View::Signal_ServerGateway, p.controller,
                     &Framework_Ctrllr::Slot_ComConfigurationChanged);
}

void wireCommands(const ApplicationParts &p)
{
    QObject::connect(p.view, &Framework_View::Signal_SystemReset, p.communication,
                     &Communication::Slot_SendSystemReset);
    QObject::connect(p.view, &Framework_View::Signal_FirmwareCommand, p.communication,
                     &Communication::Slot_FirmwareCommands);
    QObject::connect(p.view, &Framework_View::Signal_AbrtFrmw, p.communication,
                     &Communication::Slot_ClearFirmwrCommands);
    QObject::connect(p.view, &Framework_View::Signal_StartFPGAprocess, p.communication,
                     &Communication::Slot_StartFPGAprocess);
    QObject::connect(p.communication, &Communication::firmwareCommandsDropped, p.view->firmwareUpdate(),
                     &FirmwareUpdate::stopCounting);
    p.view->firmwareUpdate()->setCommandsWaiting([session = QPointer<Communication>(p.communication)] {
        return session && session->firmwareCommandsWait();
    });
    QObject::connect(p.view, &Framework_View::Signal_FirmwrFilePath, p.appConfig,
                     &AppConfigurationManager::Slot_SaveFirmWrFilePath);
    QObject::connect(p.appConfig, &AppConfigurationManager::gateWayInfo, p.sysSettings,
                     &ModuleSysSettings_Ctrllr::Signal_LoadGateway);
}

void wireStatus(const ApplicationParts &p)
{
    QObject::connect(p.communication, &Communication::Signal_SystemStatus, p.moduleConfig,
                     &ModuleConfigurationManager::Slot_SaveSystemStatus);
    QObject::connect(p.communication, &Communication::Signal_FastSystemStatus, p.moduleConfig,
                     &ModuleConfigurationManager::Slot_SaveFastSystemStatus);
    QObject::connect(p.communication, &Communication::Signal_FastSystemStatus, p.view,
                     &Framework_View::Signal_FastSystemStatus);
    QObject::connect(p.communication, &Communication::Signal_StaticModuleStatus, p.moduleConfig,
                     &ModuleConfigurationManager::Slot_SaveStaticModuleStatus);
    QObject::connect(p.communication, &Communication::Signal_FastModuleStatus, p.moduleConfig,
                     &ModuleConfigurationManager::Slot_SaveFastModuleStatus);
    QObject::connect(p.communication, &Communication::Signal_ModuleEepromStatus, p.moduleConfig,
                     &ModuleConfigurationManager::Slot_SaveModuleEepromStatus, Qt::DirectConnection);
    QObject::connect(p.communication, &Communication::statusAvailbl, p.controller,
                     &Framework_Ctrllr::statusAvailbl);
    QObject::connect(p.communication, &Communication::statusBusy, p.controller,
                     &Framework_Ctrllr::statusBusy);
    QObject::connect(p.communication, &Communication::Signal_CleanSlateProtocol, p.moduleConfig,
                     &ModuleConfigurationManager::clearList);
    QObject::connect(p.communication, &Communication::packetRecvd, p.view, &Framework_View::setRxLed);
    QObject::connect(p.communication, &Communication::packetSent, p.view, &Framework_View::setTxLed);
    QObject::connect(p.communication, &Communication::Signal_DebugMsg, p.view,
                     &Framework_View::Signal_DebugMessage);
    QObject::connect(p.communication, &Communication::Signal_SamplingNBitRate, p.controller,
                     &Framework_Ctrllr::Slot_UpdateSamplingNBitRate);
}

void wireVersionCheck(const ApplicationParts &p)
{
    QObject::connect(p.communication, &Communication::stateInitialized, p.versionChecker,
                     &VersionChecker::fetchVersion);
    QObject::connect(p.versionChecker, &VersionChecker::versionNo, p.view, &Framework_View::UpdateVersion);
    QObject::connect(p.versionChecker, &VersionChecker::debugMessage, p.view,
                     &Framework_View::Signal_DebugMessage);
}

void wireSystemPanel(const ApplicationParts &p)
{
    QObject::connect(p.controller, &Framework_Ctrllr::Signal_EnableSamplingRate, p.sysSettings,
                     &ModuleSysSettings_Ctrllr::Signal_EnableSamplingRate);
    QObject::connect(p.controller, &Framework_Ctrllr::Signal_DisableSamplingRate, p.sysSettings,
                     &ModuleSysSettings_Ctrllr::Signal_DisableSamplingRate);
    QObject::connect(p.sysSettings, &ModuleSysSettings_Ctrllr::Signal_SendChannelT1Data, p.controller,
                     &Framework_Ctrllr::Slot_SendChannelCommand);
}

} // namespace

void wireApplication(const ApplicationParts &parts)
{
    wireSession(parts);
    wireSettings(parts);
    wireCommands(parts);
    wireStatus(parts);
    wireVersionCheck(parts);
    wireSystemPanel(parts);
}
