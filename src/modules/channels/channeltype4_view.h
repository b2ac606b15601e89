#pragma once

#include "modules/channels/bridgechannel_view.h"

/// Strip of one channel of a universal module: what it measures is the channel's function.
class ChannelType4_View : public BridgeChannel_View
{
    Q_OBJECT

public:
    /// `time` must outlive the strip.
    explicit ChannelType4_View(TimeSource &time, QWidget *parent = nullptr);

    /// Module type code of what the channel measures; 0 until the first status.
    quint8 channelFunction() const { return m_channelFunction; }

    /// Takes the function and shows the controls that it needs; all of them for a code that is no function
    /// of a channel, which is logged.
    void setFunction(quint8 code);

public slots:
    void on_checkBox_RevPol_clicked(bool checked);

protected:
    quint8 groupStamp() const override { return m_channelFunction; }
    void noteShuntClick(bool positive) override;

private:
    quint8 m_channelFunction = 0;
};
