#include "reports/htmltext.h"

#include "reports/showntext.h"

#include <algorithm>

namespace {

constexpr QChar kBlank = u' ';

int leadingBlanks(const QString &text)
{
    const auto isOther = [](QChar c) { return c != kBlank; };
    return static_cast<int>(std::find_if(text.begin(), text.end(), isOther) - text.begin());
}

/// HTML swallows blanks at both ends of a text, and of several blanks in a row all but one.
bool isFixedBlank(const QString &text, int i, int leading)
{
    const int last = text.size() - 1;
    return text.at(i) == kBlank && (i < leading || i == last || text.at(i + 1) == kBlank);
}

} // namespace

QString htmlText(const QString &text)
{
    const QString shown = shownText(text);
    QString html;
    html.reserve(shown.size());
    const int leading = leadingBlanks(shown);
    for (int i = 0; i < shown.size(); ++i) {
        if (isFixedBlank(shown, i, leading))
            html += QStringLiteral("&nbsp;");
        else
            html += QString(shown.at(i)).toHtmlEscaped();
    }
    return html;
}
