#pragma once

#include <QString>

struct StatusStore;

/// All that is known of one module in one line, for the clipboard, the text file and the printer: fields
/// with two blanks in front of each, ".\n" at the end. `address` 0 is the controller, 129 the power module;
/// a module of which nothing is known, or beyond the table, shows zeros and empty texts.
QString moduleLine(const StatusStore &store, int address);
