#pragma once

#include <QString>

/// The text with U+FFFD in place of each character that cannot be shown as a part of a line: control
/// characters and line ends, what no XML may hold, and what would disturb the text around it, such as a
/// change of the writing direction.
QString shownText(const QString &text);
