#include "support/dialoglook.h"

#include "base/gui/fonts.h"

#include <QApplication>
#include <QFontInfo>
#include <QWidget>

namespace dialoglook {

void addFonts()
{
    QTest::addColumn<QString>("family");
    for (const char *family : {"Open Sans", "DejaVu Sans"})
        QTest::newRow(family) << QString::fromLatin1(family);
}

bool useFont(const QString &family)
{
    resetFont();
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), family);
    return QFontInfo(fonts::text()).family() == family;
}

void resetFont()
{
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
}

QStringList clipped(const QWidget &window)
{
    QStringList names;
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible())
            continue;
        // These show what fits of any text; all else is to be seen whole.
        const bool showsWhatFits = widget->inherits("QLineEdit") || widget->inherits("QAbstractScrollArea");
        const QSize needed = showsWhatFits ? widget->minimumSizeHint() : widget->sizeHint();
        const bool fits = widget->width() >= needed.width() && widget->height() >= needed.height();
        if (!fits || !widget->parentWidget()->rect().contains(widget->geometry()))
            names.append(widget->objectName());
    }
    return names;
}

QStringList withoutAccessibleName(const QWidget &window)
{
    QStringList names;
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const bool isControl = widget->inherits("QAbstractButton") || widget->inherits("QLineEdit");
        if (isControl && (widget->accessibleName().isEmpty() || widget->objectName().isEmpty()))
            names.append(widget->objectName());
    }
    return names;
}

QStringList tabOrder(QWidget &window, int most)
{
    QStringList names;
    QWidget *first = window.focusWidget();
    do {
        names.append(window.focusWidget()->objectName());
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    } while (window.focusWidget() != first && names.size() < most);
    return names;
}

} // namespace dialoglook
