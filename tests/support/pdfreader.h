#pragma once

#include <QImage>
#include <QMap>
#include <QRectF>
#include <QStringList>
#include <QVector>

/// A PDF file as the programs of poppler-utils read it.
namespace pdfreader {

constexpr int kPixelsPerInch = 125; ///< of all places told here; page pixels of the reports

struct Word
{
    QString text;
    QRectF place; ///< from the corner of the paper
};

/// The words of each page.
QVector<QVector<Word>> words(const QString &path);

/// The words of one page with this text.
QVector<Word> wordsLike(const QVector<Word> &page, const QString &text);

/// All text in the order in which it is read, lines as they stand on the page; fixed blanks are plain ones.
QString text(const QString &path);

/// The text of each page in the order in which the file holds it, which is how a screen reader takes it.
QStringList readingOrder(const QString &path);

/// What the file says of itself: "Pages", "Page size", "Title", ...
QMap<QString, QString> facts(const QString &path);

struct Font
{
    QString name; ///< without the mark of a subset
    bool isEmbedded;
};
QVector<Font> fonts(const QString &path);

/// The page as it is seen; pages count from 1.
QImage picture(const QString &path, int page, int pixelsPerInch = kPixelsPerInch);

/// One line for each picture in the file, the page's number first; masks are left out.
QStringList pictures(const QString &path);

} // namespace pdfreader
