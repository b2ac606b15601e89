#include "modules/widgets/qcomboboxnowheel.h"

#include "modules/common/gestures.h"
#include "modules/common/wholetexttip.h"
#include "modules/widgets/fixedplaces.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QScrollBar>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace {

constexpr int kVisibleItems = 20;
constexpr int kTextMargin = 2; // pixels that styles leave free beside the text

bool isShiftPress(const QEvent &event)
{
    return isMousePress(event) && static_cast<const QMouseEvent &>(event).modifiers() == Qt::ShiftModifier;
}

} // namespace

QComboBoxNoWheel::QComboBoxNoWheel(QWidget *parent)
    : WheelWithFocus(parent)
{
    setMaxVisibleItems(kVisibleItems);
}

QString QComboBoxNoWheel::shownText() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().elidedText(currentText(), Qt::ElideRight, field.width() - 2 * kTextMargin);
}

bool QComboBoxNoWheel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || shownText() == currentText())
        return WheelWithFocus::event(event);
    showWholeTextTip(*static_cast<const QHelpEvent *>(event), currentText(), *this);
    return true;
}

bool QComboBoxNoWheel::hasList() const
{
    return findChild<QAbstractItemView *>() != nullptr;
}

void QComboBoxNoWheel::changeEvent(QEvent *event)
{
    // The box of the toolkit makes its list at each change of the style, which costs more than the box
    // itself; and what style sheets remember of a list that was never shown stays when the box has gone. All
    // else that it does then concerns its size, which a channel strip prescribes.
    const bool isPlaced = parentWidget() && qobject_cast<FixedPlaces *>(parentWidget()->layout());
    if (event->type() == QEvent::StyleChange && isPlaced && !hasList())
        update();
    else
        WheelWithFocus::changeEvent(event);
}

void QComboBoxNoWheel::paintEvent(QPaintEvent *)
{
    // The box of the toolkit cuts a text without a mark, and "1000" would read "100".
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = shownText();
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
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
    view()->setMinimumWidth(view()->sizeHintForColumn(modelColumn()) +
                            view()->verticalScrollBar()->sizeHint().width());
    QComboBox::showPopup();
}

bool QComboBoxNoWheel::eventFilter(QObject *watched, QEvent *event)
{
    if (!isShiftPress(*event) || watched != view()->viewport())
        return QComboBox::eventFilter(watched, event);
    auto *mouse = static_cast<QMouseEvent *>(event);
    if (event->type() == QEvent::MouseButtonDblClick) {
        // It came soon after the click that opened the list. The list's window knows no press of this kind,
        // and would take the release for the end of that click.
        QMouseEvent press(QEvent::MouseButtonPress, mouse->localPos(), mouse->windowPos(), mouse->screenPos(),
                          mouse->button(), mouse->buttons(), mouse->modifiers());
        QCoreApplication::sendEvent(watched, &press);
        return true;
    }
    // The release picks the current item. Not in every style does the item under the mouse become the
    // current one before a button is pressed, and the list is not to see the press.
    const QModelIndex pressed = view()->indexAt(mouse->pos());
    if (pressed.isValid())
        view()->setCurrentIndex(pressed);
    emit Signal_ShiftClick();
    return true;
}
