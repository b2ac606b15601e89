#include "sim/module.h"

#include "sim/catalogue.h"

namespace sim {

namespace {

/// Only a list with halves has one part for each channel; in any other "#" is a character as all are.
QStringList itemsOf(const QString &list, bool hasHalves, int channelIndex)
{
    const QStringList halves = hasHalves ? list.split(QLatin1Char('#')) : QStringList();
    const QString own = halves.size() == kChannelsPerModule ? halves.at(channelIndex) : list;
    QStringList items = own.split(QLatin1Char('$'));
    items.removeLast(); // what stands behind the last "$"
    return items;
}

} // namespace

Channel Channel::withFunction(quint8 function)
{
    Channel channel;
    channel.function = function;
    channel.filter = QString::fromLatin1(functionEntry(function).filter);
    return channel;
}

Module Module::ofType(quint8 type)
{
    Module module;
    module.type = type;
    const quint8 function = type == kUniversal ? kStrainGauge : type;
    module.channels = {Channel::withFunction(function), Channel::withFunction(function)};
    return module;
}

QString Module::usualList(bool ranges) const
{
    const auto textOf = [ranges](quint8 function) {
        const FunctionEntry &entry = functionEntry(function);
        return QString::fromUtf8(ranges ? entry.ranges : entry.sensors);
    };
    if (type != kUniversal)
        return textOf(type);
    return textOf(channel(0).function) + QLatin1Char('#') + textOf(channel(1).function);
}

QString Module::sensorList() const
{
    return sensorText.isEmpty() ? usualList(false) : sensorText;
}

QString Module::rangeList() const
{
    return rangeText.isEmpty() ? usualList(true) : rangeText;
}

QStringList Module::sensorsOf(int channelIndex) const
{
    return itemsOf(sensorList(), type == kUniversal, channelIndex);
}

QStringList Module::rangesOf(int channelIndex) const
{
    return itemsOf(rangeList(), type == kUniversal, channelIndex);
}

} // namespace sim
