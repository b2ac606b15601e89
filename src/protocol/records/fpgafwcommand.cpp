#include "protocol/records/fpgafwcommand.h"

#include <tuple>

namespace {

auto fields(const FPGAfwCommand &c)
{
    return std::tie(c.b0, c.b1, c.b2, c.b3, c.w1, c.w2, c.data);
}

} // namespace

bool operator==(const FPGAfwCommand &a, const FPGAfwCommand &b)
{
    return fields(a) == fields(b);
}

QDebug operator<<(QDebug debug, const FPGAfwCommand &command)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "FPGAfwCommand(" << command.b0 << ' ' << command.b1 << ' ' << command.b2 << ' '
                    << command.b3 << ", " << command.w1 << ", " << command.w2 << ", " << command.data.size()
                    << " bytes)";
    return debug;
}
