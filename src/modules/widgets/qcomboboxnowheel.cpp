#include "modules/widgets/qcomboboxnowheel.h"

#include <QAbstractItemView>
#include <QMouseEvent>

namespace {

constexpr int kVisibleItems = 20;

bool isShiftPress(const QEvent &event)
{
    const bool isPress =
        event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    return isPress && static_cast<const QMouseEvent &>(event).modifiers() == Qt::ShiftModifier;
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
    // them are never opened. To install a filter again does nothing.
    view()->viewport()->installEventFilter(this);
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
