#pragma once

#include <QString>

/// A text as HTML that shows exactly this text: special characters are escaped, and of several blanks in a
/// row all but the last become fixed ones, so that none is swallowed. Single blanks stay, lines wrap there.
/// Characters that cannot be shown are replaced by U+FFFD.
QString htmlText(const QString &text);
