#pragma once

#include <QMessageBox>
#include <functional>

/// A question that stands before something that cannot be taken back. The box's buttons are named
/// "proceedButton" and "refusalButton".
struct Confirmation
{
    QString name; ///< object name of the box
    QString title;
    QString question;
    QMessageBox::StandardButton refusal = QMessageBox::No; ///< the button that Return and Escape press
    QString proceedText;                                   ///< of the Yes button; empty: as usual
    QString refusalText;                                   ///< empty: as usual
};

/// Shows the question over all windows of the program and returns at once. `proceed` is called if the
/// operator presses Yes, unless `parent` is gone by then: the box goes with it. While the box is open a
/// second call does nothing.
void confirm(const Confirmation &confirmation, QWidget &parent, const std::function<void()> &proceed);
