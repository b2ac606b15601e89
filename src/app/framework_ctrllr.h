#pragma once

#include "app/appenvironment.h"
#include "link/settings.h"
#include "protocol/records/groupcommand.h"

#include <QObject>
#include <QPointer>
#include <QVariant>
#include <memory>
#include <vector>

class AppConfigurationManager;
class AnalogModule_Ctrllr;
class Communication;
class DynamicModulesFrame_View;
class Framework_View;
class InitModuleNotFound_View;
class ModuleConfigurationManager;
class ModuleController_Ctrllr;
class ModuleDevice_Ctrllr;
class ModuleSysSettings_Ctrllr;
class Timer;
class VersionChecker;
struct System_Status;

/// Builds the whole application, joins its objects and turns what the device reports into rows.
///
/// It is the one object that knows all others. A system status creates the controller row and one row for
/// each analog module; a clean slate removes all of them. What was once created stays until then.
class Framework_Ctrllr : public QObject
{
    Q_OBJECT

public:
    /// Shows the main window, reads the settings file and opens the link that it names.
    explicit Framework_Ctrllr(const AppEnvironment &environment, QObject *parent = nullptr);
    ~Framework_Ctrllr() override;

    Framework_View *mainWindow() const { return m_view.get(); }

    /// The analog modules in order of creation; they belong to this object.
    const std::vector<ModuleDevice_Ctrllr *> &analogModules() const { return m_analogModules; }

    /// The controller module, null if there is none.
    ModuleController_Ctrllr *controllerModule() const { return m_controllerModule; }

    /// The panel of the system settings; it belongs to this object.
    ModuleSysSettings_Ctrllr *sysSettings() const { return m_sysSettings.get(); }

    /// The session with the device; it belongs to this object.
    Communication *communication() const { return m_communication.get(); }

    /// The keeper of the settings file; it belongs to this object.
    AppConfigurationManager *appConfig() const { return m_appConfig.get(); }

    /// The memory behind the reports; it belongs to this object.
    ModuleConfigurationManager *moduleConfig() const { return m_moduleConfig.get(); }

    /// The asker for new versions; it belongs to this object.
    VersionChecker *versionChecker() const { return m_versionChecker.get(); }

    /// Opens the link of the current settings; the only way to a link. Tells the outcome in the status
    /// line and by the connection lamp, and disables the sampling rates until a system status comes.
    bool openLink();

public slots:
    /// A System_Status that starts a walk: shows it and makes the rows.
    void Slot_SystemStatus(QVariant data);

    /// All that is known of the system is void: removes all rows.
    void Slot_CleanSlateProtocol();

    /// Starts to reopen the link each 6 seconds until that works; does nothing if it is at it already.
    void StartSerialTimer();
    void Slot_SendChannelCommand(QVariant request);  ///< queues a DatagramT1, DatagramT2 or DatagramT3
    void retryCommOpen();                            ///< tries once; a success ends the attempts
    void Slot_HwResponseDelay(int ms);               ///< shows it for a short while
    void Slot_UpdateSamplingNBitRate(QVariant data); ///< a System_Status, of which both rates are shown
    void Slot_GetChannelData(uint module);           ///< queues the request for the status of this module

    /// The user chose another connection: removes all rows, saves the choice and opens the link. Returns
    /// whether that worked.
    bool Slot_ComConfigurationChanged(model_Namespace::Settings &settings);

    /// The settings file names a connection: opens it.
    void Slot_ActivateMode(model_Namespace::Settings settings);

    /// `origin` is "local" (the modules differ from each other) or "remote" (a newer version is on the
    /// web server); `flag` non-zero shows the remote warning in red.
    void Slot_FirmwareMismatch(QString origin, int flag);

signals:
    void statusAvailbl(); ///< the device was polled and nothing else waits; name as agreed
    void statusBusy();    ///< work for the device was queued

    /// Sampling rates can be set from now on: a system status came.
    void Signal_EnableSamplingRate();

    /// Sampling rates cannot be set: the link was opened, failed to open, or lost its system.
    void Signal_DisableSamplingRate();

    /// A gesture of one module that reaches the matching channels of all modules, its own included.
    void Signal_SendAll(GroupCommand command);

private:
    void createWindow();
    void createPlaceholders();
    void loadSettings();

    void showSystemTexts(const System_Status &status);
    void addControllerModule(bool withPower);
    void connectControllerModule();
    void AddAnalogModule(quint8 type);
    void connectKnownModule(AnalogModule_Ctrllr *module);
    void connectStatus(AnalogModule_Ctrllr *module);
    void createFixedModules(const System_Status &status);
    void createAnalogModules(const System_Status &status);
    void removeModule(std::size_t index);
    void removeAllModules();
    void showNoController();
    void showNoModule();

    const AppEnvironment m_environment;
    Timer *m_retryTimer; // child of this object
    model_Namespace::Settings m_settings;
    std::unique_ptr<AppConfigurationManager> m_appConfig;
    std::unique_ptr<ModuleConfigurationManager> m_moduleConfig;
    std::unique_ptr<Communication> m_communication;
    std::unique_ptr<Framework_View> m_view;
    std::unique_ptr<VersionChecker> m_versionChecker;
    std::unique_ptr<ModuleSysSettings_Ctrllr> m_sysSettings;
    DynamicModulesFrame_View *m_modulesFrame = nullptr; // owned by the window
    std::vector<ModuleDevice_Ctrllr *> m_analogModules; // children of this object
    ModuleController_Ctrllr *m_controllerModule = nullptr;
    int m_nextModuleAddress = 0; // number of the next module, less one
    int m_nextChannelNumber = 0; // first channel number of the next module, less one
    int m_analogModuleCount = 0;
    int m_controllerCount = 0;
    int m_controllerRowCount = 0;
    bool m_isConstructed = false;
    QPointer<InitModuleNotFound_View> m_noControllerView; // owned by the module frame
    QPointer<InitModuleNotFound_View> m_noModuleView;
};
