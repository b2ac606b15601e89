#pragma once

class QCoreApplication;

namespace sim {

/// From now on the first request to end (SIGTERM, SIGINT; on Windows Ctrl+C) quits the application in order;
/// `application` must live until the end of the process's event loop.
void quitOnEndSignals(QCoreApplication &application);

} // namespace sim
