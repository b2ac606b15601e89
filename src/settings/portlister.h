#pragma once

#include "link/portdirectory.h"
#include "link/settings.h"

#include <QDialog>
#include <memory>

class ComConfigBox;
class PortGrid;
class TimeSource;

namespace Ui {
class PortLister;
}

/// Where the user chooses how the program reaches the system: a COM port or a gateway. It also shows which
/// COM ports the machine has, surveyed every 2500 ms even while the dialog is hidden. It never opens a
/// link. The names of its signals and slots are agreed.
class PortLister : public QDialog
{
    Q_OBJECT

public:
    /// `time` must outlive the dialog; the directory is copied. The first survey is due after 2500 ms.
    PortLister(TimeSource &time, const PortDirectory &ports, QWidget *parent = nullptr);
    ~PortLister() override;

    /// Version of this dialog; displayed nowhere.
    QString version() const;

public slots:
    /// Runs the box of the serial parameters in an event loop of its own and returns when it is closed.
    void portConfig();

    /// The box was confirmed: shows and takes over its parameters.
    void acceptConfig(model_Namespace::Settings &setting);

    /// The box accepted parameters of the settings file: as acceptConfig(), and shows the port's number.
    void acceptDefaults(model_Namespace::Settings &setting);

    /// Enables the controls of the link kind that is checked. The button's id is not used.
    void commntnChanged(int id);
    void Slot_AvailblePorts(); ///< surveys the ports and shows them
    void Slot_ComportFocus();  ///< gives the focus to the number of the COM port

    /// Confirms the choice and hides the dialog. Connected by its name.
    void on_openBtn_clicked();

    /// The settings file gave a link kind: checks its box, unless the kind is unknown, and emits
    /// Signal_ActivateMode() in any case.
    void Slot_ActivateMode(Comm_Type mode);

    /// The settings file gave the main server. The port is stored, but never shown.
    void settingsServer(const QString &address, const QString &port);

signals:
    /// Repeats the port line of the settings file for the box of the serial parameters.
    void updateConfig(const QStringList &config);

    /// The user chose a COM port, or the gateway. Emitted before the dialog hides.
    void setSerialPortConfig(model_Namespace::Settings &setting);
    void setNetworkConfig(model_Namespace::Settings &setting);

    /// The settings file gave a link kind; carries a copy of the record.
    void Signal_ActivateMode(const model_Namespace::Settings &setting);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeConnections();
    void setUpLabels();
    void takeSerialDefaults();
    void takeSerialParameters(const model_Namespace::Settings &setting);
    void confirmComPort();
    void confirmGateway();

    std::unique_ptr<Ui::PortLister> m_ui;
    ComConfigBox *m_comConfigBox; ///< child of this dialog
    PortDirectory m_ports;
    std::unique_ptr<PortGrid> m_grid;
    model_Namespace::Settings m_settings;
};
