#include "reports/moduletable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

namespace {

/// Leaves out the frame of the current cell: it is the row that counts.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
    }
};

} // namespace

ModuleTable::ModuleTable(QWidget *parent)
    : QTableView(parent)
{
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false); // Tab leaves the table
    setWordWrap(false);
    setItemDelegate(new RowDelegate(this));
    verticalHeader()->hide();
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

bool ModuleTable::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    // Not even by the delegate: it would toggle a mark that the click has toggled already.
    Q_UNUSED(index)
    Q_UNUSED(trigger)
    Q_UNUSED(event)
    return false;
}

void ModuleTable::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void ModuleTable::keyPressEvent(QKeyEvent *event)
{
    const bool isClick = event->key() == Qt::Key_Space || event->key() == Qt::Key_Select;
    if (!isClick)
        QTableView::keyPressEvent(event);
    else if (currentIndex().isValid())
        emit clicked(currentIndex());
}

void ModuleTable::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event); // makes a cell the current one, but does not show which
    if (currentIndex().isValid())
        selectionModel()->select(currentIndex(),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ModuleTable::focusOutEvent(QFocusEvent *event)
{
    QTableView::focusOutEvent(event);
    clearSelection();
}

void ModuleTable::rowsInserted(const QModelIndex &parent, int start, int end)
{
    QTableView::rowsInserted(parent, start, end);
    if (hasFocus() && !currentIndex().isValid()) // it was empty when it got the focus, or was emptied since
        setCurrentIndex(model()->index(0, 0, parent));
}
