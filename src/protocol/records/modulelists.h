#pragma once

#include <QString>
#include <QStringList>

/// Items of a list text of a module, each of which is closed by "$". What follows the last "$" is dropped:
/// a text without one has no items.
QStringList moduleListItems(const QString &text);

/// The list text of each channel of a module.
struct ChannelTexts
{
    QString a;
    QString b;
};

/// The list texts of a universal module: two of them joined by one "#", that of channel A first; any other
/// text is the list text of both channels.
ChannelTexts channelListTexts(const QString &text);

/// What the two channels of a module offer.
struct ChannelLists
{
    QStringList a;
    QStringList b;
};

/// The items of a universal module's list texts.
ChannelLists channelLists(const QString &text);
