#pragma once

#include "modules/channels/channel_view.h"

#include <QPointer>
#include <memory>

namespace Ui {
class ChannelType3_View;
}
class CustomT3SpinBox;
class QMessageBox;

/// Strip of one channel of a thermo module.
class ChannelType3_View : public Channel_View
{
    Q_OBJECT

public:
    explicit ChannelType3_View(QWidget *parent = nullptr);
    ~ChannelType3_View() override;

public slots:
    void on_comboBox_ThermoDeviceType_activated(int index);

    /// Any range but the first is a special one, which the operator must confirm in a box that does not
    /// block. The strip may be deleted while the box is open; nothing is sent then.
    void on_comboBox_TemperatureRange_activated(int index);
    void filterSpinBox_EditingFinished();

    /// Shift on the box of the sensor types, not on the filter; name as agreed.
    void Slot_FilterShiftClick();
    void Slot_RangeShiftClick();

signals:
    // The operator's wishes: places in the lists, a special range once it is confirmed.
    void Signal_SendThermoDeviceTypeIndex(int index);
    void Signal_SendTemperatureRangeIndex(int index);

protected:
    void emitTypeIndex(int index) override;
    void emitRangeIndex(int index) override;

    /// The operator confirmed a special range at the channel where the gesture was made.
    void applyGroupRange(int index) override;

private:
    void askForSpecialRange(int index);
    void takeSpecialRange(int index);
    void leaveSpecialRange();

    std::unique_ptr<Ui::ChannelType3_View> m_ui;
    CustomT3SpinBox *m_filterSpinBox;   // child of this strip
    QPointer<QMessageBox> m_warningBox; ///< child of this strip while it is open
};
