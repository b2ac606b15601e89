#include "link/outputroom.h"

#include <QSerialPort>

bool hasOutputRoom(const QSerialPort &port)
{
    // Writing is left to the system here, which keeps the bytes until there is room: it refuses none.
    Q_UNUSED(port)
    return true;
}
