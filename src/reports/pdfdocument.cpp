#include "reports/pdfdocument.h"

#include "base/gui/fonts.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <algorithm>
#include <vector>

namespace {

// All lengths are page pixels: of these so many to the inch that the logo stands whole on the paper.
constexpr int kPixelsPerInch = 125;
const QRectF kLogoPlace(570, -5, 110, 40); ///< from the corner of the printable area; hangs out at its top
constexpr double kTouch = 0.5;
constexpr double kLaterPagesTop = 40; ///< where the text of further pages begins: below the logo

QPageLayout paper()
{
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(50, 20, 20, 40),
            QPageLayout::Millimeter};
}

/// A part of the document from top to bottom.
struct Slice
{
    double top = 0;
    double bottom = 0;

    double height() const { return bottom - top; }
};

/// A table, parted where pages may end.
struct TableRows
{
    Slice heading;            ///< the rows that tell what the columns hold; may be empty
    double bottom = 0;        ///< of the table
    std::vector<double> tops; ///< upper edges of the other rows, their line included
};

/// What stands on one page.
struct Page
{
    double top = 0; ///< where its text begins on the paper
    Slice heading;  ///< of the table that goes on; empty if none does
    Slice text;
};

std::vector<QTextTable *> tablesOf(const QTextDocument &document)
{
    std::vector<QTextTable *> tables;
    for (QTextFrame *frame : document.rootFrame()->childFrames()) {
        if (auto *table = qobject_cast<QTextTable *>(frame))
            tables.push_back(table);
    }
    return tables;
}

template <typename Visit>
void forEachCell(const QTextTable &table, int row, Visit visit)
{
    for (int column = 0; column < table.columns(); ++column)
        visit(table.cellAt(row, column));
}

/// The text engine does not know the width "thin" and would draw thick black lines around the cells.
void giveCellsTheLinesOfTheTable(QTextTable &table)
{
    const QTextTableFormat lines = table.format();
    const auto give = [&lines](QTextTableCell cell) {
        QTextTableCellFormat format = cell.format().toTableCellFormat();
        format.setBorder(lines.border());
        format.setBorderBrush(lines.borderBrush());
        format.setBorderStyle(lines.borderStyle());
        cell.setFormat(format);
    };
    for (int row = 0; row < table.rows(); ++row)
        forEachCell(table, row, give);
}

/// Number of rows at the table's head of which each cell is a heading or empty.
int headingRowCount(const QTextTable &table)
{
    for (int row = 0; row < table.rows(); ++row) {
        bool isHeading = true;
        forEachCell(table, row, [&isHeading](const QTextTableCell &cell) {
            const bool isEmpty = cell.firstPosition() == cell.lastPosition();
            isHeading = isHeading && (isEmpty || cell.format().fontWeight() >= QFont::Bold);
        });
        if (!isHeading)
            return row;
    }
    return 0; // nothing to stand above
}

double rowTop(const QTextTable &table, int row)
{
    const auto &layout = *table.document()->documentLayout();
    double top = layout.documentSize().height();
    forEachCell(table, row, [&](const QTextTableCell &cell) {
        const double text = layout.blockBoundingRect(cell.firstCursorPosition().block()).top();
        top = std::min(top, text - cell.format().toTableCellFormat().topPadding());
    });
    return top - table.format().border();
}

TableRows rowsOf(QTextTable &table)
{
    TableRows rows;
    const int headings = headingRowCount(table);
    for (int row = headings; row < table.rows(); ++row)
        rows.tops.push_back(rowTop(table, row));
    rows.heading = {rowTop(table, 0), rows.tops.front()};
    rows.bottom = table.document()->documentLayout()->frameBoundingRect(&table).bottom();
    return rows;
}

/// A document on its pages. It is laid out in one piece, then parted between lines and rows: left to
/// itself the text engine cuts rows in two where they have several lines.
class PagedDocument
{
public:
    PagedDocument(const QString &html, const QSizeF &page);

    std::vector<Page> pages() const; ///< at least one
    void drawPage(QPainter &painter, const Page &page) const;

private:
    void collectEdges();
    Slice headingAbove(double top) const;
    void draw(QPainter &painter, const Slice &slice, double y) const;

