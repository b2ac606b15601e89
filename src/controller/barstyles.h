#pragma once

#include <QString>

/// The style sheets of the bar of the input voltage.
namespace barstyles {

QString good();   ///< green: within the limits
QString fault();  ///< red: at a limit or beyond
QString limits(); ///< blue: the module reported its limits; until the next status

} // namespace barstyles
