#pragma once

#include <QAbstractButton>
#include <optional>

class QComboBox;
class QLineEdit;
class QString;

/// Shows what the gateway reports, each second, on the controls with which the operator changes it. A control
/// that shows the value already is not touched: the operator may have the cursor or a selection in it, or its
/// list open. Nothing here raises the signals that mean an action of the operator.
namespace gateway {

/// A text that is too long shows its beginning.
void showText(QLineEdit &field, const QString &text);

/// An index that the list does not have shows no entry.
void showIndex(QComboBox &box, int index);

/// Without an index the box stays as it is.
void showIndex(QComboBox &box, const std::optional<int> &index);

/// Checks the first button for this value, the second one for the other value. Without a value both stay as
/// they are.
template <typename Value>
void showChoice(const std::optional<Value> &value, Value first, QAbstractButton &firstButton,
                QAbstractButton &secondButton)
{
    if (!value)
        return;
    QAbstractButton &button = *value == first ? firstButton : secondButton;
    if (!button.isChecked())
        button.setChecked(true);
}

} // namespace gateway
