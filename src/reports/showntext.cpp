#include "reports/showntext.h"

namespace {

/// A surrogate without its other half.
bool isLoneSurrogate(const QString &text, int i)
{
    if (text.at(i).isHighSurrogate())
        return i + 1 >= text.size() || !text.at(i + 1).isLowSurrogate();
    return text.at(i).isLowSurrogate() && (i == 0 || !text.at(i - 1).isHighSurrogate());
}

bool canBeShown(const QString &text, int i)
{
    const QChar c = text.at(i);
    const bool isForbiddenInXml = c == QChar(0xFFFE) || c == QChar(0xFFFF) || isLoneSurrogate(text, i);
    return c.category() != QChar::Other_Control && !isForbiddenInXml;
}

} // namespace

QString shownText(const QString &text)
{
    QString shown = text;
    for (int i = 0; i < text.size(); ++i) {
        if (!canBeShown(text, i))
            shown[i] = QChar(QChar::ReplacementCharacter);
    }
    return shown;
}
