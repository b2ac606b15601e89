#include "app/framework_ctrllr.h"

#include "app/dynamicmodulesframe_view.h"
#include "app/framework_view.h"
#include "app/initmodulenotfound_view.h"
#include "app/lamps.h"
#include "app/productversion.h"
#include "app/wiring.h"
#include "base/log.h"
#include "base/timesource.h"
#include "firmware/versionchecker.h"
#include "protocol/communication.h"
#include "reports/moduleconfigurationmanager.h"
#include "settings/appconfigurationmanager.h"
#include "system/modulesyssettings_ctrllr.h"
#include "system/modulesyssettings_view.h"

#include <QSysInfo>

namespace {

model_Namespace::Settings builtInSettings()
{
    model_Namespace::Settings settings;
    settings.portName = QStringLiteral("COM20");
    model_Namespace::setDefaultSerialParameters(settings);
    settings.commType = Comm_Type::Serial;
    return settings;
}

ReportEnvironment reportEnvironment(const AppEnvironment &environment)
{
    return {environment.time, productVersion(), QSysInfo::prettyProductName(),
            environment.configPaths.desktopFolder};
}

} // namespace

Framework_Ctrllr::Framework_Ctrllr(const AppEnvironment &environment, QObject *parent)
    : QObject(parent)
    , m_environment(environment)
    , m_retryTimer(environment.time.createTimer(this))
    , m_settings(builtInSettings())
    , m_appConfig(std::make_unique<AppConfigurationManager>(environment.configPaths))
    , m_moduleConfig(std::make_unique<ModuleConfigurationManager>(reportEnvironment(environment)))
    , m_communication(std::make_unique<Communication>(environment.time, environment.createLinks(),
                                                      environment.commPeriods))
{
    createWindow();
    wireApplication({this, m_view.get(), m_view->portLister(), m_communication.get(), m_appConfig.get(),
                     m_moduleConfig.get(), m_versionChecker.get(), m_sysSettings.get(), m_retryTimer});
    createPlaceholders();
    loadSettings();
    m_isConstructed = true;
}

Framework_Ctrllr::~Framework_Ctrllr()
{
    // The order is agreed. Rows that are still there go with this object's children, the version check, which
    // drops what it has under way, with its members.
    m_communication.reset();
    m_appConfig.reset();
    m_moduleConfig.reset();
    delete m_modulesFrame;
    m_sysSettings.reset();
    m_view.reset();
}

void Framework_Ctrllr::createWindow()
{
    m_view = std::make_unique<Framework_View>(m_environment.time, m_environment.ports);
    m_view->show();
    m_moduleConfig->setDialogParent(*m_view);
    const Deployment &deployment = m_environment.deployment;
    m_versionChecker = std::make_unique<VersionChecker>(
        m_environment.time, VersionServer{deployment.host, deployment.port}, m_environment.versionPeriods);
    m_sysSettings = std::make_unique<ModuleSysSettings_Ctrllr>(SystemSettings{}, m_environment.time);
    m_modulesFrame = new DynamicModulesFrame_View;
    m_view->addSystemPanel(m_sysSettings->GetView());
    m_view->addModuleFrame(m_modulesFrame);
}

void Framework_Ctrllr::createPlaceholders()
{
    showNoController();
    showNoModule();
}

void Framework_Ctrllr::loadSettings()
{
    // A "Mode" line opens its link in the middle of the load; without a port line the defaults, or what
    // the mode line left in the settings, are opened behind it.
    if (m_appConfig->loadIniFile() == 0) {
        openLink();
        qDebug() << "******CONST() Port Opened******";
    }
}

bool Framework_Ctrllr::openLink()
{
    // Both texts say "COM Port" for every kind of link, on purpose.
    const bool opened = m_communication->OpenCommunicationChannel(m_settings);
    if (opened)
        m_view->showInfo(QStringLiteral("COM Port opened: ") + m_settings.portName);
    else
        m_view->showMessage(QStringLiteral("COM Port unavailable: ") + m_settings.portName);
    emit Signal_DisableSamplingRate();
    m_view->setConnectionLamp(opened ? ConnectionState::LinkOpen : ConnectionState::NoLink);
    return opened;
}

void Framework_Ctrllr::StartSerialTimer()
{
    // A link that fails to open at the very start is not tried again by itself, on purpose.
    if (!m_isConstructed || m_retryTimer->isActive())
        return;
    m_retryTimer->start(m_environment.reconnectPeriod);
    qDebug() << "Timer started";
}

void Framework_Ctrllr::retryCommOpen()
{
    if (openLink()) {
        qDebug() << "Timer Stopped";
        m_retryTimer->stop();
    }
    qDebug() << "Timer function to reconnect";
}

void Framework_Ctrllr::Slot_ActivateMode(model_Namespace::Settings settings)
{
    m_settings = settings;
    openLink();
}

bool Framework_Ctrllr::Slot_ComConfigurationChanged(model_Namespace::Settings &settings)
{
    debugLine("void Framework_Ctrllr::Slot_ComConfigurationChanged(model_Namespace::Settings&)")
        << "Communication settings changed!";
    m_settings = settings;
    Slot_CleanSlateProtocol();
    m_retryTimer->stop();
    if (m_settings.commType == Comm_Type::Serial)
        m_appConfig->saveSerialSettings(m_settings);
    else if (m_settings.commType == Comm_Type::Ethernet)
        m_appConfig->saveServerSettings(m_settings);
    return openLink();
}

void Framework_Ctrllr::Slot_SendChannelCommand(QVariant request)
{
    m_communication->queueChannelRequest(request);
}

void Framework_Ctrllr::Slot_GetChannelData(uint module)
{
    m_communication->queueModuleStatus(static_cast<quint8>(module & 0xFFU));
}

void Framework_Ctrllr::Slot_HwResponseDelay(int ms)
{
    m_view->showHwDelay(ms);
}
