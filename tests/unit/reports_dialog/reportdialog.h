#pragma once

#include "reports/systemreport.h"
#include "support/childbyname.h"

#include <QAbstractButton>
#include <QTableView>
#include <QtTest>

/// The report dialog on the screen, and an operator's hands.
struct ReportDialog
{
    /// The rows have the addresses from 0 on and are marked.
    explicit ReportDialog(int rows = 0)
    {
        addRows(rows);
        dialog.show();
        dialog.activateWindow();
        if (!QTest::qWaitForWindowActive(&dialog))
            qFatal("the dialog does not become active");
    }

    SystemReport dialog;

    QTableView *table() const { return childByName<QTableView>(&dialog, "tableView"); }

    QAbstractButton *button(const char *name) const { return childByName<QAbstractButton>(&dialog, name); }

    void addRows(int rows, int firstAddress = 0)
    {
        for (int address = firstAddress; address < firstAddress + rows; ++address)
            dialog.addModule({QStringLiteral("Voltage"), QString::number(230000 + address), Qt::Checked,
                              static_cast<quint8>(address)});
    }

    void click(const char *name) const
    {
        // Not in the middle: a check box hears of clicks on its mark and text only.
        constexpr int kOnTheMark = 8;
        QTest::mouseClick(button(name), Qt::LeftButton, {}, {kOnTheMark, button(name)->height() / 2});
    }

    QPoint cell(int row, int column) const
    {
        return table()->visualRect(table()->model()->index(row, column)).center();
    }

    void clickCell(int row, int column, Qt::MouseButton mouseButton = Qt::LeftButton) const
    {
        QTest::mouseClick(table()->viewport(), mouseButton, {}, cell(row, column));
    }

    /// A letter per row: "x" for a marked one, "-" for others.
    QString marks() const
    {
        QString letters;
        for (int row = 0; row < table()->model()->rowCount(); ++row) {
            const QVariant state = table()->model()->index(row, 0).data(Qt::CheckStateRole);
            letters += QLatin1Char(state.toInt() == Qt::Checked ? 'x' : '-');
        }
        return letters;
    }
};
