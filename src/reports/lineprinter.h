#pragma once

#include <QString>

class QPrinter;

/// Sets a printer up for a module's text: landscape.
void prepareLinePrinter(QPrinter &printer);

/// Prints the text, one line, at the point (50, 50). Its letters get smaller until the line fits on the
/// paper, down to a size that still can be read; what does not fit then goes on below. A line end at the
/// text's end does not count; what else cannot be shown as a part of a line is shown as U+FFFD. A printer
/// that cannot be used is told in the log.
void printLine(QPrinter &printer, const QString &text);
