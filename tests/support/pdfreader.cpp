#include "support/pdfreader.h"

#include "support/externaltool.h"

#include <QRegularExpression>
#include <QXmlStreamReader>
#include <algorithm>
#include <iterator>

namespace pdfreader {

namespace {

constexpr double kPixelsPerPoint = kPixelsPerInch / 72.0;

double length(const QXmlStreamAttributes &attributes, const char *name)
{
    return attributes.value(QLatin1String(name)).toDouble() * kPixelsPerPoint;
}

QRectF place(const QXmlStreamAttributes &attributes)
{
    return {QPointF(length(attributes, "xMin"), length(attributes, "yMin")),
            QPointF(length(attributes, "xMax"), length(attributes, "yMax"))};
}

/// The rows of a printed table below its heading.
QStringList tableRows(const QByteArray &output)
{
    QStringList lines = QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts);
    return lines.mid(2);
}

} // namespace

QVector<QVector<Word>> words(const QString &path)
{
    QXmlStreamReader xml(
        outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), path, QStringLiteral("-")}));
    QVector<QVector<Word>> pages;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("page"))
            pages.append(QVector<Word>());
        if (xml.name() != QLatin1String("word") || pages.isEmpty())
            continue;
        const QRectF where = place(xml.attributes());
        pages.last().append(Word{xml.readElementText(), where});
    }
    return pages;
}

QVector<Word> wordsLike(const QVector<Word> &page, const QString &text)
{
    QVector<Word> found;
    std::copy_if(page.begin(), page.end(), std::back_inserter(found),
                 [&text](const Word &word) { return word.text == text; });
    return found;
}

QString text(const QString &path)
{
    const QByteArray text =
        outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    return QString::fromUtf8(text).replace(QChar::Nbsp, QLatin1Char(' '));
}

QStringList readingOrder(const QString &path)
{
    const QByteArray text =
        outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-raw"), path, QStringLiteral("-")});
    return QString::fromUtf8(text).split(u'\f', Qt::SkipEmptyParts);
}

QMap<QString, QString> facts(const QString &path)
{
    QMap<QString, QString> facts;
    const QString output = QString::fromUtf8(outputOf(QStringLiteral("pdfinfo"), {path}));
    for (const QString &line : output.split(u'\n', Qt::SkipEmptyParts))
        facts.insert(line.section(u':', 0, 0), line.section(u':', 1).trimmed());
    return facts;
}

QVector<Font> fonts(const QString &path)
{
    // name, type, encoding, embedded, subset, unicode and the two numbers of the object, from the right
    static const QRegularExpression row(
        QStringLiteral("^(?:[A-Z]{6}\\+)?(\\S+) .* (yes|no) +(yes|no) +(yes|no) +\\d+ +\\d+$"));
    QVector<Font> fonts;
    for (const QString &line : tableRows(outputOf(QStringLiteral("pdffonts"), {path}))) {
        const QRegularExpressionMatch match = row.match(line);
        fonts.append(Font{match.captured(1), match.captured(2) == QLatin1String("yes")});
    }
    return fonts;
}

QImage picture(const QString &path, int page, int pixelsPerInch)
{
    const QString number = QString::number(page);
    return QImage::fromData(outputOf(QStringLiteral("pdftoppm"),
                                     {QStringLiteral("-r"), QString::number(pixelsPerInch),
                                      QStringLiteral("-f"), number, QStringLiteral("-l"), number, path}));
}

QStringList pictures(const QString &path)
{
    QStringList lines;
    for (const QString &line :
         tableRows(outputOf(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path}))) {
        const QString plain = line.simplified();
        if (plain.section(u' ', 2, 2) == QLatin1String("image"))
            lines.append(plain);
    }
    return lines;
}

} // namespace pdfreader
