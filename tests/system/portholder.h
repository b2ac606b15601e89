#pragma once

#include <QString>
#include <sys/types.h>

/// Another program that has the port for itself until it ends: a process of its own, of the user that the
/// test is when it starts.
class PortHolder
{
public:
    enum class Manner {
        Exclusive, ///< enforced by the system, against all but the superuser
        LockFile,  ///< told by a lock file, and by that alone
    };

    /// Returns when it has the port; ends the test program if it does not get it.
    PortHolder(const QString &device, Manner manner);
    ~PortHolder() { end(); }

    PortHolder(const PortHolder &) = delete;
    PortHolder &operator=(const PortHolder &) = delete;

    /// Returns when the process is gone.
    void end();

private:
    pid_t m_process = -1;
    int m_leash = -1; ///< it ends when this is closed
};
