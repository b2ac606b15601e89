#include "reports/documentpieces.h"

#include "base/gui/fonts.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextTable>
#include <algorithm>

namespace {

constexpr double kTableMargin = 2;
constexpr double kCellPadding = 2.5; ///< what is agreed, and half of the line between two cells

QTextTable *tableOf(const QTextFrame::iterator &place)
{
    return qobject_cast<QTextTable *>(place.currentFrame());
}

/// Visits each cell of a row once, also if it is wider than a column.
template <typename Visit>
void forEachCell(const QTextTable &table, int row, Visit visit)
{
    int column = 0;
    while (column < table.columns()) {
        const QTextTableCell cell = table.cellAt(row, column);
        visit(cell);
        column += cell.columnSpan();
    }
}

/// Makes room for lines around the cells, which are ours to draw. The text engine makes them thick and black,
/// because it does not know the width "thin", and looks at all neighbours of a cell for each line around it:
/// the report takes more than three times as long.
void replaceLinesByRoom(QTextTable &table)
{
    QTextTableFormat format = table.format();
    format.setBorderCollapse(false);
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setMargin(kTableMargin);
    table.setFormat(format);
    const auto replace = [](QTextTableCell cell) {
        QTextTableCellFormat look = cell.format().toTableCellFormat();
        look.setBorder(0);
        look.setPadding(kCellPadding);
        cell.setFormat(look);
    };
    for (int row = 0; row < table.rows(); ++row)
        forEachCell(table, row, replace);
}

bool isEmpty(const QTextTableCell &cell)
{
    return cell.firstPosition() == cell.lastPosition();
}

/// Number of rows at the table's head of which each cell is a heading or empty.
int headingRowCount(const QTextTable &table)
{
    for (int row = 0; row < table.rows(); ++row) {
        bool isHeading = true;
        forEachCell(table, row, [&isHeading](const QTextTableCell &cell) {
            isHeading = isHeading && (isEmpty(cell) || cell.format().fontWeight() >= QFont::Bold);
        });
        if (!isHeading)
            return row;
    }
    return 0; // nothing to stand above
}

void appendLines(std::vector<PlacedLine> &lines, const QTextBlock &block, const QPointF &origin)
{
    const QTextLayout &layout = *block.layout();
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        if (line.textLength() > 0)
            lines.push_back({line, origin, line.naturalTextRect().translated(origin)});
    }
}

/// Adds the lines of the row's cells to `lines`.
TableGrid::Row takeRow(const QTextTable &table, int number, std::vector<PlacedLine> &lines)
{
    const QAbstractTextDocumentLayout &layout = *table.document()->documentLayout();
    TableGrid::Row row;
    row.top = layout.documentSize().height();
    forEachCell(table, number, [&](const QTextTableCell &cell) {
        for (auto place = cell.begin(); !place.atEnd(); ++place) {
            const QPointF origin = layout.blockBoundingRect(place.currentBlock()).topLeft();
            if (place == cell.begin()) {
                row.top = std::min(row.top, origin.y() - kCellPadding - kTableLine);
                row.lefts.push_back(origin.x() - kCellPadding - kTableLine);
            }
            appendLines(lines, place.currentBlock(), origin);
        }
    });
    return row;
}

void append(std::vector<PlacedLine> &lines, const std::vector<PlacedLine> &more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

/// The row line by line. Lines of different cells that begin at the same height stay together.
std::vector<Piece> partedRow(const Piece &row)
{
    std::vector<PlacedLine> lines = row.lines;
    std::stable_sort(lines.begin(), lines.end(),
                     [](const PlacedLine &a, const PlacedLine &b) { return a.place.top() < b.place.top(); });
    std::vector<Piece> parts;
    double top = 0;
    double bottom = 0; // of one that reaches further down than those that follow it
    for (const PlacedLine &line : lines) {
        bottom = std::max(bottom, line.place.bottom());
        if (parts.empty() || line.place.top() > top) {
            top = line.place.top();
            parts.push_back({{top - kCellPadding - kTableLine, 0}, {}});
        }
        parts.back().lines.push_back(line);
        parts.back().place.bottom = bottom + kCellPadding;
    }
    return parts;
}

} // namespace

DocumentPieces::DocumentPieces(const QString &html, double width, double highestRow)
    : m_highestRow(highestRow)
{
    m_document.setUndoRedoEnabled(false);
    m_document.setDefaultFont(fonts::report());
    m_document.setUseDesignMetrics(true);
    m_document.setHtml(html);
    const QTextFrame &root = *m_document.rootFrame();
    for (auto place = root.begin(); !place.atEnd(); ++place) {
        if (QTextTable *table = tableOf(place))
            replaceLinesByRoom(*table);
    }
    m_document.setTextWidth(width);
    for (auto place = root.begin(); !place.atEnd(); ++place) {
        if (QTextTable *table = tableOf(place))
            addTable(*table);
        else
            addText(place.currentBlock());
    }
}

void DocumentPieces::addText(const QTextBlock &block)
{
    std::vector<PlacedLine> lines;
    appendLines(lines, block, m_document.documentLayout()->blockBoundingRect(block).topLeft());
    for (const PlacedLine &line : lines)
        m_pieces.push_back({{line.place.top(), line.place.bottom()}, {line}});
}

void DocumentPieces::addTable(QTextTable &table)
{
    TableGrid grid;
    std::vector<Piece> rows(static_cast<std::size_t>(table.rows()));
    for (int row = 0; row < table.rows(); ++row)
        grid.rows.push_back(takeRow(table, row, rows.at(row).lines));
    const QSizeF size = m_document.documentLayout()->frameBoundingRect(&table).size() -
                        QSizeF(2 * kTableMargin - kTableLine, 2 * kTableMargin - kTableLine);
    grid.place = {QPointF(grid.rows.front().lefts.front(), grid.rows.front().top), size};
    grid.color = table.format().borderBrush().color();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const bool isLast = row + 1 == rows.size();
        rows.at(row).place = {grid.rows.at(row).top,
                              isLast ? grid.place.bottom() : grid.rows.at(row + 1).top + kTableLine};
    }
    const auto headings = static_cast<std::size_t>(headingRowCount(table));
    const double dataTop = rows.at(headings).place.top;
    grid.heading.place = {grid.place.top(), headings == 0 ? grid.place.top() : dataTop + kTableLine};
    for (std::size_t row = 0; row < headings; ++row)
        append(grid.heading.lines, rows.at(row).lines);
    const std::size_t first = m_pieces.size();
    for (std::size_t row = headings; row < rows.size(); ++row)
        addRow(rows.at(row), m_highestRow - grid.heading.place.height());
    // A heading is not left alone, and is read first.
    std::vector<PlacedLine> &firstLines = m_pieces.at(first).lines;
    firstLines.insert(firstLines.begin(), grid.heading.lines.begin(), grid.heading.lines.end());
    m_pieces.at(first).place.top = grid.place.top();
    m_tables.push_back(grid);
}

void DocumentPieces::addRow(Piece row, double highest)
{
    if (row.place.height() <= highest) {
        m_pieces.push_back(std::move(row));
        return;
    }
    std::vector<Piece> parts = partedRow(row);
    parts.back().place.bottom = row.place.bottom;
    m_pieces.insert(m_pieces.end(), parts.begin(), parts.end());
}
