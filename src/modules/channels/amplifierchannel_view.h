#pragma once

#include "base/longpress.h"
#include "modules/channels/channel_view.h"

#include <QPointer>

class FilterSpinBox;
class QLineEdit;
class QMessageBox;
class QPushButton;
class TimeSource;
class Timer;

/// Strip of a channel with an amplifier: it can be zeroed and inverted, and its filter is a frequency.
/// Strain gauge, voltage-like and universal modules have such channels.
class AmplifierChannel_View : public Channel_View
{
    Q_OBJECT

public:
    void setAutozero(bool running) override;
    void setPolarity(bool reversed) override;
    void setLevel(double percent) override;
    void applyGroupCommand(const GroupCommand &command) override;

public slots:
    void on_comboBox_BridgeType_activated(int index);
    void on_pushButton_Autozero_pressed();

    /// A click of up to 1.1 s is an Auto Zero; what was held longer than that sends nothing here.
    void on_pushButton_Autozero_released();

    /// Looks each second how long the Auto Zero button is held: from 2 s on, while it is still down, the
    /// Auto Zero is reset. Does not ask whether updates are enabled.
    void tmrSlot();

    /// Return in the filter box: sends without a warning, and does not ask whether updates are enabled.
    void Slot_spinBoxEnterPress();

    /// The arrows of the filter box came to rest.
    void filterSpinBox_EditingFinished();
    void Slot_filterBoxTextAltered(QString text);
    void Slot_RangeShiftClick();
    void Slot_FilterShiftEnter();

signals:
    // The operator's wishes, by a gesture here or by a group command that reaches the channel.
    void Signal_SendBridgeTypeIndex(int index);
    void Signal_SendAutozero(bool state);    ///< always true
    void Signal_SendAutoReset(bool state);   ///< the Auto Zero is to be reset; always true
    void Signal_SendRevPolState(bool state); ///< true: reversed

protected:
    /// `time` must outlive the strip.
    explicit AmplifierChannel_View(TimeSource &time, QWidget *parent = nullptr);

    /// The controls of the family's form.
    struct Controls
    {
        QComboBoxNoWheel &typeBox;
        QComboBoxNoWheel &rangeBox;
        QPushButton &autozeroButton;
        QPushButton &polarityButton;
        QLineEdit &levelEdit;
    };

    /// Sets them up in their columns and makes the filter box; to be called once, when they exist.
    void setAmplifierControls(const Controls &controls, const rowcolumns::Columns &columns);

    void polarityClicked(bool checked);
    bool eventFilter(QObject *watched, QEvent *event) override;
    void emitTypeIndex(int index) override;

    bool isAutozeroButton(const QObject *object) const;

private:
    void setUpFilterBox(const Controls &controls, const rowcolumns::Columns &columns);
    void filterLeft();
    void sendFilterWithWarning();
    void showFilterWarning();
    void requestAutozero();
    void requestAutoReset();

    TimeSource &m_time;
    FilterSpinBox *m_filterSpinBox = nullptr; // child of this strip
    QPushButton *m_autozeroButton = nullptr;
    QPushButton *m_polarityButton = nullptr;
    QLineEdit *m_levelEdit = nullptr;
    QPointer<QMessageBox> m_filterWarning; ///< child of this strip while it is open
    LongPress m_autozeroPress;
    Timer *m_autozeroTimer; // child of this strip
    bool m_autozeroShiftFlag = false;
    bool m_filterTextAltered = false;
};
