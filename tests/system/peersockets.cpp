#include "peersockets.h"

#include "link/keepalive.h"
#include "waiting.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <linux/filter.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
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

using AddressOf = int (*)(int socket, sockaddr *address, socklen_t *size) noexcept;

/// 0 if the socket has no such address, or is none.
quint16 portOf(AddressOf addressOf, int socket)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (addressOf(socket, reinterpret_cast<sockaddr *>(&address), &size) != 0 ||
        address.sin_family != AF_INET)
        return 0;
    return ntohs(address.sin_port);
}

/// Descriptors of this process are below this one.
int descriptorsEnd()
{
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return static_cast<int>(qMin<rlim_t>(limit.rlim_cur, 4096));
}

bool isListening(int socket)
{
    int value = 0;
    socklen_t size = sizeof value;
    return ::getsockopt(socket, SOL_SOCKET, SO_ACCEPTCONN, &value, &size) == 0 && value != 0;
}

Sockets socketsOf(quint16 port)
{
    Sockets found;
    for (int descriptor = 0; descriptor < descriptorsEnd(); ++descriptor) {
        if (portOf(::getsockname, descriptor) != port)
            continue;
        if (isListening(descriptor))
            found.listening = descriptor;
        else
            found.connected.push_back(descriptor);
    }
    return found;
}

int optionOf(int socket, int level, int option)
{
    int value = -1;
    socklen_t size = sizeof value;
    if (::getsockopt(socket, level, option, &value, &size) != 0)
        qFatal("The system does not tell an option: %s", std::strerror(errno));
    return value;
}

void setOption(int socket, int option, const void *value, socklen_t size, int level = SOL_SOCKET)
{
    if (::setsockopt(socket, level, option, value, size) != 0)
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

bool isRead(int socket)
{
    int bytes = 0;
    return ::ioctl(socket, SIOCINQ, &bytes) == 0 && bytes == 0;
}

} // namespace

void peersockets::endBy(End end, quint16 port)
{
    const linger abruptly{end == End::Reset ? 1 : 0, 0};
    const Sockets sockets = socketsOf(port);
    if (sockets.connected.empty())
        qFatal("Nobody is connected to the device");
    for (const int socket : sockets.connected) {
        // One that is closed with something unread would reset the connection.
        if (!waitUntil([socket] { return isRead(socket); }))
            qFatal("The device does not take what the program has sent");
        setOption(socket, SO_LINGER, &abruptly, sizeof abruptly);
    }
}

int peersockets::client(quint16 port)
{
    for (int descriptor = 0; descriptor < descriptorsEnd(); ++descriptor) {
        if (portOf(::getpeername, descriptor) == port)
            return descriptor;
    }
    qFatal("Nobody is connected to the device");
}

std::optional<peersockets::End> peersockets::endOf(int socket, std::chrono::milliseconds within)
{
    pollfd look{socket, POLLRDHUP, 0};
    if (::poll(&look, 1, static_cast<int>(within.count())) < 0 || (look.revents & POLLNVAL))
        qFatal("The socket cannot be looked at");
    if (look.revents & POLLERR)
        return End::Reset;
    if (look.revents & (POLLRDHUP | POLLHUP))
        return End::Orderly;
    return std::nullopt;
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

peersockets::Patience peersockets::patience(quint16 port)
{
    const int socket = client(port);
    const auto tcpOption = [socket](int option) { return optionOf(socket, IPPROTO_TCP, option); };
    return {optionOf(socket, SOL_SOCKET, SO_KEEPALIVE) != 0, std::chrono::seconds(tcpOption(TCP_KEEPIDLE)),
            std::chrono::seconds(tcpOption(TCP_KEEPINTVL)), tcpOption(TCP_KEEPCNT),
            std::chrono::milliseconds(tcpOption(TCP_USER_TIMEOUT))};
}

void peersockets::setQuestions(quint16 port, int questions)
{
    const int socket = client(port);
    setOption(socket, TCP_KEEPCNT, &questions, sizeof questions, IPPROTO_TCP);
    enableKeepAlive(socket);
}
