#pragma once

#include <QString>
#include <QStringList>

/// Items of a list text of a module, each of which is closed by "$". What follows the last "$" is dropped:
/// a text without one has no items.
QStringList moduleListItems(const QString &text);

/// What the two channels of a module offer.
struct ChannelLists
{
    QStringList a;
    QStringList b;
};

/// The lists of a universal module: two of them joined by one "#", that of channel A first; any other text
/// is one list for both channels.
ChannelLists channelLists(const QString &text);
