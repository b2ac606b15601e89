#pragma once

#include "firmware/versionchecker.h"
#include "support/virtualtime.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHostInfo>
#include <QStringList>
#include <QTimer>
#include <chrono>

inline const QByteArray kConfiguratorPath = "/fileadmin/Public/Products/Telemetry/Tools/vxconfig.txt";
inline const QByteArray kFirmwarePath = "/fileadmin/Public/Products/Telemetry/Tools/vx_update.txt";
inline const QString kLoopback = QStringLiteral("127.0.0.1");

inline const QString kRequesting = QStringLiteral("debugMessage Requesting VXConfig Version");
inline const QString kContact = QStringLiteral("debugMessage Contact Established with server");
inline const QString kFailed = QStringLiteral("debugMessage Error Cannot contact server");
inline const QString kFirmwareRequest = QStringLiteral("debugMessage Request for Firmware Version");
inline const QString kFirmwareFetched = QStringLiteral("debugMessage Firmware Version Fetched");

inline QHostInfo infoOf(const QStringList &addresses)
{
    QList<QHostAddress> list;
    for (const QString &address : addresses)
        list.append(QHostAddress(address));
    QHostInfo info;
    info.setAddresses(list);
    return info;
}

/// Lets events come until the condition holds; false if it does not in time. It looks after each event, where
/// QTRY_VERIFY would look from time to time: a server in the same thread needs many of them.
template <typename Condition>
bool happens(Condition condition)
{
    const QDeadlineTimer limit(std::chrono::seconds(10));
    QTimer look; // other threads bring no event
    look.start(std::chrono::milliseconds(5));
    while (!condition()) {
        if (limit.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

/// A version check in time that the test advances, and a record of what it emits.
class RecordedCheck
{
public:
    explicit RecordedCheck(const VersionServer &server, HostLookup::Function lookUp = &QHostInfo::fromName)
        : checker(time, server, {}, nullptr, std::move(lookUp))
    {
        QObject::connect(&checker, &VersionChecker::debugMessage, &checker,
                         [this](const QString &text) { events += QStringLiteral("debugMessage ") + text; });
        QObject::connect(&checker, &VersionChecker::versionNo, &checker,
                         [this](const QString &text) { events += QStringLiteral("versionNo ") + text; });
        QObject::connect(&checker, &VersionChecker::firmwareFetch, &checker,
                         [this] { events += QStringLiteral("firmwareFetch"); });
        QObject::connect(&checker, &VersionChecker::frmwrVersion, &checker,
                         [this](const QString &version, int flag) {
                             events += QStringLiteral("frmwrVersion %1 %2").arg(version).arg(flag);
                         });
    }

    /// The events once they are the expected ones, or those that there are if they do not become so in time.
    QStringList eventsLike(const QStringList &expected) const
    {
        happens([this, &expected] { return events == expected; });
        return events;
    }

    VirtualTime time;
    VersionChecker checker;
    QStringList events; ///< name of the signal and its arguments
};
