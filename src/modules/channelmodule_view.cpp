#include "modules/channelmodule_view.h"

#include "modules/channels/channel_view.h"

#include <QPushButton>
#include <QVector>

namespace {

/// The strip's controls in their own tab order.
QVector<QWidget *> tabStops(const QWidget &strip)
{
    QVector<QWidget *> stops;
    for (QWidget *next = strip.nextInFocusChain(); strip.isAncestorOf(next);
         next = next->nextInFocusChain()) {
        const bool isControl = next->parentWidget() == &strip && (next->focusPolicy() & Qt::TabFocus) != 0;
        if (isControl)
            stops.push_back(next);
    }
    return stops;
}

} // namespace

void ChannelModule_View::setChannelViews(Channel_View *a, Channel_View *b)
{
    m_channelViews = {a, b};
    addChannel(kChannelA, a);
    addChannel(kChannelB, b);
    nameControls(Channel::A);
    nameControls(Channel::B);
    orderTabs();
}

void ChannelModule_View::nameControls(Channel channel)
{
    const QString prefix = channelButton(channel)->accessibleName() + QStringLiteral(", ");
    for (QWidget *control : channelView(channel).findChildren<QWidget *>()) {
        if (!control->accessibleName().isEmpty())
            control->setAccessibleName(prefix + control->accessibleName());
    }
}

void ChannelModule_View::orderTabs()
{
    // Each strip comes behind the button of its channel.
    QWidget *last = channelButton(Channel::A);
    for (const Channel channel : {Channel::A, Channel::B}) {
        if (channel == Channel::B) {
            setTabOrder(last, channelButton(channel));
            last = channelButton(channel);
        }
        for (QWidget *control : tabStops(channelView(channel))) {
            setTabOrder(last, control);
            last = control;
        }
    }
}

Channel_View &ChannelModule_View::channelView(Channel channel) const
{
    return *m_channelViews[indexOf(channel)];
}

void ChannelModule_View::enableUpdates()
{
    for (Channel_View *view : m_channelViews)
        view->enableUpdates();
}

void ChannelModule_View::disableUpdates()
{
    for (Channel_View *view : m_channelViews)
        view->disableUpdates();
}

void ChannelModule_View::applyGroupCommand(const GroupCommand &command)
{
    for (Channel_View *view : m_channelViews)
        view->applyGroupCommand(command);
}
