#pragma once

#include <QString>

/// The text with U+FFFD in place of what cannot be shown: control characters and what no XML may hold.
QString shownText(const QString &text);
