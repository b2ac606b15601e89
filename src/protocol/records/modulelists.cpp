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

ChannelTexts channelListTexts(const QString &text)
{
    const QStringList parts = text.split(kChannelSeparator);
    if (parts.size() == kChannels)
        return {parts.first(), parts.last()};
    return {text, text};
}

ChannelLists channelLists(const QString &text)
{
    const ChannelTexts texts = channelListTexts(text);
    return {moduleListItems(texts.a), moduleListItems(texts.b)};
}
