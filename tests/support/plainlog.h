#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// The lines of a log as one text, without the quotes that the debug stream puts around texts, and with
/// single blanks.
inline QString plainLog(const QStringList &lines)
{
    return lines.join(QLatin1Char('\n'))
        .remove(QLatin1Char('"'))
        .replace(QRegularExpression(QStringLiteral("[ ]+")), QStringLiteral(" "));
}
