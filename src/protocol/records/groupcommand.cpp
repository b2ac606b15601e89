#include "protocol/records/groupcommand.h"

bool operator==(const GroupCommand &a, const GroupCommand &b)
{
    return a.moduleType == b.moduleType && a.command == b.command && a.value == b.value;
}

QDebug operator<<(QDebug debug, const GroupCommand &group)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "GroupCommand(type " << group.moduleType << ", command " << group.command << ", value "
                    << group.value << ')';
    return debug;
}
