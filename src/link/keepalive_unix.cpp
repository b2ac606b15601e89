#include "link/keepalive.h"

#include <QDebug>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {

// The platform counts in whole seconds, so the interval of 600 ms is rounded up.
constexpr int kIdleSeconds = 1;
constexpr int kIntervalSeconds = 1;
constexpr int kMsPerSecond = 1000;

bool setOption(int socket, int level, int option, int value)
{
    return ::setsockopt(socket, level, option, &value, sizeof value) == 0;
}

/// The system sends no probes while sent bytes are unacknowledged; it repeats these for about a quarter of an
/// hour instead. Bytes go out each second, so a peer that died would hardly ever be found by the probes.
void limitUnacknowledged(int socket)
{
    int probes = 0; // before the system gives up; its own setting
    socklen_t size = sizeof probes;
    const bool isKnown = ::getsockopt(socket, IPPROTO_TCP, TCP_KEEPCNT, &probes, &size) == 0;
    const int milliseconds = (kIdleSeconds + probes * kIntervalSeconds) * kMsPerSecond;
    if (!isKnown || !setOption(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, milliseconds))
        qWarning("The wait for unacknowledged bytes could not be set: %s", std::strerror(errno));
}

} // namespace

void enableKeepAlive(qintptr socketDescriptor)
{
    const int socket = static_cast<int>(socketDescriptor);
    if (setOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1) &&
        setOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, kIdleSeconds) &&
        setOption(socket, IPPROTO_TCP, TCP_KEEPINTVL, kIntervalSeconds))
        limitUnacknowledged(socket);
    else
        qWarning("TCP keep-alive could not be set: %s", std::strerror(errno));
}
