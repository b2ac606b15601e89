#include "modules/widgets/placedbutton.h"

#include <QEvent>

PlacedButton::PlacedButton(QWidget *parent)
    : QPushButton(parent)
{}

bool PlacedButton::event(QEvent *event)
{
    // A push button asks a new style at once for the margins that a layout is to see, for which the style
    // sheet has to be read. Without a layout nobody wants them.
    if (event->type() == QEvent::StyleChange)
        return QAbstractButton::event(event); // NOLINT(bugprone-parent-virtual-call): past QPushButton
    return QPushButton::event(event);
}
