#include "reportrecords.h"
#include "reports/overviewhtml.h"
#include "support/messagecatcher.h"

#include <QRegularExpression>
#include <QtTest>

/// The overview of the system: its head and which rows it has. What stands in the rows of modules has tests
/// of its own.
class TstOverviewHtml : public QObject
{
    Q_OBJECT

private slots:
    void head();
    void headEscapesNames();
    void bitRate_data();
    void bitRate();
    void firstHeadingRow();
    void secondHeadingRow();

    void fixedRows();
    void emptyStoreShowsEmptyValues();
    void nothingChosenGivesATableWithoutRows();
    void rowsFollowTheAddresses();
    void moduleNotChosenIsSkipped();
    void powerModuleNotChosen();
    void powerModuleNotPresent();
    void powerModuleIsAskedForOnce();
    void mostModules_data();
    void mostModules();
};

namespace {

using reportrecords::allChosen;
using reportrecords::chosen;

const QString kTable = QStringLiteral(
    "<br><table border=\"1\" cellspacing=\"0\" style=\"font-family: arial narrow;font-size:8px;\">");

QString overview(const StatusStore &store, const ModuleFilter &isChosen = allChosen())
{
    return overviewHtml(store, isChosen, reportrecords::head(QStringLiteral("/home/u/report.pdf")));
}

/// The rows of the table, those of the heading too.
QStringList tableRows(const QString &html)
{
    const int begin = html.indexOf(kTable);
    const QString end = QStringLiteral("</table></body></html>");
    if (begin < 0 || !html.endsWith(end))
        return {QStringLiteral("no table: ") + html};
    const QString inside = html.mid(begin + kTable.size());
    QStringList rows = inside.left(inside.size() - end.size()).split(QStringLiteral("</tr>"));
    if (!rows.takeLast().isEmpty())
        return {QStringLiteral("text behind the rows: ") + html};
    for (QString &row : rows)
        row += QStringLiteral("</tr>");
    return rows;
}

QStringList bodyRows(const QString &html)
{
    return tableRows(html).mid(2);
}

/// Contents of the first cell of each row.
QStringList addresses(const QString &html)
{
    static const QRegularExpression firstCell(QStringLiteral("^<tr ?><td>([^<]*)</td>"));
    QStringList found;
    for (const QString &row : bodyRows(html))
        found.append(firstCell.match(row).captured(1));
    return found;
}

/// The cells of a heading row, each with its attributes in a row: "attributes|contents".
QStringList headingCells(const QString &row)
{
    static const QRegularExpression cell(QStringLiteral("<th ?([^>]*)>(.*?)</th>"));
    QStringList cells;
    auto matches = cell.globalMatch(row);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        cells.append(match.captured(1) + '|' + match.captured(2));
    }
    return cells;
}

} // namespace

void TstOverviewHtml::head()
{
    const QString expected = QStringLiteral(
        "<html><head><style>table, th, td { border: 1px solid red;border-color:#d1d1e0;border-width: thin;"
        "border-style: solid;  border-collapse: collapse;line-height:0.9;}th, td {padding: 2px;"
        "border-style: solid;border-width: thin;vertical-align: top;}</style></head>"
        "<body style=\"font-family:arial narrow;font-size:9px;vertical-align: top;\">"
        "&nbsp;report.pdf"
        "<br>&nbsp;Date:&nbsp;05/03/2026&nbsp; Time:&nbsp;09:08:07&nbsp; VXConfig Version:&nbsp;1.1.62"
        "&nbsp; OS Version:&nbsp;Test OS 5"
        "<br>&nbsp;Bitrate:&nbsp;5000kbit/s; &nbsp;&nbsp;&nbsp;Channels:&nbsp;16; &nbsp;&nbsp;&nbsp;"
        "Sampling Rate:&nbsp;1000 Hz;"
        "<br><table border=\"1\" cellspacing=\"0\" style=\"font-family: arial narrow;font-size:8px;\">"
        "<tr>");
    const QString html = overview(reportrecords::storeOf({}));
    QCOMPARE(html.left(expected.size()), expected);
}

