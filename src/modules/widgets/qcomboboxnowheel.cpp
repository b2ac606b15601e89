#include "modules/widgets/qcomboboxnowheel.h"

#include <QAbstractItemView>
#include <QMouseEvent>

namespace {

constexpr int kVisibleItems = 20;

bool isShiftPress(const QEvent &event)
{
    return event.type() == QEvent::MouseButtonPress &&
           static_cast<const QMouseEvent &>(event).modifiers() == Qt::ShiftModifier;
}

} // namespace

QComboBoxNoWheel::QComboBoxNoWheel(QWidget *parent)
    : WheelWithFocus(parent)
{
    setMaxVisibleItems(kVisibleItems);
}

void QComboBoxNoWheel::showPopup()
{
    // The list is made when it is asked for the first time: a window has hundreds of boxes, and most of
    // them are never opened. Of two filters the one that was installed last sees an event first. That must
    // be the list's own window: soon after the opening it takes a release for a pick only if it saw the
    // press.
    QWidget *viewport = view()->viewport();
    viewport->installEventFilter(this);
    viewport->installEventFilter(view()->parentWidget());
    QComboBox::showPopup();
}

bool QComboBoxNoWheel::eventFilter(QObject *watched, QEvent *event)
{
    if (!isShiftPress(*event) || watched != view()->viewport())
        return QComboBox::eventFilter(watched, event);
    // The release picks the current item. Not in every style does the item under the mouse become the
    // current one before a button is pressed, and the list is not to see the press.
    const QModelIndex pressed = view()->indexAt(static_cast<QMouseEvent *>(event)->pos());
    if (pressed.isValid())
        view()->setCurrentIndex(pressed);
    emit Signal_ShiftClick();
    return true;
}
