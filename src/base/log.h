#pragma once

#include <QDebug>

/// Begins a line of the log that matters: the function's signature text, ":" and then what the caller
/// streams behind it. The lines go to the category "default".
QDebug debugLine(const char *signature);
QDebug criticalLine(const char *signature);
