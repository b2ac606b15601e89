#pragma once

class AppConfigurationManager;
class Communication;
class Framework_Ctrllr;
class Framework_View;
class ModuleConfigurationManager;
class ModuleSysSettings_Ctrllr;
class PortLister;
class Timer;
class VersionChecker;

/// The long-lived objects of the application that talk to each other. They all outlive the connections.
struct ApplicationParts
{
    Framework_Ctrllr *controller;
    Framework_View *view;
    PortLister *portLister;
    Communication *communication;
    AppConfigurationManager *appConfig;
    ModuleConfigurationManager *moduleConfig;
    VersionChecker *versionChecker;
    ModuleSysSettings_Ctrllr *sysSettings;
    Timer *retryTimer;
};

/// Joins the long-lived objects. Where several objects take one signal, the order of the connections is
/// the order in which they hear of it, and it matters: rows are built before the counter is shown,
/// and both come before the store of the reports.
void wireApplication(const ApplicationParts &parts);
