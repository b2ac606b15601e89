#pragma once

#include <QFont>

/// The fonts of the user interface, all of the family "Segoe UI".
namespace fonts {

/// Ordinary text: 12 pixels. `base` gives the properties that the role does not set.
QFont text(const QFont &base = QFont());

/// Emphasised names and headings: 12 pixels, weight 75.
QFont strong();

/// The name of the system above its settings: 15 pixels, weight 75.
QFont title();

/// Text of a placeholder that stands where no device is: 15 pixels, weight 75, italic, with kerning.
QFont placeholder();

/// Names the families to use where "Segoe UI" is absent. Call once, before the first window.
void installSubstitutions();

} // namespace fonts
