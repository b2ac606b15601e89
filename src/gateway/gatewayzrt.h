#pragma once

#include "link/tcpcomm.h"

#include <QDialog>
#include <memory>
#include <optional>

class ChangeGatewayDialog;
class ExternIpAndPort;
class GatewayDialogue;
class MinMaxDialog;
class QAbstractButton;
class TimeSource;

namespace gateway {
struct Command;
struct Status;
} // namespace gateway

namespace Ui {
class GatewayZRT;
}

/// The panel of the gateway: shows what the gateway reports once a second and sends each change at once.
/// What is shown changes by the reports; nothing is sent for that. Opening the panel connects, Escape
/// disconnects, the title bar's button only hides the panel.
class GatewayZRT : public QDialog
{
    Q_OBJECT

public:
    /// `time` must outlive the object.
    GatewayZRT(TimeSource &time, std::unique_ptr<TcpComm> link, QWidget *parent = nullptr);
    ~GatewayZRT() override;

public slots:
    /// A cell of the table was clicked; to be called through its signal.
    void handleBtnClick();

    // What the link told. Connected, the panel sets the gateway's clock; else it stops asking.
    void Slot_tcpConnected();
    void Slot_tcpDisconnected();

    /// The connect button: connects, or leaves the connection. Nothing happens while a field is empty.
    void handleTcpConnect();

    /// Connects unless the link is up already; for the opening of the panel.
    void connectToTcp();
    void Slot_sendEntr(); ///< wakes the gateway's prompt; no control uses it

    // Each asks the operator first.
    void Slot_Reboot();
    void Slot_Restart();
    void Slot_ChangeGatewayAddr(); ///< then for the new address

    void assignIDs();             ///< gives the table's cells and the radio buttons to their slots
    void Slot_setExtServerAddr(); ///< asks for the external server
    void Slot_OneSecTmrHndlr();   ///< asks the gateway for its status

    /// The value dialog's answer: its label, which tells minimum from maximum, and the value.
    void Slot_DispatchMinMax(QStringList answer);

    /// Shows an address, such as that of the settings file; an empty part leaves what is shown.
    void Slot_loadTcpAddr(QString address, QString port);

    // The operator chose a setting: it goes to the gateway at once. The indices are those of the boxes.
    void BtngrpData(QAbstractButton *btn);
    void BtngrpEndian(QAbstractButton *btn);
    void BtngrpDatPattern(QAbstractButton *btn);
    void modeComboBox(int index);
    void simComboBox(int index);
    void Slot_DataPtclChanged(int index);
    void Slot_PTPControl(int index);
    void Slot_indexActivCom(int index);

    /// Shows the fields that belong to the mode.
    void Slot_ModeIndexChange(int index);
    void parseData(QByteArray &bytes);                    ///< a read of the link
    void changeGatewayAddr(QString address);              ///< the answer to Slot_ChangeGatewayAddr()
    void Slot_ServDetails(QString address, QString port); ///< the answer to Slot_setExtServerAddr()

    /// The other table chose a rate: it goes to the gateway, even if its cell is dead here. The other table
    /// does not hear of it again.
    void Slot_setBitRateSettings(QString bitRate, QString channels);
    void Slot_setExtServerCommand(QString address, QString port); ///< where the data stream goes
    void on_debugBtn_clicked(bool checked);                       ///< connected by its name
    void Slot_EnableAllBtns(); ///< all cells of the table but those that the gateway never runs
    void Slot_disableAllBtns();

signals:
    void disconnctTCP(); ///< leave the connection; name as agreed

    /// Connect to this address; also tells that it is in use.
    void connectToGateway(QString ipAddr, QString port);

    /// The operator chose a rate here: kBit/s and number of channels. Emitted after it went to the gateway.
    void Signal_SetVXsamplingRate(QString bitRate, QString channels);
    void Signal_debugMessage(QString text); ///< never emitted; part of the interface

    /// Opens the value dialog: label, value, title.
    void Signal_displayMinMax(QStringList items);

    /// Opens the dialog of the external server.
    void Signal_sendIpDetails(QString ipAddr, QString port);

protected:
    /// Refuses, and hides the panel; the link stays up. The end of the session hides it before.
    void closeEvent(QCloseEvent *event) override;

    /// Ignores the repeats of a key that is held down.
    void keyPressEvent(QKeyEvent *event) override;

    /// Of the two sample counts: a mouse press, or the keys that press a button, open the value dialog.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class LinkState { Closed, Connecting, Connected };

    void useSmallLabels();
    void connectLink();
    void connectControls();
    void connectDialogs();
    void setLinkState(LinkState state);
    void enableSettings(bool enabled);
    QWidget &harmlessControl() const; ///< no key does anything in it
    void requestConnection();
    void leaveConnection();
    void followAddress(const QString &address);
    void showStatus(const gateway::Status &status);

    /// Marks the rate in the table; one that it does not have, or whose cell is dead, leaves no mark.
    void showRate(const QString &bitRate, const QString &channels);
    void showReportedRate(const gateway::Status &status);
    void limitRates(const std::optional<double> &highestRate);

    /// Sends the command if the operator says so.
    void askBefore(const gateway::Command &command, const QString &name, const QString &title,
                   const QString &question);

    std::unique_ptr<Ui::GatewayZRT> m_ui;
    GatewayDialogue *m_dialogue; // these are children
    MinMaxDialog *m_minMaxDialog;
    ExternIpAndPort *m_externalServerDialog;
    ChangeGatewayDialog *m_addressDialog;
    std::unique_ptr<TcpComm> m_link;
    LinkState m_linkState = LinkState::Closed;
};
