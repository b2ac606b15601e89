#include "reports/reportsheet.h"
#include "reports/workbook.h"
#include "samplestore.h"
#include "support/workbookreader.h"

#include <QJsonArray>
#include <QtTest>

namespace {

/// Columns from 1: the colour of their letters and their width, worked out by hand from the agreed table.
struct Look
{
    int first;
    int last;
    const char *color;
    double width;
};

constexpr Look kLooks[] = {
    {1, 1, "", 8},         {2, 2, "", 14},          {3, 6, "", 8},          {7, 8, "31869B", 8},
    {9, 10, "", 8},        {11, 11, "7030A0", 14},  {12, 12, "7030A0", 8},  {13, 14, "00B050", 8},
    {15, 17, "C00000", 8}, {18, 18, "7030A0", 14},  {19, 19, "7030A0", 8},  {20, 21, "00B050", 8},
    {22, 24, "31869B", 8}, {25, 25, "00B050", 120}, {26, 26, "00B050", 60}, {27, 28, "00B050", 8},
    {29, 31, "C00000", 8}, {32, 33, "7030A0", 8},   {34, 37, "7030A0", 18},
};

QString columnName(int column)
{
    return column <= 26 ? QString(QChar(u'A' + column - 1)) : QString(u'A') + QChar(u'A' + column - 27);
}

ReportSheet sampleSheet()
{
    const ReportHead head{QStringLiteral("/reports/all.xlsx"), QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7)),
                          QStringLiteral("1.1.62"), QStringLiteral("an OS")};
    return reportSheet(
        samplestore::filled(3), [](int address) { return address != 2; }, head);
}

} // namespace

class TstWorkbook : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void titleSpansFortyColumns();
    void titleRowHasTheLastLook();
    void columnsHaveTheirLook_data();
    void columnsHaveTheirLook();
    void eachColumnIsSetOnce();
    void cellsTakeTheLookOfTheirColumn();
    void headingsAreText();
    void numbersStandInTheirColumns();
    void functionCodesAreTextAndSensorIndicesNumbers();
    void unselectedModulesLeaveTheirRowEmpty();
    void numbersStoredAsTextAreNoMistake();

private:
    QJsonObject cell(const QString &name) const;
    QJsonValue value(const QString &name) const { return cell(name).value(QLatin1String("value")); }
    QString type(const QString &name) const { return cell(name).value(QLatin1String("type")).toString(); }

    QByteArray m_bytes;
    QJsonObject m_book;
};

void TstWorkbook::initTestCase()
{
    m_bytes = workbook(sampleSheet());
    QVERIFY(!m_bytes.isEmpty());
    m_book = readWorkbook(m_bytes);
    QCOMPARE(m_book.value(QLatin1String("sheets")).toInt(), 1);
}

QJsonObject TstWorkbook::cell(const QString &name) const
{
    return m_book.value(QLatin1String("cells")).toObject().value(name).toObject();
}

void TstWorkbook::titleSpansFortyColumns()
{
    QCOMPARE(m_book.value(QLatin1String("merged")).toArray(), QJsonArray{QStringLiteral("A1:AN1")});
    QCOMPARE(value(QStringLiteral("A1")).toString(),
             QStringLiteral("all.xlsx / Report Created 21.11.26, 09:05:07 / comment comment comment"));
}

void TstWorkbook::titleRowHasTheLastLook()
{
    const QJsonObject expected{{QStringLiteral("font"), QStringLiteral("Arial")},
                               {QStringLiteral("color"), QStringLiteral("7030A0")},
                               {QStringLiteral("align"), QStringLiteral("left")}};
    QCOMPARE(m_book.value(QLatin1String("row1")).toObject(), expected);
    for (const char *key : {"font", "color", "align"})
        QCOMPARE(cell(QStringLiteral("A1")).value(QLatin1String(key)), expected.value(QLatin1String(key)));
}

void TstWorkbook::columnsHaveTheirLook_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("color");
    QTest::addColumn<double>("width");
    for (const Look &look : kLooks) {
        for (int column = look.first; column <= look.last; ++column)
            QTest::addRow("column %d", column) << column << QString::fromLatin1(look.color) << look.width;
    }
}

