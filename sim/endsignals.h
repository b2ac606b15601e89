#pragma once

class QCoreApplication;

namespace sim {

/// From now on the first request to end (SIGTERM, SIGINT, SIGHUP unless it was ignored; on Windows Ctrl+C)
/// quits the application in order; `application` must live until the end of the process's event loop. A
/// further signal ends the process at once, so that an exit that hangs can be ended too.
void quitOnEndSignals(QCoreApplication &application);

} // namespace sim
