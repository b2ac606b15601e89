#include "reports/pdfdocument.h"

#include "reports/documentpieces.h"

#include <QIODevice>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QVector>
#include <algorithm>

namespace {

// All lengths are page pixels: of these so many to the inch that the logo stands whole on the paper.
constexpr int kPixelsPerInch = 125;
const QRectF kLogoPlace(570, -5, 110, 40); ///< from the corner of the printable area; hangs out at its top
constexpr double kBelowLogo = 40;          ///< where the text of further pages begins

QPageLayout paper()
{
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(50, 20, 20, 40),
            QPageLayout::Millimeter};
}

/// What stands on one page.
struct Page
{
    double top = 0;                 ///< where its text begins on the paper
    const Piece *heading = nullptr; ///< of the table that goes on, if one does
    Slice text;                     ///< of the document
    std::size_t first = 0;          ///< piece of the text
    std::size_t end = 0;            ///< piece behind the last one
};

/// A document on its pages. It is parted between lines and rows: left to itself the text engine cuts rows in
/// two where they have several lines.
class PagedDocument
{
public:
    PagedDocument(const QString &html, const QSizeF &page)
        : m_page(page)
        , m_document(html, page.width(), page.height() - kBelowLogo)
    {}

    std::vector<Page> pages() const; ///< at least one
    void drawPage(QPainter &painter, const Page &page) const;

private:
    Page pageFrom(std::size_t first) const;
    bool reachesLogo() const;
    const Piece *headingAbove(double top) const;
    void drawTables(QPainter &painter, const Slice &slice) const;

    /// Draws a part of the document, which begins at `y` of the page: these pieces and what of the tables
    /// stands in it.
    void drawSlice(QPainter &painter, const Slice &slice, double y, const Piece *first,
                   const Piece *end) const;

    QSizeF m_page;
    DocumentPieces m_document;
};

/// Whether text or a table would stand under the logo if the first page began at its top.
bool PagedDocument::reachesLogo() const
{
    const auto isBelow = [](const QRectF &place) { return place.intersects(kLogoPlace); };
    const auto hasLineBelow = [&](const Piece &piece) {
        return std::any_of(piece.lines.begin(), piece.lines.end(),
                           [&](const PlacedLine &line) { return isBelow(line.place); });
    };
    return std::any_of(m_document.pieces().begin(), m_document.pieces().end(), hasLineBelow) ||
           std::any_of(m_document.tables().begin(), m_document.tables().end(),
                       [&](const TableGrid &table) { return isBelow(table.place); });
}

const Piece *PagedDocument::headingAbove(double top) const
{
    for (const TableGrid &table : m_document.tables()) {
        const Slice &heading = table.heading.place;
        if (heading.height() > 0 && heading.bottom <= top && top < table.place.bottom())
            return &table.heading;
    }
    return nullptr;
}

Page PagedDocument::pageFrom(std::size_t first) const
{
    const std::vector<Piece> &pieces = m_document.pieces();
    Page page;
    if (first > 0) {
        page.text.top = pieces.at(first).place.top;
        page.heading = headingAbove(page.text.top);
    }
    page.top = first > 0 || reachesLogo() ? kBelowLogo : 0;
    if (page.heading)
        page.top += page.heading->place.height() - kTableLine;
    const double lowest = page.text.top + m_page.height() - page.top;
    page.first = first;
    page.end = first + 1; // in any case
    while (page.end < pieces.size() && pieces.at(page.end).place.bottom <= lowest)
        ++page.end;
    page.text.bottom = pieces.at(page.end - 1).place.bottom;
    return page;
}

std::vector<Page> PagedDocument::pages() const
{
    if (m_document.pieces().empty())
        return {Page()};
    std::vector<Page> pages;
    for (std::size_t first = 0; first < m_document.pieces().size(); first = pages.back().end)
        pages.push_back(pageFrom(first));
    return pages;
}

void drawText(QPainter &painter, const Piece &piece)
{
    for (const PlacedLine &line : piece.lines)
        line.line.draw(&painter, line.origin);
}

/// The lines of the part of the table that stands within the slice, which may begin and end within rows.
QVector<QRectF> tableLines(const TableGrid &table, const Slice &slice)
{
    const double top = std::max(slice.top, table.place.top());
    const double bottom = std::min(slice.bottom, table.place.bottom());
    QVector<QRectF> lines;
    const auto addAcross = [&](double y) {
        lines.append(QRectF(table.place.left(), y, table.place.width(), kTableLine));
    };
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        const TableGrid::Row &row = table.rows.at(i);
        const bool isLast = i + 1 == table.rows.size();
        const double rowTop = std::max(top, row.top);
        const double rowBottom = std::min(bottom, isLast ? table.place.bottom() : table.rows.at(i + 1).top);
        if (rowBottom - rowTop <= kTableLine)
            continue;
        addAcross(rowTop);
        for (const double left : row.lefts)
            lines.append(QRectF(left, rowTop, kTableLine, rowBottom - rowTop));
        lines.append(QRectF(table.place.right() - kTableLine, rowTop, kTableLine, rowBottom - rowTop));
    }
    addAcross(bottom - kTableLine);
    return lines;
}

void PagedDocument::drawTables(QPainter &painter, const Slice &slice) const
{
    painter.setPen(Qt::NoPen);
    for (const TableGrid &table : m_document.tables()) {
        if (slice.top >= table.place.bottom() || slice.bottom <= table.place.top())
            continue;
        painter.setBrush(table.color);
        painter.drawRects(tableLines(table, slice));
    }
}

void PagedDocument::drawSlice(QPainter &painter, const Slice &slice, double y, const Piece *first,
                              const Piece *end) const
{
    painter.save();
    painter.translate(0, y - slice.top);
    drawTables(painter, slice);
    painter.setPen(Qt::black); // whatever the colours of the screen
    std::for_each(first, end, [&painter](const Piece &piece) { drawText(painter, piece); });
    painter.restore();
}

void PagedDocument::drawPage(QPainter &painter, const Page &page) const
{
    // In the order in which it is read.
    if (page.heading)
        drawSlice(painter, page.heading->place, kBelowLogo, page.heading, page.heading + 1);
    const Piece *pieces = m_document.pieces().data();
    drawSlice(painter, page.text, page.top, pieces + page.first, pieces + page.end);
}

} // namespace

bool writePdf(QIODevice &device, const QString &html, PdfFlow flow, const QString &title)
{
    QPdfWriter writer(&device);
    writer.setTitle(title);
    writer.setResolution(kPixelsPerInch);
    writer.setPageLayout(paper());
    const PagedDocument document(html, writer.pageLayout().paintRectPixels(kPixelsPerInch).size());
    const QImage logo(QStringLiteral(":/pictures/qor-Logo.png"));
    QPainter painter;
    if (!device.isWritable() || !painter.begin(&writer)) // the writer takes any device
        return false;
    const std::vector<Page> pages = document.pages();
    const auto count = flow == PdfFlow::OnePage ? 1 : pages.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && !writer.newPage())
            return false;
        document.drawPage(painter, pages.at(i));
        painter.drawImage(kLogoPlace, logo);
    }
    return painter.end();
}
