#pragma once

#include "app/displayperiods.h"
#include "base/longpress.h"
#include "link/settings.h"

#include <QMainWindow>
#include <QPointer>
#include <QVariant>
#include <array>
#include <memory>

class ConnectionBar;
class DynamicModulesFrame_View;
class FirmwareUpdate;
class HelpEngine;
class HelpWindow;
class PortDirectory;
class PortLister;
class QLineEdit;
class StatusLine;
class TimeSource;
class Timer;
class WarningBox;
enum class ConnectionState : int;

namespace Ui {
class Framework_View;
}

/// The main window: connection bar, system settings panel, module frame and status bar. Owns the dialog of
/// the connection, the firmware update, both helps and the warning box. Its width is fixed, its height is
/// free. F1 opens the manual, Ctrl+U the firmware update.
class Framework_View : public QMainWindow
{
    Q_OBJECT

public:
    /// `time` and `ports` must outlive the window.
    Framework_View(TimeSource &time, const PortDirectory &ports, const DisplayPeriods &periods = {},
                   QWidget *parent = nullptr);
    ~Framework_View() override;

    /// The dialog that chooses the connection; it belongs to this window.
    PortLister *portLister() const { return m_portLister; }

    /// The window of the firmware update; it belongs to this window.
    FirmwareUpdate *firmwareUpdate() const { return m_firmwareUpdate; }

    /// Shows the text in the status line for 7 seconds. The line keeps the colour that it has.
    void showMessage(const QString &text);

    /// Shows the text in black for 10 seconds.
    void showInfo(const QString &text);

    /// Shows the text in black for `ticks` seconds; -1 lets it stay.
    void showTimed(const QString &text, int ticks);

    /// Shows the text for `ticks` seconds, in red if `red` is not 0 and otherwise in black; -1 lets it stay.
    void showColoured(const QString &text, int ticks, int red);

    /// Shows the text in a box of its own without blocking. There is one such box: the next text replaces it.
    void showWarning(const QString &text);

    /// Shows the response delay of the device, in milliseconds, for a short while.
    void showHwDelay(int ms);

    /// A link that is open without a system also makes the status box read "OFFLINE". A state that is none
    /// of the enumeration gives the lamp the colour of the window.
    void setConnectionLamp(ConnectionState state);

    /// Append the panel, then the frame, below the connection bar. The window becomes their Qt parent, but
    /// they may be deleted before it.
    void addSystemPanel(QWidget *panel);
    void addModuleFrame(DynamicModulesFrame_View *frame);

    /// Pass on to the module frame, which must have been added.
    void addController(QWidget *controller);
    void addModule(QWidget *module, int row);
    void removeModule(QWidget *module);

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    void on_actionLoad_Configuration_from_File_triggered();

    // The dialog of the connection has a new choice: shows it and passes it on.
    void handleCommSettings(model_Namespace::Settings &settings);
    void handleNetworkSettings(model_Namespace::Settings &settings);

    // The settings file has a connection: shows it. An empty address, and any port of a server, is not shown.
    void updateComLabel(model_Namespace::Settings settings);
    void handleServerSettings(QString address, QString port);

    /// Shows the firmware update, which looks at its file again.
    void Slot_FirmwareUpdate();
    void displayHelp(); ///< the short one

    /// Adds half a second to the estimate of the work that waits.
    void SetBusyStatus();
    void tmrHndlr(); ///< half a second of it is over
    void SetOfflineStatus();
    void SetAvailableStatus(); ///< no work waits

    /// Shows a notice if `remote`, the version on the web server, counts as newer than this program's.
    void UpdateVersion(QString remote);

    // A frame came in or was sent: the lamp lights for a short while.
    void setRxLed();
    void setTxLed();
    void RxTmrSlot();
    void TxTmrSlot();

    // The help button: a click opens the short help, a long press resets the system.
    void onHelpPressed();
    void onHelpReleased();
    void longPressTmrSlot();
    void mainClockHandlr();                        ///< a second is over
    void Slot_SystemStatus(QVariant systemStatus); ///< a System_Status: so many modules will be read

    /// `count` modules were read so far, the controller included.
    void Slot_ModulesRead(ushort count);

signals:
    /// The user chose a COM port. Emitted before the connection bar shows it.
    void Signal_SelectedComPort(model_Namespace::Settings &settings);
    void Signal_NetworkComm(model_Namespace::Settings &settings); ///< never emitted; part of the interface

    /// The user asks for the system report.
    void Signal_SystemList();
    void Signal_FastSystemStatus(QVariant data); ///< repeats what the device polling reports
    void Signal_LoadCsvFile();                   ///< the action "Load Configuration from File" was triggered
    void Signal_AbrtFrmw();                      ///< the user aborts the firmware update
    void Signal_StartFPGAprocess();              ///< the firmware update begins
    void Signal_FirmwareCommand(QVariant command); ///< an FPGAfwCommand of the firmware update

    /// The funnel for debug texts of all subsystems.
    void Signal_DebugMessage(QString text);
    void Signal_FirmwrFilePath(QString path); ///< the user chose a firmware file

    /// The user chose a gateway. Emitted after the connection bar shows it, also with an empty address.
    void Signal_ServerGateway(model_Namespace::Settings &settings);

    /// The help button was held for two seconds.
    void Signal_SystemReset();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpForm();
    void createConnections();
    void connectFirmwareUpdate();
    void createShortcuts();
    void showManual();
    void restoreWindowState();
    void saveWindowState() const;
    void openPortLister();
    std::array<QWidget *, 3> openers() const;
    void light(QLineEdit *lamp, Timer *timer);
    void darken(QLineEdit *lamp, Timer *timer);
    void showBusySeconds();

    TimeSource &m_time;
    const DisplayPeriods m_periods;
    PortLister *const m_portLister; // child of this window, as are all plain pointers below
    FirmwareUpdate *const m_firmwareUpdate;
    const std::unique_ptr<Ui::Framework_View> m_ui;
    HelpWindow *const m_helpWindow;
    Timer *const m_busyTimer;
    Timer *const m_clockTimer;
    Timer *const m_rxTimer;
    Timer *const m_txTimer;
    HelpEngine *const m_helpEngine;
    WarningBox *const m_warningBox;
    Timer *const m_longPressTimer;
    std::unique_ptr<ConnectionBar> m_bar;
    std::unique_ptr<StatusLine> m_statusLine;
    QPointer<QWidget> m_systemPanel;
    QPointer<DynamicModulesFrame_View> m_modulesFrame;
    LongPress m_helpPress;
    quint16 m_totalModules = 0; // the controller included
    float m_busySeconds = 0;
};
