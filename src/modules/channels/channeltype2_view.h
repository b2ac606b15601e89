#pragma once

#include "modules/channels/amplifierchannel_view.h"

#include <memory>

namespace Ui {
class ChannelType2_View;
}

/// Strip of one channel of a voltage-like module.
class ChannelType2_View : public AmplifierChannel_View
{
    Q_OBJECT

public:
    /// `time` must outlive the strip.
    explicit ChannelType2_View(TimeSource &time, QWidget *parent = nullptr);
    ~ChannelType2_View() override;

public slots:
    void on_comboBox_RangeGain_activated(int index);
    void on_checkBox_RevPol_clicked(bool checked);

    /// Shift on the box of the input types, not on the filter; name as agreed.
    void Slot_FilterShiftClick();

signals:
    void Signal_SendRangeGainIndex(int index); ///< the operator's wish; place in the list of ranges

protected:
    void emitRangeIndex(int index) override;

private:
    std::unique_ptr<Ui::ChannelType2_View> m_ui;
};
