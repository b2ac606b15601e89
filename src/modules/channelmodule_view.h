#pragma once

#include "modules/moduledevice_view.h"

class Channel_View;
struct GroupCommand;

/// The row of a module with the strips of its two channels: what the rows of all families share. A row adds
/// the channel's number, 1 for A and 2 for B, to what the strips report.
class ChannelModule_View : public ModuleDevice_View
{
    Q_OBJECT

public:
    /// The strip of a channel; the row owns it.
    Channel_View &channelView(Channel channel) const;

    /// While updates are disabled no gesture on the row sends anything; see Channel_View.
    void enableUpdates();
    void disableUpdates();

    /// Applies a group command to both channels; a universal module picks those that it is for.
    virtual void applyGroupCommand(const GroupCommand &command);

protected:
    using ModuleDevice_View::ModuleDevice_View;

    /// Puts the strips into the row, which owns them from then on. To be called once, by the constructor.
    void setChannelViews(Channel_View *a, Channel_View *b);

private:
    void nameControls(Channel channel);
    void orderTabs();

    std::array<Channel_View *, 2> m_channelViews{}; // children of this row
};
