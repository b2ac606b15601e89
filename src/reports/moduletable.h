#pragma once

#include <QTableView>

/// The table of the report dialog. Its cells cannot be edited, a click on one only says so: clicked() comes
/// once for each click of the left mouse button, also for the second one of a double click, and for the space
/// bar on the current cell. The current row stands out as long as the keys go to the table; later it would
/// pass for a chosen one.
class ModuleTable : public QTableView
{
    Q_OBJECT

public:
    explicit ModuleTable(QWidget *parent = nullptr);

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
};