    QSizeF m_page;
    QTextDocument m_document;
    std::vector<TableRows> m_tables;
    std::vector<double> m_edges; ///< where a page may end, from top to bottom; the last is the text's end
    double m_lineWidth = 0;      ///< of the tables
};

PagedDocument::PagedDocument(const QString &html, const QSizeF &page)
    : m_page(page)
{
    m_document.setDefaultFont(fonts::report());
    m_document.setUseDesignMetrics(true);
    m_document.setHtml(html);
    for (QTextTable *table : tablesOf(m_document))
        giveCellsTheLinesOfTheTable(*table);
    m_document.setTextWidth(page.width());
    for (QTextTable *table : tablesOf(m_document)) {
        m_tables.push_back(rowsOf(*table));
        m_lineWidth = std::max(m_lineWidth, table->format().border());
    }
    collectEdges();
}

void PagedDocument::collectEdges()
{
    for (const TableRows &table : m_tables) {
        m_edges.push_back(table.heading.top);
        m_edges.insert(m_edges.end(), table.tops.begin() + 1,
                       table.tops.end()); // a heading is not left alone
        m_edges.push_back(table.bottom);
    }
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
        if (block.length() <= 1 || QTextCursor(block).currentTable())
            continue;
        const QRectF place = m_document.documentLayout()->blockBoundingRect(block);
        for (int line = 1; line < block.layout()->lineCount(); ++line)
            m_edges.push_back(place.top() + block.layout()->lineAt(line).y());
        m_edges.push_back(place.bottom());
    }
    std::sort(m_edges.begin(), m_edges.end());
}

Slice PagedDocument::headingAbove(double top) const
{
    const auto goesOn = [top](const TableRows &table) {
        return table.tops.front() < top && top < table.bottom;
    };
    const auto table = std::find_if(m_tables.begin(), m_tables.end(), goesOn);
    return table == m_tables.end() ? Slice() : table->heading;
}

std::vector<Page> PagedDocument::pages() const
{
    std::vector<Page> pages;
    const double end = m_edges.empty() ? 0 : m_edges.back();
    double top = 0;
    do {
        Page page;
        page.top = pages.empty() ? 0 : kLaterPagesTop;
        page.heading = headingAbove(top);
        const double room = m_page.height() - page.top - page.heading.height() - m_lineWidth;
        const auto beyond = std::upper_bound(m_edges.begin(), m_edges.end(), top + room);
        const bool hasEdge = beyond != m_edges.begin() && *(beyond - 1) > top;
        page.text = {top, hasEdge ? *(beyond - 1) : top + room}; // a row higher than the page must be cut
        top = page.text.bottom;
        pages.push_back(page);
    } while (top < end);
    return pages;
}

void PagedDocument::draw(QPainter &painter, const Slice &slice, double y) const
{
    const QRectF place(0, slice.top, m_page.width(), slice.height() + m_lineWidth);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black); // whatever the colours of the screen
    // What only touches the slice would be written too, hidden by the painter, but found by a search.
    context.clip = place.adjusted(0, kTouch, 0, -kTouch);
    painter.save();
    painter.translate(0, y - slice.top);
    painter.setClipRect(place);
    m_document.documentLayout()->draw(&painter, context);
    painter.restore();
}

void PagedDocument::drawPage(QPainter &painter, const Page &page) const
{
    if (page.heading.height() > 0)
        draw(painter, page.heading, page.top);
    draw(painter, page.text, page.top + page.heading.height());
}

} // namespace

void writePdf(QIODevice &device, const QString &html, PdfFlow flow, const QString &title)
{
    QPdfWriter writer(&device);
    writer.setTitle(title);
    writer.setResolution(kPixelsPerInch);
    writer.setPageLayout(paper());
    const PagedDocument document(html, writer.pageLayout().paintRectPixels(kPixelsPerInch).size());
    const QImage logo(QStringLiteral(":/pictures/qor-Logo.png"));
    QPainter painter;
    if (!painter.begin(&writer))
        return;
    const std::vector<Page> pages = document.pages();
    const auto count = flow == PdfFlow::OnePage ? 1 : pages.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            writer.newPage();
        document.drawPage(painter, pages.at(i));
        painter.drawImage(kLogoPlace, logo);
    }
}
