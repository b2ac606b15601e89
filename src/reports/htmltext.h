#pragma once

#include <QString>

/// A text as HTML that shows exactly this text: special characters are escaped; blanks at its ends, and all
/// but the last of several in a row inside it, become fixed ones, so that none is swallowed. Single blanks
/// inside stay, lines wrap there. Characters that cannot be shown are replaced by U+FFFD.
QString htmlText(const QString &text);
