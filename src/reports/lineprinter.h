#pragma once

#include <QString>

class QPrinter;

/// Sets a printer up for a module's text: landscape.
void prepareLinePrinter(QPrinter &printer);

/// Prints the text, one line, at the point (50, 50). Its letters get smaller until the line fits on the
/// paper, down to a size that still can be read.
void printLine(QPrinter &printer, const QString &text);
