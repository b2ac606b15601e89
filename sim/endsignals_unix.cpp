#include "sim/endsignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace sim {

void quitOnEndSignals(QCoreApplication &application)
{
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    const int descriptor = ::signalfd(-1, &ends, SFD_CLOEXEC | SFD_NONBLOCK);
    auto *notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, [descriptor, notifier] {
        notifier->setEnabled(false);
        ::close(descriptor);
        QCoreApplication::quit();
    });
}

} // namespace sim