void TstOverviewHtml::headEscapesNames()
{
    ReportHead head = reportrecords::head(QStringLiteral("/a/b''Prüf <1> & \"2\".pdf"));
    head.osVersion = QStringLiteral("<OS & co>");
    StatusStore store;
    store.systemStatus.samplingRate = QStringLiteral("<1  kHz>");
    store.systemStatus.bitRate = QStringLiteral("<5 & 6>(<7>)");
    const QString html = overviewHtml(store, allChosen(), head);
    const QString expected = QStringLiteral(
        "vertical-align: top;\">&nbsp;Prüf &lt;1&gt; &amp; &quot;2&quot;.pdf"
        "<br>&nbsp;Date:&nbsp;05/03/2026&nbsp; Time:&nbsp;09:08:07&nbsp; VXConfig Version:&nbsp;1.1.62"
        "&nbsp; OS Version:&nbsp;&lt;OS &amp; co&gt;"
        "<br>&nbsp;Bitrate:&nbsp;&lt;5&amp;6&gt;; &nbsp;&nbsp;&nbsp;Channels:&nbsp;&lt;7&gt;; "
        "&nbsp;&nbsp;&nbsp;"
        "Sampling Rate:&nbsp;&lt;1&nbsp; kHz&gt;;<br><table ");
    QVERIFY2(html.contains(expected), qPrintable(html));
}

void TstOverviewHtml::bitRate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("rate");
    QTest::addColumn<QString>("channels");
    QTest::newRow("parentheses") << "5000 (16)"
                                 << "5000"
                                 << "16";
    QTest::newRow("blanks in the rate") << " 5 000 kbit / s (16)"
                                        << "5000kbit/s"
                                        << "16";
    QTest::newRow("channels in parentheses") << "5000 (16ch)"
                                             << "5000"
                                             << "16";
    QTest::newRow("without parentheses") << "5000 kbit/s"
                                         << "5000kbit/s"
                                         << "";
    QTest::newRow("empty") << ""
                           << ""
                           << "";
    QTest::newRow("only blanks") << "   "
                                 << ""
                                 << "";
    QTest::newRow("ch") << "5000ch16"
                        << "5000"
                        << "16";
    QTest::newRow("ch with blanks") << "5000 ch 16"
                                    << "5000"
                                    << "&nbsp;16";
    QTest::newRow("ch at the end") << "16ch"
                                   << "16"
                                   << "";
    QTest::newRow("ch before the parentheses") << "Tech 5(1)"
                                               << "Te"
                                               << "&nbsp;5";
    QTest::newRow("large letters part nothing") << "5000 CH 16"
                                                << "5000CH16"
                                                << "";
    QTest::newRow("c and h alone part nothing") << "5c6h7"
                                                << "5c6h7"
                                                << "";
    QTest::newRow("blank behind the channels") << "5000 (16 ch)"
                                               << "5000"
                                               << "16&nbsp;";
    QTest::newRow("only parentheses") << "()"
                                      << ""
                                      << "";
    QTest::newRow("parenthesis in front") << "(16)"
                                          << ""
                                          << "16";
    QTest::newRow("not closed") << "5000 (16"
                                << "5000"
                                << "16";
    QTest::newRow("several parentheses") << "5000 (16) (8)"
                                         << "5000"
                                         << "16";
    QTest::newRow("backslash") << "5\\6"
                               << "5\\6"
                               << "";
}

void TstOverviewHtml::bitRate()
{
    QFETCH(QString, text);
    QFETCH(QString, rate);
    QFETCH(QString, channels);
    StatusStore store;
    store.systemStatus.bitRate = text;
    const QString line = QStringLiteral("<br>&nbsp;Bitrate:&nbsp;") + rate +
                         QStringLiteral("; &nbsp;&nbsp;&nbsp;Channels:&nbsp;") + channels +
                         QStringLiteral("; &nbsp;&nbsp;&nbsp;Sampling Rate:&nbsp;;<br><table ");
    const QString html = overview(store);
    QVERIFY2(html.contains(line), qPrintable(html));
}

void TstOverviewHtml::firstHeadingRow()
{
    QCOMPARE(
        headingCells(tableRows(overview(StatusStore())).value(0)),
        (QStringList{"width=\"24\"|Addr", "width=\"54\"|ModuleType", "width=\"48\"|Serial No.",
                     "colspan=\"2\"|Channel Function", "colspan=\"2\"|Sensor Type", "colspan=\"2\"|Range",
                     "colspan=\"2\"|Filter<span style=\"font-weight:normal\"> -3 dB cutoff [Hz]</span>",
                     "|HW", "|FW1", "|FW2"}));
}

void TstOverviewHtml::secondHeadingRow()
{
    QCOMPARE(headingCells(tableRows(overview(StatusStore())).value(1)),
             (QStringList{"|", "width=\"50\"|", "width=\"40\"|", "width=\"48\"|Channel A",
                          "width=\"48\"|Channel B", "width=\"50\"|Channel A", "width=\"50\"|Channel B",
                          "width=\"68\"|Channel A", "width=\"68\"|Channel B", "width=\"42\"|Channel A",
                          "width=\"42\"|Channel B", "width=\"30\"|", "width=\"38\"|", "width=\"38\"|"}));
}

