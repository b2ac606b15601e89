#include "sim/tcpreset.h"

#include <winsock2.h>

namespace sim {

void resetWhenClosed(qintptr socket)
{
    const linger abruptly{1, 0};
    const auto *value = reinterpret_cast<const char *>(&abruptly); // the interface of the system asks for it
    (void)::setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_LINGER, value, sizeof abruptly);
}

} // namespace sim
