#pragma once

#include <QColor>
#include <QRectF>
#include <QTextDocument>
#include <QTextLine>
#include <vector>

class QTextBlock;
class QTextTable;

/// A part of a document from top to bottom.
struct Slice
{
    double top = 0;
    double bottom = 0;

    double height() const { return bottom - top; }
};

/// A line of text.
struct PlacedLine
{
    QTextLine line;
    QPointF origin; ///< of the block that it belongs to
    QRectF place;   ///< of its text
};

/// What the end of a page does not part: a line of text, a row of a table, or a line of a row that is too
/// high to stay whole.
struct Piece
{
    Slice place;
    std::vector<PlacedLine> lines;
};

/// The lines around the cells of a table. Where lines begin: each has the width kTableLine.
struct TableGrid
{
    struct Row
    {
        double top = 0;
        std::vector<double> lefts; ///< of its cells
    };

    std::vector<Row> rows; ///< at least one
    QRectF place;          ///< the lines included
    QColor color;
    Piece heading; ///< the rows that tell what the columns hold, and the line below them; may have no height
};

constexpr double kTableLine = 1;

/// A document laid out in one piece, of any height, and taken apart into what may stand on different pages.
/// It knows paragraphs and tables without cells over several rows. Lengths are pixels.
class DocumentPieces
{
public:
    /// A row that is higher than `highestRow`, together with the heading of its table, is taken apart.
    DocumentPieces(const QString &html, double width, double highestRow);

    DocumentPieces(const DocumentPieces &) = delete; // the lines of text point into the document
    DocumentPieces &operator=(const DocumentPieces &) = delete;

    const std::vector<Piece> &pieces() const { return m_pieces; } ///< from top to bottom
    const std::vector<TableGrid> &tables() const { return m_tables; }

private:
    void addText(const QTextBlock &block);
    void addTable(QTextTable &table);
    void addRow(Piece row, double highest);

    double m_highestRow;
    QTextDocument m_document;
    std::vector<Piece> m_pieces;
    std::vector<TableGrid> m_tables;
};
