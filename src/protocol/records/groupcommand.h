#pragma once

#include <QDebug>
#include <QMetaType>

/// A gesture that reaches all matching channels of the system.
struct GroupCommand
{
    quint8 moduleType = 0; ///< module type code, or function, that a channel must have to act
    qint32 command = 0;    ///< what to do
    qint32 value = 0;      ///< index, frequency or code, as the command needs it
};

bool operator==(const GroupCommand &a, const GroupCommand &b);
QDebug operator<<(QDebug debug, const GroupCommand &group);

Q_DECLARE_METATYPE(GroupCommand)
