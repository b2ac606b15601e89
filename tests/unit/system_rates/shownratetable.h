#pragma once

#include "support/childbyname.h"
#include "system/rates/ratetable.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QtTest>

/// The table in a dialog that is shown and active, as the keyboard needs it.
class ShownTable
{
public:
    ShownTable()
        : table(new RateTable(&dialog))
    {
        dialog.resize(664, 350);
        table->resize(650, 340);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
    }

    QPushButton *cell(const char *name) const { return childByName<QPushButton>(table, name); }

    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    QString focused() const
    {
        const QWidget *widget = QApplication::focusWidget();
        return widget ? widget->objectName() : QString();
    }

    QDialog dialog;
    RateTable *table; // child of the dialog
};
