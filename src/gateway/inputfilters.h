#pragma once

class QDialog;
class QWidget;

/// Event filters that keep what the operator did not mean from acting.
namespace gateway {

/// Return, Enter and Space act in the dialog, and in all that is in it now, when they are pressed, and not
/// when they repeat: a key that is held down since before the dialog was open would answer it.
void ignoreHeldKeys(QDialog &dialog);

/// The wheel over this widget does nothing, be the focus there or not. The open list of a box still scrolls.
void ignoreWheel(QWidget &widget);

} // namespace gateway
