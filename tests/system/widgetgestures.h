#pragma once

#include <QString>
#include <Qt>

class QAbstractButton;
class QAbstractSpinBox;
class QComboBox;

/// What an operator does with mouse and keys on controls that have inner parts. The windows are visible and
/// active.
namespace gestures {

/// Clicks the mark of a radio button; a click beside its text does nothing.
void check(QAbstractButton *radioButton);

/// Opens the list of the box with the mouse.
void openList(QComboBox *box);

/// Opens the list and picks an item with the mouse; `keys` are held for that.
void pick(QComboBox *box, int index, Qt::KeyboardModifiers keys = Qt::NoModifier);

enum class Arrow { Up, Down };
void clickArrow(QAbstractSpinBox *box, Arrow arrow, Qt::KeyboardModifiers keys = Qt::NoModifier);

/// Gives the box the focus and types the text over what it shows.
void type(QAbstractSpinBox *box, const QString &text);

} // namespace gestures
