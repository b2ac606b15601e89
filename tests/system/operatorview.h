#pragma once

#include <QString>
#include <QStringList>

class SystemFixture;

/// What an operator can tell of the link and the chain.
namespace operatorview {

/// Connection lamp, status box with its colour, status line, and what is there of the chain, as in
/// "gray | OFFLINE yellow | COM Port unavailable: COM40 | nothing of the chain". Then each of windows().
QString sight(const SystemFixture &fixture);

/// All that is on the screen beside the main window, be it a dialog, a box, a list or a tip: its title, or
/// its class if it has none, and the text of a box, as in "Warning: The versions differ. (modal)"; sorted.
QStringList windows(const SystemFixture &fixture);

/// The fourth piece of sight() where neither a row nor a text of a chain is left, and no rate can be chosen.
extern const QString kNothing;
extern const QString kSeparator;

/// Buttons of the main window that he cannot press.
QStringList deadButtons(const SystemFixture &fixture);

/// Rows of the table of the system report.
int reportedModules(const SystemFixture &fixture);

/// What rows, top row and system panel show and the chain that is plugged does not have, apart from the
/// controls of the channels; live values included.
QStringList differences(const SystemFixture &fixture);

} // namespace operatorview
