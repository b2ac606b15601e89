#include "sim/endsignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace sim {

namespace {

bool isIgnored(int signal)
{
    struct sigaction present
    {};
    return ::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

} // namespace

void quitOnEndSignals(QCoreApplication &application)
{
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    if (!isIgnored(SIGHUP)) // as under nohup
        sigaddset(&ends, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    const int descriptor = ::signalfd(-1, &ends, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0) {
        pthread_sigmask(SIG_UNBLOCK, &ends, nullptr);
        return;
    }
    auto *notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, [descriptor, notifier, ends] {
        notifier->setEnabled(false);
        // Taken off the queue; unblocked it would end the process at once, as the next one does.
        signalfd_siginfo taken{};
        const ssize_t size = ::read(descriptor, &taken, sizeof taken);
        Q_UNUSED(size)
        ::close(descriptor);
        pthread_sigmask(SIG_UNBLOCK, &ends, nullptr);
        QCoreApplication::quit();
    });
}

} // namespace sim
