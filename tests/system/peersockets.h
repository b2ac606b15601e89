#pragma once

#include <QtGlobal>

/// What happens to the sockets of a simulated device in this process, which listens on `port`, without its
/// doing: on the way, or in its machine. A call that the system does not allow ends the test program with the
/// reason.
namespace peersockets {

/// From now on the end of a connection that is there is no orderly one: the other side gets a reset.
void endWithReset(quint16 port);

/// The device is gone without a word: nothing that is sent to it arrives, so nothing comes back either, no
/// acknowledgement, no answer to a probe or to an attempt to connect. All that the device has sent before has
/// arrived.
void vanish(quint16 port);

/// It can be reached again by new connections; those of before stay dead.
void comeBack(quint16 port);

/// The way to it is there again, and no connection has noticed.
void resume(quint16 port);

} // namespace peersockets
