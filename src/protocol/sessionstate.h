#pragma once

#include <QtGlobal>

/// State of the session; the values are also the arguments of the requests that begin it.
enum class SessionState : quint8 {
    SystemStatusAwaited = 1,
    ModuleWalk = 2,
    Cyclic = 3,
    ModuleEeprom = 4, ///< never entered by the session itself
};
