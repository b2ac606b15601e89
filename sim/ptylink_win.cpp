#include "sim/ptylink.h"

namespace sim {

PtyLink::PtyLink(TimeSource &time, QObject *parent)
    : Link(parent)
    , m_time(time)
{}

PtyLink::~PtyLink() = default;

bool PtyLink::open(const QString &name, QString *error)
{
    *error = QStringLiteral("%1: there are no pseudo terminals on this platform").arg(name);
    return false;
}

} // namespace sim
