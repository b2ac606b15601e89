#pragma once

#include <QList>
#include <QString>
#include <QWidget>
#include <optional>

class QGridLayout;
class QLabel;
class QPushButton;

/// A bit rate in kBit/s and a number of channels, as the texts that name them.
struct RateChoice
{
    QString bitRate;
    QString channels;
};

/// The table of data rates: a row for each bit rate, a column for each number of channels, and in each cell
/// a button with the two figures which that pair gives. A button's object name is the number of channels,
/// a comma and the bit rate; all cells are found by it. The table sends nothing and decides nothing: whoever
/// shows it connects the buttons and says which cells are dead. The arrow keys go to the next live cell in
/// their direction; the Return key presses no cell. Headings and figures are there from the first show on.
class RateTable : public QWidget
{
    Q_OBJECT

public:
    /// All cells are enabled.
    explicit RateTable(QWidget *parent = nullptr);

    /// All 48 cells, row by row.
    QList<QPushButton *> buttons() const { return m_buttons; }

    /// Null if the table has no such pair.
    QPushButton *button(const RateChoice &choice) const;

    /// The pair that an object name stands for; nothing if it has less than two parts.
    static std::optional<RateChoice> choiceOf(const QString &objectName);

    void setAllEnabled(bool enabled);

    /// Disables these cells. Pairs that the table does not have are ignored.
    void disable(const QList<RateChoice> &cells);

    /// Marks this cell as the present one in place of any other, and gives it the focus. Does nothing for a
    /// null pointer and for a cell that is disabled.
    void markSelected(QPushButton *button);

    void clearSelection();

    /// The marked cell; null if none is.
    QPushButton *selected() const { return m_selected; }

protected:
    /// Of the cells: takes the arrow keys.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addHeadings(QGridLayout &grid);
    void addCells(QGridLayout &grid);
    void writeHeadings();
    void drawPictures();

    /// From the cell with this index to the next live one that many rows and columns further, if there is
    /// one.
    void moveFocus(int from, int rows, int columns);

    QList<QLabel *> m_headings;     // children of this widget; those of the columns, then those of the rows
    QList<QPushButton *> m_buttons; // likewise
    QPushButton *m_selected = nullptr;
};