void TstWorkbook::columnsHaveTheirLook()
{
    QFETCH(int, column);
    QFETCH(QString, color);
    QFETCH(double, width);
    int found = 0;
    for (const QJsonValue &entry : m_book.value(QLatin1String("columns")).toArray()) {
        const QJsonObject look = entry.toObject();
        if (look.value(QLatin1String("first")).toInt() > column ||
            look.value(QLatin1String("last")).toInt() < column)
            continue;
        ++found;
        QCOMPARE(look.value(QLatin1String("color")).toString(), color);
        QCOMPARE(look.value(QLatin1String("width")).toDouble(), width);
        QCOMPARE(look.value(QLatin1String("font")).toString(), QStringLiteral("Arial"));
        QCOMPARE(look.value(QLatin1String("align")).toString(), QStringLiteral("left"));
    }
    QCOMPARE(found, 1);
}

void TstWorkbook::eachColumnIsSetOnce()
{
    const QString xml = QString::fromUtf8(partOf(m_bytes, "xl/worksheets/sheet1.xml"));
    static const QRegularExpression range(QStringLiteral("<col min=\"(\\d+)\" max=\"(\\d+)\""));
    int next = 1;
    for (auto match = range.globalMatch(xml); match.hasNext();) {
        const QRegularExpressionMatch columns = match.next();
        QCOMPARE(columns.captured(1).toInt(), next);
        next = columns.captured(2).toInt() + 1;
    }
    QCOMPARE(next, 38);
}

void TstWorkbook::cellsTakeTheLookOfTheirColumn()
{
    for (const Look &look : kLooks) {
        for (const int row : {2, 3, 4}) {
            const QJsonObject found = cell(columnName(look.first) + QString::number(row));
            QCOMPARE(found.value(QLatin1String("color")).toString(), QString::fromLatin1(look.color));
            QCOMPARE(found.value(QLatin1String("font")).toString(), QStringLiteral("Arial"));
            QCOMPARE(found.value(QLatin1String("align")).toString(), QStringLiteral("left"));
        }
    }
}

void TstWorkbook::headingsAreText()
{
    const QStringList headings = sampleSheet().headings;
    QCOMPARE(headings.size(), 37);
    for (int column = 1; column <= headings.size(); ++column) {
        QCOMPARE(value(columnName(column) + u'2').toString(), headings.at(column - 1));
        QCOMPARE(type(columnName(column) + u'2'), QStringLiteral("s"));
    }
}

void TstWorkbook::numbersStandInTheirColumns()
{
    const QVector<int> numberColumns{1, 9, 10, 13, 14, 20, 21};
    for (int column = 1; column <= 38; ++column) {
        const QString name = columnName(column) + u'4'; // the module of address 1
        const bool isNumber = numberColumns.contains(column);
        QVERIFY2(type(name) == QLatin1String(isNumber ? "n" : "s"), qPrintable(name + type(name)));
    }
    QCOMPARE(value(QStringLiteral("A4")).toInt(-1), 1);
    QCOMPARE(value(QStringLiteral("A3")).toInt(-1), 0);
    // The controller's empty cells hold one blank, as text.
    QCOMPARE(type(QStringLiteral("M3")), QStringLiteral("s"));
    QCOMPARE(value(QStringLiteral("M3")).toString(), QStringLiteral(" "));
}

void TstWorkbook::functionCodesAreTextAndSensorIndicesNumbers()
{
    QCOMPARE(value(QStringLiteral("L4")), QJsonValue(QStringLiteral("1")));
    QCOMPARE(value(QStringLiteral("M4")), QJsonValue(0));
    QCOMPARE(value(QStringLiteral("T4")), QJsonValue(1));
    QCOMPARE(value(QStringLiteral("C4")), QJsonValue(QStringLiteral("700001")));
}

void TstWorkbook::unselectedModulesLeaveTheirRowEmpty()
{
    QVERIFY(value(QStringLiteral("A5")).isNull());
    QVERIFY(value(QStringLiteral("B5")).isNull());
    QCOMPARE(value(QStringLiteral("A6")).toInt(), 3);
}

void TstWorkbook::numbersStoredAsTextAreNoMistake()
{
    const QByteArray xml = partOf(m_bytes, "xl/worksheets/sheet1.xml");
    QVERIFY(xml.contains("<ignoredError sqref=\"A1:AN6\" numberStoredAsText=\"1\"/>"));
}

QTEST_GUILESS_MAIN(TstWorkbook)
#include "tst_workbook.moc"
