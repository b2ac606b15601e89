#include "link/outputroom.h"

#include <QSerialPort>
#include <poll.h>

bool hasOutputRoom(const QSerialPort &port)
{
    // The loss of the port shows in other bits of the answer, and they count as well.
    pollfd query{port.handle(), POLLOUT, 0};
    return ::poll(&query, 1, 0) != 0;
}