void TstOverviewHtml::fixedRows()
{
    StatusStore store = reportrecords::storeOf({});
    reportrecords::addPower(store);
    const QStringList expected{"<tr><td>0</td><td>Controller</td><td>000001234</td>"
                               "<td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td>"
                               "<td>HW0</td><td>MAIN0</td><td>FPGA0</td></tr>",
                               "<tr><td>129</td><td>Power</td><td>000077129</td>"
                               "<td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td>"
                               "<td>HW129</td><td>MAIN129</td><td>FPGA129</td></tr>"};
    const MessageCatcher log;
    QCOMPARE(bodyRows(overview(store)), expected);
    QCOMPARE(bodyRows(overview(store, chosen({0}))), QStringList{expected.first()});
    QCOMPARE(bodyRows(overview(store, chosen({129}))), QStringList{expected.last()});
    QCOMPARE(log.lines(), QStringList());
}

void TstOverviewHtml::emptyStoreShowsEmptyValues()
{
    const MessageCatcher log;
    const QString html = overview(StatusStore());
    QCOMPARE(bodyRows(html),
             QStringList{"<tr><td>0</td><td>unknown0</td><td>000000000</td>"
                         "<td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td>"
                         "<td></td><td></td><td></td></tr>"});
    QVERIFY(html.contains(QStringLiteral("<br>&nbsp;Bitrate:&nbsp;; &nbsp;&nbsp;&nbsp;Channels:&nbsp;; "
                                         "&nbsp;&nbsp;&nbsp;Sampling Rate:&nbsp;;<br><table ")));
    QCOMPARE(log.lines(), QStringList());
}

void TstOverviewHtml::nothingChosenGivesATableWithoutRows()
{
    StatusStore store = reportrecords::chain();
    reportrecords::addPower(store);
    QCOMPARE(tableRows(overview(store, chosen({}))).size(), 2);
}

void TstOverviewHtml::rowsFollowTheAddresses()
{
    StatusStore store = reportrecords::chain();
    reportrecords::addPower(store);
    QCOMPARE(addresses(overview(store)),
             (QStringList{"0", "129", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
}

void TstOverviewHtml::moduleNotChosenIsSkipped()
{
    const StatusStore store = reportrecords::storeOf(
        {reportrecords::module(1, 1), reportrecords::module(2, 2), reportrecords::module(3, 3)});
    QCOMPARE(addresses(overview(store, chosen({0, 1, 3}))), (QStringList{"0", "1", "3"}));
    QCOMPARE(addresses(overview(store, chosen({2}))), QStringList{"2"});
    // Beyond the number of modules there are none, whatever was chosen.
    QCOMPARE(addresses(overview(store, chosen({3, 4, 128}))), QStringList{"3"});
}

void TstOverviewHtml::powerModuleNotChosen()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    store.systemStatus.sModules[5] = 120;
    const MessageCatcher log;
    QCOMPARE(addresses(overview(store, chosen({0, 1}))), (QStringList{"0", "1"}));
    QCOMPARE(log.lines(), QStringList());
}

void TstOverviewHtml::powerModuleNotPresent()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    store.setModule(reportrecords::power()); // has a serial number, but the system names none
    const MessageCatcher log;
    QCOMPARE(addresses(overview(store)), (QStringList{"0", "1"}));
    QCOMPARE(log.lines(), QStringList());
}

void TstOverviewHtml::powerModuleIsAskedForOnce()
{
    StatusStore store = reportrecords::chain();
    store.systemStatus.sModules[5] = 120;
    const MessageCatcher log;
    QCOMPARE(addresses(overview(store)).size(), 13);
    QCOMPARE(log.lines(), QStringList{QStringLiteral("Power Module Empty")});
}

void TstOverviewHtml::mostModules_data()
{
    QTest::addColumn<int>("claimed");
    QTest::newRow("all") << 128;
    QTest::newRow("claim of 200") << 200;
    QTest::newRow("claim of 65535") << 65535;
}

void TstOverviewHtml::mostModules()
{
    QFETCH(int, claimed);
    StatusStore store;
    store.setSystem(reportrecords::system(static_cast<quint16>(claimed)));
    store.setModule(reportrecords::module(128, 1));
    const QStringList rows = bodyRows(overview(store));
    QCOMPARE(rows.size(), 129);
    QVERIFY2(rows.at(1).startsWith(QStringLiteral("<tr ><td>1</td><td>unknown0</td><td>000000000</td>")),
             qPrintable(rows.at(1)));
    QVERIFY2(
        rows.last().startsWith(QStringLiteral("<tr ><td>128</td><td>Strain Gauge</td><td>000077128</td>")),
        qPrintable(rows.last()));
}

QTEST_GUILESS_MAIN(TstOverviewHtml)
#include "tst_overviewhtml.moc"
