#include "reports/workbook.h"

#include "base/log.h"
#include "reports/librarypath.h"
#include "reports/reportsheet.h"
#include "reports/showntext.h"
#include "reports/spreadsheetfile.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <iterator>
#include <xlsxwriter.h>

namespace {

constexpr char kFileName[] = "report.xlsx";
constexpr int kTitleRow = 1;
constexpr int kHeadingRow = 2;
constexpr int kTitleColumns = 40;
constexpr int kFormattedColumns = 37;
constexpr int kLongestText = 32767; ///< what a cell can hold

constexpr lxw_color_t kNoColor = LXW_COLOR_UNSET;
constexpr lxw_color_t kBlue = 0x31869B;
constexpr lxw_color_t kPurple = 0x7030A0;
constexpr lxw_color_t kGreen = 0x00B050;
constexpr lxw_color_t kRed = 0xC00000;

/// Columns, counted from 1, that look alike; the width in characters.
struct ColumnRange
{
    int first;
    int last;
    lxw_color_t color;
    double width;
};

/// A later line overrides an earlier one.
constexpr ColumnRange kColumnRanges[] = {
    {1, 33, kNoColor, 8},  {2, 2, kNoColor, 14}, {7, 8, kBlue, 8},   {11, 11, kPurple, 14},
    {12, 12, kPurple, 8},  {13, 14, kGreen, 8},  {15, 17, kRed, 8},  {18, 18, kPurple, 14},
    {19, 19, kPurple, 8},  {20, 21, kGreen, 8},  {22, 24, kBlue, 8}, {25, 25, kGreen, 120},
    {26, 26, kGreen, 60},  {27, 28, kGreen, 8},  {29, 31, kRed, 8},  {32, 33, kPurple, 8},
    {34, 37, kPurple, 18},
};

/// The library adds this to a width, in pixels, and a character has so many.
constexpr double kColumnPadding = 5;
constexpr double kCharacterPixels = 7;

/// What to give the library so that the file has this width.
double libraryWidth(double width)
{
    return (width * kCharacterPixels - kColumnPadding) / kCharacterPixels;
}

/// "_x0041_" in the file would be read as the character of this number: its first sign is written so.
QString escapedText(QString text)
{
    static const QRegularExpression escape(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    return text.replace(escape, QStringLiteral("_x005F_"));
}

/// A text as a cell can hold it and every reader shows it. The end of one that is too long is cut.
QByteArray cellText(const QString &text)
{
    constexpr int kEscapeLength = 7;
    QString shown = shownText(text.left(kLongestText));
    QString escaped = escapedText(shown);
    // The library refuses what is too long by its escapes. Small steps, so that no more is cut than must be.
    while (escaped.size() > kLongestText) {
        const int excess = escaped.size() - kLongestText;
        shown = shownText(shown.chopped(std::max(1, excess / kEscapeLength)));
        escaped = escapedText(shown);
    }
    return escaped.toUtf8();
}

/// Fills the one sheet of a new workbook of the library, which owns all that is made here.
class SheetWriter
{
public:
    explicit SheetWriter(lxw_workbook &book)
        : m_book(book)
        , m_sheet(*workbook_add_worksheet(&book, nullptr))
    {}

    /// False if the library refused something.
    bool write(const ReportSheet &sheet);

private:
    lxw_format *format(lxw_color_t color);
    void setColumns();
    void writeTitle(const QString &title);
    void writeText(int row, int column, const QString &text);
    void writeValue(int row, int column, const QString &value);
    void check(lxw_error error) { m_isWritten = m_isWritten && error == LXW_NO_ERROR; }

    lxw_workbook &m_book;
    lxw_worksheet &m_sheet;
    bool m_isWritten = true;
};

lxw_row_t rowIndex(int row)
{
    return static_cast<lxw_row_t>(row - 1);
}

lxw_col_t columnIndex(int column)
{
    return static_cast<lxw_col_t>(column - 1);
}

lxw_format *SheetWriter::format(lxw_color_t color)
{
    lxw_format *format = workbook_add_format(&m_book);
    format_set_font_name(format, "Arial");
    format_set_align(format, LXW_ALIGN_LEFT);
    format_set_font_color(format, color);
    return format;
}

void SheetWriter::setColumns()
{
    std::array<const ColumnRange *, kFormattedColumns + 1> looks{};
    for (const ColumnRange &range : kColumnRanges)
        std::fill(looks.begin() + range.first, looks.begin() + range.last + 1, &range);
    // Each column once: ranges that overlap break readers.
    for (int column = 1; column <= kFormattedColumns; ++column) {
        const ColumnRange &look = *looks.at(column);
        check(worksheet_set_column(&m_sheet, columnIndex(column), columnIndex(column),
                                   libraryWidth(look.width), format(look.color)));
    }
}

void SheetWriter::writeTitle(const QString &title)
{
    lxw_format *look = format(std::rbegin(kColumnRanges)->color);
    check(worksheet_set_row(&m_sheet, rowIndex(kTitleRow), LXW_DEF_ROW_HEIGHT, look));
    check(worksheet_merge_range(&m_sheet, rowIndex(kTitleRow), columnIndex(1), rowIndex(kTitleRow),
                                columnIndex(kTitleColumns), "", look));
    // Not with the merging, which does not tell whether the text was taken.
    check(worksheet_write_string(&m_sheet, rowIndex(kTitleRow), columnIndex(1), cellText(title).constData(),
                                 look));
}

void SheetWriter::writeText(int row, int column, const QString &text)
{
    check(worksheet_write_string(&m_sheet, rowIndex(row), columnIndex(column), cellText(text).constData(),
                                 nullptr)); // no format: the cell takes that of its column
}

void SheetWriter::writeValue(int row, int column, const QString &value)
{
    bool isInteger = false;
    const qlonglong number = value.toLongLong(&isInteger);
    if (isInteger && isNumberCell(column, value))
        check(worksheet_write_number(&m_sheet, rowIndex(row), columnIndex(column),
                                     static_cast<double>(number), nullptr));
    else
        writeText(row, column, value);
}

bool SheetWriter::write(const ReportSheet &sheet)
{
    setColumns();
    writeTitle(sheet.title);
    for (int i = 0; i < sheet.headings.size(); ++i)
        writeText(kHeadingRow, i + 1, sheet.headings.at(i));
    int lastRow = kHeadingRow;
    for (const ReportSheet::Row &row : sheet.rows) {
        for (int i = 0; i < row.values.size(); ++i)
            writeValue(row.number, i + 1, row.values.at(i));
        lastRow = std::max(lastRow, row.number);
    }
    // Version texts and serial numbers are no numbers, and no mistake either.
    const QByteArray cells = QStringLiteral("A1:AN%1").arg(lastRow).toLatin1();
    check(worksheet_ignore_errors(&m_sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, cells.constData()));
    return m_isWritten;
}

/// Writes the file into the folder, with the library's temporary files beside it; tells what went wrong, if
/// something did.
QString writeFile(const ReportSheet &sheet, const QString &folder)
{
    QByteArray place = libraryPath(folder);
    lxw_workbook_options options = {};
    options.tmpdir = place.data();
    lxw_workbook *book = workbook_new_opt((place + '/' + kFileName).constData(), &options);
    if (!book)
        return QStringLiteral("no memory");
    const bool isWritten = SheetWriter(*book).write(sheet);
    const lxw_error error = workbook_close(book); // frees it in any case
    if (error != LXW_NO_ERROR)
        return QString::fromUtf8(lxw_strerror(error));
    return isWritten ? QString() : QStringLiteral("not every cell could be written");
}

void complain(const QString &reason)
{
    criticalLine("QByteArray workbook(ReportSheet)") << "No workbook -" << reason;
}

} // namespace

QByteArray workbook(const ReportSheet &sheet)
{
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        complain(QStringLiteral("no folder for temporary files: ") + folder.errorString());
        return {};
    }
    const QString path = folder.filePath(QString::fromLatin1(kFileName));
    QString fault = writeFile(sheet, folder.path());
    if (fault.isEmpty())
        fault = spreadsheetFault(path); // the library does not notice when its temporary files have no room
    QFile file(path);
    if (fault.isEmpty() && !file.open(QIODevice::ReadOnly))
        fault = file.errorString();
    if (!fault.isEmpty()) {
        complain(path + QStringLiteral(": ") + fault);
        return {};
    }
    return file.readAll();
}
