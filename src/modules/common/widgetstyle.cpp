#include "modules/common/widgetstyle.h"

#include <QString>
#include <QWidget>

void setStyleIfChanged(QWidget &widget, const QString &style)
{
    if (widget.styleSheet() != style)
        widget.setStyleSheet(style);
}
