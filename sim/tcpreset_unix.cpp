#include "sim/tcpreset.h"

#include <sys/socket.h>

namespace sim {

void resetWhenClosed(qintptr socket)
{
    const linger abruptly{1, 0};
    (void)::setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_LINGER, &abruptly, sizeof abruptly);
}

} // namespace sim
