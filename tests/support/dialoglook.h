#pragma once

#include <QStringList>
#include <QtTest>

class QWidget;

/// How a dialog looks and how the Tab key goes through it.
namespace dialoglook {

/// Rows with the families that stand in for the font that the dialogs ask for; the column is "family".
void addFonts();

/// Lets a family stand in; false if it is not installed.
[[nodiscard]] bool useFont(const QString &family);
void resetFont();

/// Names of the visible descendants that are clipped or stand outside their parent.
QStringList clipped(const QWidget &window);

/// Names of the descendants that take part in the operation but have no accessible name.
QStringList withoutAccessibleName(const QWidget &window);

/// Object names of the widgets that the Tab key visits, from the one with the focus until it comes again, or
/// until there are that many.
QStringList tabOrder(QWidget &window, int most = 20);

} // namespace dialoglook
