#pragma once

#include "link/serialcomm.h"
#include "link/tcpsock.h"

#include <memory>

/// The two transports of a session. Both exist all the time; one of them at most is open.
struct CommLinks
{
    std::unique_ptr<SerialComm> serial;
    std::unique_ptr<TcpSock> tcp;
};
