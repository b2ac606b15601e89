#pragma once

#include <QtGlobal>

namespace sim {

/// The end of this TCP connection will be a reset: what was not sent yet is dropped.
void resetWhenClosed(qintptr socket);

} // namespace sim
