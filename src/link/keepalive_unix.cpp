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

bool setOption(int socket, int level, int option, int value)
{
    return ::setsockopt(socket, level, option, &value, sizeof value) == 0;
}

} // namespace

void enableKeepAlive(qintptr socketDescriptor)
{
    const int socket = static_cast<int>(socketDescriptor);
    if (setOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1) &&
        setOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, kIdleSeconds) &&
        setOption(socket, IPPROTO_TCP, TCP_KEEPINTVL, kIntervalSeconds))
        return;
    qWarning("TCP keep-alive could not be set: %s", std::strerror(errno));
}
