#include "modules/common/widgetstyle.h"

#include <QFont>
#include <QString>
#include <QWidget>

void setStyleIfChanged(QWidget &widget, const QString &style)
{
    if (widget.styleSheet() != style)
        widget.setStyleSheet(style);
}

void setFontIfChanged(QWidget &widget, const QFont &font)
{
    if (widget.font() != font)
        widget.setFont(font);
}
