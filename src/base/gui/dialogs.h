#pragma once

#include <Qt>

class QDialog;

/// Window flags of the small windows that stay on top of the main window and have a close button only.
constexpr Qt::WindowFlags dialogFlags()
{
    return Qt::WindowFlags(Qt::Dialog) | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint |
           Qt::WindowStaysOnTopHint;
}

/// Shows a dialog that keeps the user from all other windows of the program until it is left. Returns at
/// once: the result comes by the dialog's signals.
void showModal(QDialog &dialog);

/// The same for a dialog that was made for this one time: it deletes itself after it was left.
void showModalOnce(QDialog &dialog);
