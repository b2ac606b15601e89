#pragma once

#include <QString>

/// What a channel of a universal module measures. A function has the code of the module type that measures
/// the same; not every module type is a function that a channel can have.

/// Code of a function's name, 0 for "Unknown"; -1 for a name that is no function's.
int functionCode(const QString &name);

/// Name that is shown for the function of a channel; "Unknown" for a code that no channel can have.
QString functionName(quint8 code);
