#pragma once

#include "modules/channels/bridgechannel_view.h"

/// Strip of one channel of a strain gauge module.
class ChannelType1_View : public BridgeChannel_View
{
    Q_OBJECT

public:
    /// `time` must outlive the strip.
    explicit ChannelType1_View(TimeSource &time, QWidget *parent = nullptr);

public slots:
    void on_checkBox_RevPol_100_clicked(bool checked);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
