#pragma once

#include <QFont>

/// The fonts of the user interface, of the family "Segoe UI" unless told.
namespace fonts {

/// Ordinary text: 12 pixels. `base` gives the properties that the role does not set.
QFont text(const QFont &base = QFont());

/// Emphasised names and headings: 12 pixels, weight 75.
QFont strong();

/// The name of the system above its settings: 15 pixels, weight 75.
QFont title();

/// Text of a placeholder that stands where no device is: 15 pixels, weight 75, italic, with kerning.
QFont placeholder();

/// Crowded controls and explanations: 11 pixels.
QFont small();

/// Text of a dialogue with a device: the family "Lucida Console", 11 pixels; elsewhere a fixed-width family.
QFont console();

/// Text of reports on paper: the family "arial narrow", with letters as wide as they were designed, not
/// fitted to a screen. The size stands in the report.
QFont report();

/// Names the families to use where "Segoe UI" or "arial narrow" is absent. Call once, before the first
/// window.
void installSubstitutions();

} // namespace fonts
