// Ends while the look-up of a host name hangs for good.

#include "link/hostlookup.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QSemaphore begun;
    QSemaphore never;
    HostLookup hosts([&begun, &never](const QString &) {
        begun.release();
        never.acquire();
        return QHostInfo();
    });
    hosts.addressesWithin(std::chrono::milliseconds(1), QStringLiteral("gateway"));
    begun.acquire();
    std::fputs("leaving", stdout);
    return 0;
}
