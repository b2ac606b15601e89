#include "firmware/versionchecker.h"

#include "base/timesource.h"

VersionChecker::VersionChecker(TimeSource &time, const VersionServer &server, const VersionPeriods &periods,
                               QObject *parent)
    : QObject(parent)
    , m_time(time)
    , m_server(server)
    , m_periods(periods)
{}

VersionChecker::~VersionChecker() = default;

void VersionChecker::fetchVersion() {}
void VersionChecker::vxConfigRequest() {}
void VersionChecker::vxConfigReply(QNetworkReply *) {}
void VersionChecker::fetchFirmware() {}
void VersionChecker::firmwareRequest() {}
void VersionChecker::firmwareReply(QNetworkReply *) {}
