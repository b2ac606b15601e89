#include "protocol/records/modulelists.h"

namespace {

constexpr QChar kItemEnd = u'$';
constexpr QChar kChannelSeparator = u'#';
constexpr int kChannels = 2;

} // namespace

QStringList moduleListItems(const QString &text)
{
    QStringList items = text.split(kItemEnd);
    items.removeLast();
    return items;
}

ChannelLists channelLists(const QString &text)
{
    const QStringList parts = text.split(kChannelSeparator);
    if (parts.size() == kChannels)
        return {moduleListItems(parts.first()), moduleListItems(parts.last())};
    const QStringList items = moduleListItems(text);
    return {items, items};
}
