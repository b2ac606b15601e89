#pragma once

#include <QString>

/// The offset of a channel when the module finds it by itself; any other offset is a number as text.
inline QString automaticOffset()
{
    return QStringLiteral("Auto");
}
