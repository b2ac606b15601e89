#pragma once

#include "protocol/records/devicecodes.h"

/// What the cycle asks for when no other work waits: three fast system status requests, then one fast
/// module status request. The count runs on across new starts of the session.
class PollingPattern
{
public:
    /// Code of the next polling request.
    PayloadCode next();

private:
    quint8 m_cycleCount = 0; ///< 0 to 3
};
