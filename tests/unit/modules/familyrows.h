#pragma once

#include "familymodule.h"

struct Family
{
    const char *name;
    int typeCode;
};

inline constexpr Family kFamilies[] = {{"strain gauge", 1}, {"voltage", 2}, {"IEPE", 3},
                                       {"thermo", 4},       {"XVDT", 5},    {"universal", 9}};

inline void addColumns()
{
    QTest::addColumn<int>("typeCode");
    QTest::addColumn<ChannelParameter>("parameter");
    QTest::addColumn<Channel>("channel");
}

/// A row for each parameter of each family on each channel, as far as `takes` says.
template <typename Takes>
inline void addRows(Takes takes)
{
    addColumns();
    for (const Family &family : kFamilies) {
        const FamilyModule module(family.typeCode);
        for (const ChannelParameter parameter : module.parameters()) {
            if (!takes(parameter))
                continue;
            for (const Channel channel : kBothChannels) {
                QTest::addRow("%s, %s of %s", family.name, nameOf(parameter), nameOf(channel))
                    << family.typeCode << parameter << channel;
            }
        }
    }
}

inline bool isAutozero(ChannelParameter parameter)
{
    return parameter == ChannelParameter::Autozero;
}

/// Those whose status shows at the end of the time.
inline void addHeldParameters()
{
    addRows([](ChannelParameter parameter) { return !isAutozero(parameter); });
}

/// Those of them that a status shows: the shunts go by their own time.
inline void addVisibleParameters()
{
    addRows([](ChannelParameter parameter) {
        return !isAutozero(parameter) && parameter != ChannelParameter::Shunt;
    });
}

inline void addAutozero()
{
    addRows(isAutozero);
}

inline Channel otherThan(Channel channel)
{
    return channel == Channel::A ? Channel::B : Channel::A;
}

inline const QStringList kOneFetch{"get 3"};

/// The module of the current row, after its first reports; all values are 0.
#define FETCH_MODULE                                                                                         \
    QFETCH(int, typeCode);                                                                                   \
    QFETCH(ChannelParameter, parameter);                                                                     \
    QFETCH(Channel, channel);                                                                                \
    FamilyModule module(typeCode);                                                                           \
    module.begin()
