#pragma once

class QDialog;
class QEvent;

/// Whether the event is the repeated press of a key that is held down. The key may be down since before the
/// window that hears of it was open: a repeat is not what the operator wants of that window.
bool isKeyRepeat(const QEvent &event);

/// The keys that press a button act in the dialog, and in all that is in it now, when they are pressed, and
/// not when they repeat: a key that is held down since before the dialog was open would answer it.
void ignoreHeldKeys(QDialog &dialog);
