#include "link/keepalive.h"

#include <QDebug>
#include <winsock2.h>

#include <mstcpip.h> // needs the types of winsock2.h

namespace {

constexpr ULONG kOn = 1;
constexpr ULONG kTimeMs = 1000;
constexpr ULONG kIntervalMs = 600;

} // namespace

void enableKeepAlive(qintptr socketDescriptor)
{
    WSADATA data;
    const int failure = ::WSAStartup(MAKEWORD(2, 0), &data);
    if (failure != 0) {
        qDebug("WSAStartup failed: %d\n", failure);
        return;
    }
    tcp_keepalive settings{kOn, kTimeMs, kIntervalMs};
    DWORD written = 0;
    const int result = ::WSAIoctl(static_cast<SOCKET>(socketDescriptor), SIO_KEEPALIVE_VALS, &settings,
                                  sizeof settings, nullptr, 0, &written, nullptr, nullptr);
    if (result == SOCKET_ERROR)
        qWarning() << "WSAIotcl(SIO_KEEPALIVE_VALS) write failed with err#" << ::WSAGetLastError();
    ::WSACleanup();
}
