#include "sim/endsignals.h"

#include <QCoreApplication>

#include <csignal>

namespace sim {

void quitOnEndSignals(QCoreApplication &application)
{
    Q_UNUSED(application)
    // This platform calls the handler in a thread of its own, where posting an event is allowed.
    const auto quit = [](int) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), "quit", Qt::QueuedConnection);
    };
    std::signal(SIGINT, quit);
    std::signal(SIGTERM, quit);
}

} // namespace sim
