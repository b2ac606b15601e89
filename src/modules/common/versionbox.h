#pragma once

class QString;
class QWidget;

/// Shows the version numbers of a module in a box over `parent`, which may be deleted while the box is
/// open: the box belongs to it, does not block, and deletes itself when it is left.
void showVersionBox(QWidget *parent, const QString &hardware, const QString &firmware1,
                    const QString &firmware2);
