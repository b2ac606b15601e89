#include "reports/channelsettings.h"

#include "protocol/records/modulelists.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"

namespace {

ChannelLists listsOf(const QString &text, quint8 moduleType)
{
    if (moduleType == wireCode(ModuleType::Universal))
        return channelLists(text);
    const QStringList items = moduleListItems(text);
    return {items, items};
}

std::optional<QString> itemAt(const QStringList &items, int index)
{
    if (index >= items.size())
        return std::nullopt;
    return items.at(index);
}

} // namespace

ModuleSettings moduleSettings(const Module_Status &module)
{
    const ChannelLists sensors = listsOf(module.sensorList, module.moduleType);
    const ChannelLists ranges = listsOf(module.rangeList, module.moduleType);
    return {{sensors.a, ranges.a, itemAt(sensors.a, module.bridgeIndexA),
             itemAt(ranges.a, module.rangeIndexA), module.functionCodeA},
            {sensors.b, ranges.b, itemAt(sensors.b, module.bridgeIndexB),
             itemAt(ranges.b, module.rangeIndexB), module.functionCodeB}};
}

QString joinedItems(const QString &listText)
{
    QStringList items = listText.split(u'$');
    if (items.last().isEmpty())
        items.removeLast();
    return items.join(QStringLiteral(" / "));
}
