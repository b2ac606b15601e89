#include "reports/htmltext.h"

namespace {

constexpr QChar kBlank = u' ';

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

/// HTML swallows such a blank, or all but one of them.
bool isFixedBlank(const QString &text, int i)
{
    const int last = text.size() - 1;
    return text.at(i) == kBlank && (i == 0 || i == last || text.at(i + 1) == kBlank);
}

} // namespace

QString htmlText(const QString &text)
{
    QString html;
    html.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (isFixedBlank(text, i))
            html += QStringLiteral("&nbsp;");
        else if (canBeShown(text, i))
            html += QString(text.at(i)).toHtmlEscaped();
        else
            html += QChar(QChar::ReplacementCharacter);
    }
    return html;
}
