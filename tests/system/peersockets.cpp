#include "peersockets.h"

#include "waiting.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <linux/filter.h>
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <vector>

namespace {

struct Sockets
{
    std::vector<int> connected;
    int listening = -1;
};

quint16 localPort(int socket)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size) != 0 ||
        address.sin_family != AF_INET)
        return 0;
    return ntohs(address.sin_port);
}

bool isListening(int socket)
{
    int value = 0;
    socklen_t size = sizeof value;
    return ::getsockopt(socket, SOL_SOCKET, SO_ACCEPTCONN, &value, &size) == 0 && value != 0;
}

Sockets socketsOf(quint16 port)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    Sockets found;
    const int end = static_cast<int>(qMin<rlim_t>(limit.rlim_cur, 4096));
    for (int descriptor = 0; descriptor < end; ++descriptor) {
        if (localPort(descriptor) != port)
            continue;
        if (isListening(descriptor))
            found.listening = descriptor;
        else
            found.connected.push_back(descriptor);
    }
    return found;
}

void setOption(int socket, int option, const void *value, socklen_t size)
{
    if (::setsockopt(socket, SOL_SOCKET, option, value, size) != 0)
        qFatal("The system does not allow the test to play this loss: %s", std::strerror(errno));
}

/// Drops what arrives before the protocol sees it.
void dropAll(int socket)
{
    sock_filter nothingPasses{BPF_RET | BPF_K, 0, 0, 0};
    const sock_fprog program{1, &nothingPasses};
    setOption(socket, SO_ATTACH_FILTER, &program, sizeof program);
}

void dropNothing(int socket)
{
    const int unused = 0;
    setOption(socket, SO_DETACH_FILTER, &unused, sizeof unused);
}

bool isAcknowledged(int socket)
{
    int bytes = 0;
    return ::ioctl(socket, SIOCOUTQ, &bytes) == 0 && bytes == 0;
}

} // namespace

void peersockets::endWithReset(quint16 port)
{
    const linger abruptly{1, 0};
    const Sockets sockets = socketsOf(port);
    if (sockets.connected.empty())
        qFatal("Nobody is connected to the device");
    for (const int socket : sockets.connected)
        setOption(socket, SO_LINGER, &abruptly, sizeof abruptly);
}

void peersockets::vanish(quint16 port)
{
    const Sockets sockets = socketsOf(port);
    if (sockets.listening < 0)
        qFatal("The device does not listen");
    dropAll(sockets.listening);
    for (const int socket : sockets.connected) {
        // The repetition of what was not acknowledged would be a sign of life.
        if (!waitUntil([socket] { return isAcknowledged(socket); }))
            qFatal("The program does not take what the device has sent");
        dropAll(socket);
    }
}

void peersockets::comeBack(quint16 port)
{
    dropNothing(socketsOf(port).listening);
}

void peersockets::resume(quint16 port)
{
    comeBack(port);
    for (const int socket : socketsOf(port).connected)
        dropNothing(socket);
}
