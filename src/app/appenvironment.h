#pragma once

#include "app/deployment.h"
#include "firmware/versionchecker.h"
#include "link/portdirectory.h"
#include "protocol/commlinks.h"
#include "protocol/commperiods.h"
#include "settings/configpaths.h"

#include <chrono>
#include <functional>

class TimeSource;

/// What the application needs of the world around it. main() fills it with the real things, tests with
/// folders, links and a time of their own.
struct AppEnvironment
{
    TimeSource &time; ///< must outlive the application
    PortDirectory ports;
    ConfigPaths configPaths;
    Deployment deployment;
    std::function<CommLinks()> createLinks; ///< called once; makes the two links to the device
    CommPeriods commPeriods;
    std::chrono::milliseconds reconnectPeriod = std::chrono::milliseconds(6000);
    VersionPeriods versionPeriods = {};
};

/// The environment of the installed program. `time` must outlive it.
AppEnvironment productEnvironment(TimeSource &time);
