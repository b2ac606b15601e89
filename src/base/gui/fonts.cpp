#include "base/gui/fonts.h"

#include <QStringList>

namespace fonts {

namespace {

constexpr int kSmallPixels = 11;
constexpr int kTextPixels = 12;
constexpr int kLargePixels = 15;

QString family()
{
    return QStringLiteral("Segoe UI");
}

QString reportFamily()
{
    return QStringLiteral("arial narrow");
}

} // namespace

QFont text(const QFont &base)
{
    QFont font(base);
    font.setPixelSize(kTextPixels);
    font.setFamily(family());
    return font;
}

QFont strong()
{
    QFont font = text();
    font.setWeight(QFont::Bold);
    return font;
}

QFont title()
{
    QFont font = strong();
    font.setPixelSize(kLargePixels);
    return font;
}

QFont placeholder()
{
    QFont font = title();
    font.setItalic(true);
    font.setKerning(true);
    return font;
}

QFont small()
{
    QFont font = text();
    font.setPixelSize(kSmallPixels);
    return font;
}

QFont console()
{
    const QString console = QStringLiteral("Lucida Console");
    QFont font(console);
    font.setFamilies(
        {console}); // or a widget's window would add its own family, which comes before a fixed one
    font.setPixelSize(kSmallPixels);
    font.setStyleHint(QFont::TypeWriter);
    return font;
}

QFont report()
{
    QFont font(reportFamily());
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void installSubstitutions()
{
    QFont::insertSubstitutions(
        family(), {QStringLiteral("Open Sans"), QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
    QFont::insertSubstitutions(
        reportFamily(), {QStringLiteral("Liberation Sans Narrow"), QStringLiteral("Nimbus Sans Narrow"),
                         QStringLiteral("Arial"), QStringLiteral("Open Sans"),
                         QStringLiteral("DejaVu Sans Condensed"), QStringLiteral("DejaVu Sans")});
}

} // namespace fonts
