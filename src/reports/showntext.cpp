#include "reports/showntext.h"

#include <QVector>

namespace {

bool isWithin(uint code, uint first, uint last)
{
    return code >= first && code <= last;
}

/// Turns what follows around, and not only the text that it stands in.
bool isDirectionControl(uint code)
{
    return isWithin(code, 0x202A, 0x202E) || isWithin(code, 0x2066, 0x2069);
}

/// Never a character. Text engines use some of them as marks of their own.
bool isNonCharacter(uint code)
{
    return isWithin(code, 0xFDD0, 0xFDEF) || (code & 0xFFFEU) == 0xFFFEU;
}

/// Ends a line, or is no part of one.
bool isControl(uint code)
{
    const QChar::Category category = QChar::category(code);
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

bool canBeShown(uint code)
{
    return code != QChar::ObjectReplacementCharacter && !isControl(code) && !isDirectionControl(code) &&
           !isNonCharacter(code);
}

} // namespace

QString shownText(const QString &text)
{
    QString shown;
    shown.reserve(text.size());
    const QVector<uint> codes = text.toUcs4(); // a surrogate without its other half is U+FFFD from here on
    for (const uint code : codes) {
        if (!canBeShown(code)) {
            shown += QChar(QChar::ReplacementCharacter);
        } else if (QChar::requiresSurrogates(code)) {
            shown += QChar(QChar::highSurrogate(code));
            shown += QChar(QChar::lowSurrogate(code));
        } else {
            shown += QChar(code);
        }
    }
    return shown;
}
