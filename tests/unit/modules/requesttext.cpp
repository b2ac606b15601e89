#include "requesttext.h"

#include "protocol/records/datagrams.h"
#include "protocol/records/groupcommand.h"

namespace {

QString listSizes(const QStringList &first, const QStringList &second)
{
    return QStringLiteral("%1+%2").arg(first.size()).arg(second.size());
}

template <typename Datagram>
QString head(const char *kind, const Datagram &request)
{
    return QStringLiteral("%1 m%2 c%3: ").arg(QLatin1String(kind)).arg(request.module).arg(request.channel);
}

QString field(const char *name, const QString &value)
{
    return QLatin1String(name) + QLatin1Char(' ') + value;
}

QString field(const char *name, double value)
{
    return field(name, QString::number(value));
}

QString textOf(const DatagramT1 &request)
{
    const DataModuleDeviceT1 &data = request.data;
    return head("T1", request) + QStringList{field("type", data.bridgeTypeIndex),
                                             field("range", data.gainIndex),
                                             field("zero", data.autozero),
                                             field("offset", QString::fromStdString(data.manualOffset)),
                                             field("filter", data.filterValue),
                                             field("inverted", data.reversePolarity ? 1 : 0),
                                             field("shunt", data.shuntState),
                                             field("level", data.level),
                                             field("lists", listSizes(data.bridgeTypeList, data.gainList)),
                                             field("selector", data.selector)}
                                     .join(QStringLiteral(", "));
}

QString textOf(const DatagramT2 &request)
{
    const DataModuleDeviceT2 &data = request.data;
    return head("T2", request) + QStringList{field("type", data.bridgeTypeIndex),
                                             field("range", data.gainIndex),
                                             field("zero", data.autozero),
                                             field("filter", data.filterValue),
                                             field("inverted", data.reversePolarity ? 1 : 0),
                                             field("level", data.level),
                                             field("lists", listSizes(data.bridgeTypeList, data.gainList)),
                                             field("selector", data.selector)}
                                     .join(QStringLiteral(", "));
}

QString textOf(const DatagramT3 &request)
{
    const DataModuleDeviceT3 &data = request.data;
    return head("T3", request) +
           QStringList{field("type", data.thermoDeviceTypeIndex),
                       field("range", data.temperatureRangeIndex),
                       field("zero", data.autozero),
                       field("filter", data.filterValue),
                       field("lists", listSizes(data.thermoDeviceTypeList, data.temperatureRangeList)),
                       field("selector", data.selector)}
               .join(QStringLiteral(", "));
}

} // namespace

QString requestText(const QVariant &request)
{
    if (request.userType() == qMetaTypeId<DatagramT1>())
        return textOf(request.value<DatagramT1>());
    if (request.userType() == qMetaTypeId<DatagramT2>())
        return textOf(request.value<DatagramT2>());
    if (request.userType() == qMetaTypeId<DatagramT3>())
        return textOf(request.value<DatagramT3>());
    return QStringLiteral("no request");
}

QString groupText(const GroupCommand &command)
{
    return QStringLiteral("group type %1 command %2 value %3")
        .arg(command.moduleType)
        .arg(command.command)
        .arg(command.value);
}
