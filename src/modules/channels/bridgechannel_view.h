#pragma once

#include "modules/channels/amplifierchannel_view.h"
#include "protocol/records/devicecodes.h"

#include <QPointer>
#include <memory>
#include <string>

namespace Ui {
class BridgeChannel_View;
}
class Dialog_ManualOffset;
class QLabel;

/// Strip of a channel that feeds a bridge: besides the amplifier's controls it has shunts and an offset.
/// Strain gauge and universal modules have such channels.
class BridgeChannel_View : public AmplifierChannel_View
{
    Q_OBJECT

public:
    ~BridgeChannel_View() override;

    void setOffset(const QString &text) override;
    void setOffsetRange(double minimum, double maximum, double step) override;
    void setPreselection(bool positive, bool negative) override;
    void applyGroupCommand(const GroupCommand &command) override;

public slots:
    void on_comboBox_Gain_activated(int index);

    /// Asks for the offset in a dialog that does not block.
    void on_pushButton_ManualOffset_clicked();

    // A shunt goes off by itself after 20 s, in the module and on the screen. With Shift the click goes to
    // all matching channels, with Alt it does nothing.
    void on_checkBox_Shunt_Pos_clicked(bool checked);
    void on_checkBox_Shunt_Neg_clicked(bool checked);
    void on_checkBox_Shunt_Pos_Presel_clicked(bool checked);
    void on_checkBox_Shunt_Neg_Presel_clicked(bool checked);
    void Slot_ShuntPostivTmr();
    void Slot_ShuntNegativTmr();
    void Slot_BridgeShiftClick();

    /// Emits the group command that activates the preselected shunts. Nothing in the program calls it.
    void Slot_LoadPresel();

signals:
    void Signal_SendGainIndex(int index);             ///< the operator's wish; place in the list of ranges
    void Signal_SendManualOffset(std::string &value); ///< UTF-8; valid during the emission
    void Signal_SendShuntState(uchar code);           ///< action byte of the device
    void Signal_ShiftClickShunt(bool state);          ///< agreed, connected, never emitted

protected:
    /// `time` must outlive the strip.
    explicit BridgeChannel_View(TimeSource &time, QWidget *parent = nullptr);

    /// Shows or hides what only a bridge needs: shunts, preselection and offset.
    void setBridgeControlsVisible(bool visible);

    QPushButton &polarityButton();
    bool eventFilter(QObject *watched, QEvent *event) override;
    void emitRangeIndex(int index) override;

    /// A click on a shunt button, before anything is asked or done.
    virtual void noteShuntClick(bool positive);

private:
    /// Actions of the device and group commands of one shunt.
    struct ShuntCodes
    {
        ChannelAction on;
        ChannelAction off;
        ChannelAction groupOn; ///< the shunts of all matching channels
        ChannelAction groupOff;
        ChannelAction preselect;
        ChannelAction deselect;
        GroupAction groupOnAction;
        GroupAction groupOffAction;
    };

    struct Shunt
    {
        ShuntCodes codes;
        QLabel *sign;
        QPushButton *button;
        QPushButton *preselect;
        Timer *timer;           ///< until the module switches the shunt off; child of this strip
        bool shiftFlag = false; ///< the next click goes to all matching channels
        bool altFlag = false;   ///< the next click does nothing
    };

    static const ShuntCodes kPositiveCodes;
    static const ShuntCodes kNegativeCodes;

    void connectControls();
    void setUpShunt(Shunt &shunt, int line);
    void shuntClicked(Shunt &shunt, bool checked);
    void preselectClicked(Shunt &shunt, bool checked);
    void shuntTimeOver(Shunt &shunt);
    void sendAction(ChannelAction action);
    static void showActive(Shunt &shunt);
    static void showInactive(Shunt &shunt);
    void takeOffset();

    std::unique_ptr<Ui::BridgeChannel_View> m_ui;
    Shunt m_positive{};
    Shunt m_negative{};
    std::string m_manualOffset; ///< UTF-8
    double m_offsetMin = 0;
    double m_offsetMax = 0;
    double m_offsetStep = 0;
    QPointer<Dialog_ManualOffset> m_offsetDialog; ///< child of this strip while it is open
};
