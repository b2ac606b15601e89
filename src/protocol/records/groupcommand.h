#pragma once

#include <QDebug>
#include <QMetaType>

/// What a group command does to the channels that it reaches. Commands 0 to 5 send one change request for
/// each channel; those from 6 on change the screen only, because one request reached the device already.
enum class GroupAction : qint32 {
    TypeIndex = 0,  ///< bridge, input or sensor type; value: index
    RangeIndex = 1, ///< gain or range; value: index
    Autozero = 2,
    Filter = 3,          ///< value: filter frequency in Hz, or its power of two of a thermo module
    ChannelFunction = 4, ///< to universal modules; value: function code
    AutoReset = 5,
    PositiveShuntOn = 6,
    PositiveShuntOff = 7,
    NegativeShuntOn = 8,
    NegativeShuntOff = 9,
    ActivatePreselected = 10,
    DeactivateShunts = 11,
};

/// A gesture that reaches all matching channels of the system.
struct GroupCommand
{
    quint8 moduleType = 0; ///< module type code, or function, that a channel must have to act
    qint32 command = 0;    ///< a GroupAction; channels ignore any other
    qint32 value = 0;      ///< index, frequency or code, as the command needs it

    GroupAction action() const { return static_cast<GroupAction>(command); }
};

bool operator==(const GroupCommand &a, const GroupCommand &b);
QDebug operator<<(QDebug debug, const GroupCommand &group);

Q_DECLARE_METATYPE(GroupCommand)
