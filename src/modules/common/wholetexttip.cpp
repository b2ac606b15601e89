#include "modules/common/wholetexttip.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

void showWholeTextTip(const QHelpEvent &event, const QString &text, QWidget &widget)
{
    const QString own = widget.toolTip();
    const QString whole = own.isEmpty() ? text : text + QLatin1Char('\n') + own;
    QToolTip::showText(event.globalPos(), whole.toHtmlEscaped().replace('\n', "<br/>"), &widget);
}
