#include "firmware/versionfiles.h"

#include <QtTest>
#include <random>

using versionfiles::configuratorLine;
using versionfiles::configuratorVersion;
using versionfiles::firmwareEntries;
using versionfiles::FirmwareEntry;

namespace {

constexpr int kMegabyte = 1 << 20;

/// "line|version|flag" of each entry.
QStringList texts(const QVector<FirmwareEntry> &entries)
{
    QStringList result;
    for (const FirmwareEntry &entry : entries)
        result += entry.line + '|' + entry.version + '|' + QString::number(entry.flag);
    return result;
}

const QByteArray kNote("14.03.24  1.2.3  *note");
const QString kNoteEntry = QStringLiteral("14.03.24  1.2.3  *note|1.2.3|1");
const QByteArray kText("02.02.24  1.2.2  text");
const QString kTextEntry = QStringLiteral("02.02.24  1.2.2  text|1.2.2|0");

} // namespace

class TstVersionFiles : public QObject
{
    Q_OBJECT

private slots:
    void lineThatNamesTheProduct_data();
    void lineThatNamesTheProduct();
    void lineOfLargeContents();
    void versionIsCutAndFreedOfLineFeeds_data();
    void versionIsCutAndFreedOfLineFeeds();
    void contentsToVersion_data();
    void contentsToVersion();
    void entriesStandInTheOrderOfTheFile_data();
    void entriesStandInTheOrderOfTheFile();
    void partsStandBetweenTwoBlanks_data();
    void partsStandBetweenTwoBlanks();
    void dateMustFitTheFormat_data();
    void dateMustFitTheFormat();
    void onlyTenLinesAreRead_data();
    void onlyTenLinesAreRead();
    void entriesOfLargeContents();
};

void TstVersionFiles::lineThatNamesTheProduct_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *name, const QByteArray &contents, const QString &line) {
        QTest::newRow(name) << contents << line;
    };
    row("LF", "vxconfig v1.1.63\n", "vxconfig v1.1.63\n");
    row("CR", "vxconfig v1.1.63\r", "vxconfig v1.1.63\r");
    row("CRLF: ends at the CR", "vxconfig v1.1.63\r\n", "vxconfig v1.1.63\r");
    row("no line end", "vxconfig v1.1.63", "vxconfig v1.1.63");
    row("behind others, LF", "a\nb\nvxconfig v2\nc\n", "vxconfig v2\n");
    row("behind others, CR", "a\rb\rvxconfig v2\rc\r", "vxconfig v2\r");
    row("behind others, CRLF: no LF in front", "a\r\nb\r\nvxconfig v2\r\n", "vxconfig v2\r");
    row("behind others, no line end", "a\nvxconfig v2", "vxconfig v2");
    row("behind empty lines", "\n\n\r\r\nvxconfig v2\n", "vxconfig v2\n");
    row("first of two", "vxconfig v1\nvxconfig v2\n", "vxconfig v1\n");
    row("first counts, though it has no version", "vxconfig\nvxconfig v2\n", "vxconfig\n");
    row("within a word", "myvxconfigtool\nvxconfig v2\n", "myvxconfigtool\n");
    row("not joined over a line end", "vxcon\nfig v1\nrest", "rest");
    row("none: what stands behind the last end", "a\nb\nlast", "last");
    row("none, ended by LF", "a\nb\n", "");
    row("none, ended by CR", "a\rb\r", "");
    row("other case: none", "VXConfig v1.2\nVXCONFIG", "VXCONFIG");
    row("empty", "", "");
    row("LF alone", "\n", "");
    row("CR alone", "\r", "");
    row("UTF-8",
        "Gr\xc3\xb6\xc3\x9f"
        "e vxconfig v1\n",
        QStringLiteral("Größe vxconfig v1\n"));
    row("NUL in front", QByteArray("a\0b vxconfig v1\n", 16),
        QStringLiteral("a") + QChar(0) + "b vxconfig v1\n");
    row("NUL in lines before", QByteArray("a\0b\nvxconfig v1\n", 16), "vxconfig v1\n");
}

void TstVersionFiles::lineThatNamesTheProduct()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, line);
    QCOMPARE(configuratorLine(contents), line);
}

void TstVersionFiles::lineOfLargeContents()
{
    const QString product = QStringLiteral("vxconfig v2\n");
    QCOMPARE(configuratorLine(QByteArray(kMegabyte, '\n') + "vxconfig v2\n"), product);
    QCOMPARE(configuratorLine(QByteArray(kMegabyte, '\r') + "vxconfig v2\n"), product);
    QCOMPARE(configuratorLine(QByteArray("\r\n").repeated(kMegabyte)), QString());
    QCOMPARE(configuratorLine(QByteArray(2 * kMegabyte, 'a')).size(), 2 * kMegabyte);
    QCOMPARE(configuratorLine(QByteArray(2 * kMegabyte, 'a') + "\nvxconfig v2\n"), product);
    QCOMPARE(configuratorLine(QByteArray(2 * kMegabyte, '\0') + "\nvxconfig v2\n"), product);
    QCOMPARE(configuratorLine(QByteArray(kMegabyte, '\xFF') + "\nvxconfig v2\n"), product);
    QCOMPARE(configuratorLine(QByteArray("vxconfi").repeated(kMegabyte / 4) + "\nvxconfig v2\n"), product);

    std::mt19937 random(3);
    QByteArray noise(kMegabyte, Qt::Uninitialized);
    for (char &byte : noise)
        byte = char(random());
    QCOMPARE(configuratorLine(noise + "\nvxconfig v2\n"), product);
}

void TstVersionFiles::versionIsCutAndFreedOfLineFeeds_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("version");
    const auto row = [](const char *name, const QString &line, const QString &version) {
        QTest::newRow(name) << line << true << version;
    };
    const auto none = [](const char *name, const QString &line) {
        QTest::newRow(name) << line << false << QString();
    };
    row("at the beginning: whole", "vxconfig v1.1.63", "vxconfig v1.1.63");
    row("LF is removed", "vxconfig v1.1.63\n", "vxconfig v1.1.63");
    row("CR is kept", "vxconfig v1.1.63\r", "vxconfig v1.1.63\r");
    row("each LF is removed", "vxconfig v1\n2\n\n3", "vxconfig v123");
    row("one in front cuts the LF", " vxconfig v1.1.63\n", " vxconfig v1.1.63");
    row("one in front cuts the CR", " vxconfig v1.1.63\r", " vxconfig v1.1.63");
    row("one in front cuts a digit", " vxconfig v1.1.63", " vxconfig v1.1.6");
    row("three in front, LF counts", "ab vxconfig v2.0\n", "ab vxconfig v2");
    row("more in front than behind", "0123456789abcdef vxconfig v1", "0123456789a");
    row("nothing behind", "vxconfig v", "vxconfig v");
    row("nothing behind, all but the beginning cut", "0123456789vxconfig v", "0123456789");
    row("twice: the first counts", "a vxconfig v1 vxconfig v2", "a vxconfig v1 vxconfig ");
    row("overlapping: the first counts", "vxconfig vxconfig v1", "vxconfig vxconfig v1");
    row("letters, not bytes, are counted", QStringLiteral("Größe vxconfig v1.1.63\n"),
        QStringLiteral("Größe vxconfig v1"));
    row("any word with v", "vxconfig vanished", "vxconfig vanished");
    none("empty", "");
    none("LF alone", "\n");
    none("product alone", "vxconfig\n");
    none("no blank", "vxconfigv1.2");
    none("two blanks", "vxconfig  v1.2");
    none("tabulator", "vxconfig\tv1.2");
    none("upper case V", "vxconfig V1.2");
    none("other case", "VXConfig v1.2");
    none("other product", "vxconfi v1.2");
}

void TstVersionFiles::versionIsCutAndFreedOfLineFeeds()
{
    QFETCH(QString, line);
    QFETCH(bool, found);
    QFETCH(QString, version);
    const std::optional<QString> result = configuratorVersion(line);
    QCOMPARE(result.has_value(), found);
    QCOMPARE(result.value_or(QString()), version);
}

void TstVersionFiles::contentsToVersion_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("version");
    const auto row = [](const char *name, const QByteArray &contents, bool found, const QString &version) {
        QTest::newRow(name) << contents << found << version;
    };
    row("LF", "vxconfig v1.1.63\nother\n", true, "vxconfig v1.1.63");
    row("CRLF keeps the CR", "vxconfig v1.1.63\r\n", true, "vxconfig v1.1.63\r");
    row("last line without end", "news\nvxconfig v1.1", true, "vxconfig v1.1");
    row("product without version goes first", "about vxconfig\nvxconfig v1.1\n", false, "");
    row("not there", "404 not found\n", false, "");
    row("empty", "", false, "");
}

void TstVersionFiles::contentsToVersion()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, found);
    QFETCH(QString, version);
    const std::optional<QString> result = configuratorVersion(configuratorLine(contents));
    QCOMPARE(result.has_value(), found);
    QCOMPARE(result.value_or(QString()), version);
}

void TstVersionFiles::entriesStandInTheOrderOfTheFile_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QStringList>("entries");
    const auto row = [](const char *name, const QByteArray &contents, const QStringList &entries) {
        QTest::newRow(name) << contents << entries;
    };
    const QStringList both{kNoteEntry, kTextEntry};
    row("LF", kNote + '\n' + kText + '\n', both);
    row("CRLF", kNote + "\r\n" + kText + "\r\n", both);
    row("last line without end", kNote + '\n' + kText, both);
    row("older first", kText + '\n' + kNote, {kTextEntry, kNoteEntry});
    row("equal lines", kNote + '\n' + kNote, {kNoteEntry, kNoteEntry});
    row("others between", "Firmware\n" + kNote + "\n\nx  y  z\n" + kText, both);
    row("UTF-8",
        "14.03.24  1.2.3  *Gr\xc3\xb6\xc3\x9f"
        "e",
        {QStringLiteral("14.03.24  1.2.3  *Größe|1.2.3|1")});
    row("bytes that are no UTF-8 in front", "\xff\xfe\x80  \xc3\n" + kNote, {kNoteEntry});
    row("NUL in lines before", QByteArray("a\0b  c  d\n", 10) + kNote, {kNoteEntry});
    row("NUL in the third part", kNote + '\0' + "x\n" + kText,
        {QStringLiteral("14.03.24  1.2.3  *note") + QChar(0) + "x|1.2.3|1", kTextEntry});
    row("empty", "", {});
    row("LF alone", "\n", {});
    row("CR alone", "\r", {});
}

void TstVersionFiles::entriesStandInTheOrderOfTheFile()
{
    QFETCH(QByteArray, contents);
    QFETCH(QStringList, entries);
    QCOMPARE(texts(firmwareEntries(contents)), entries);
}

void TstVersionFiles::partsStandBetweenTwoBlanks_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("version"); // "-" for no entry
    QTest::addColumn<int>("flag");
    const auto row = [](const char *line, const char *version, int flag = 0) {
        QTest::addRow("\"%s\"", line) << line << version << flag;
    };
    row("14.03.24  1.2.3  *", "1.2.3", 1);
    row("14.03.24  1.2.3  **note", "1.2.3", 1);
    row("14.03.24  1.2.3  text*", "1.2.3");
    row("14.03.24  1.2.3  ", "1.2.3");
    row("14.03.24  1.2.3   *note", "1.2.3");  // the third part begins with a blank
    row("14.03.24  1.2.3    *note", "1.2.3"); // the third part is empty
    row("14.03.24  1.2.3  text  *note", "1.2.3");
    row("14.03.24  1.2.3  *note  a  b  c", "1.2.3", 1);
    row("14.03.24  *1.2.3  text", "*1.2.3");
    row("14.03.24   1.2.3  *note", " 1.2.3", 1); // the odd blank belongs to the part behind
    row("14.03.24    *note", "", 1);
    row("14.03.24    ", "");
    row("14.03.24  a version of many words  *note", "a version of many words", 1);
    row("14.03.24  1.2.3", "-");
    row("14.03.24  1.2.3 *note", "-");
    row("14.03.24 1.2.3 *note", "-");
    row("14.03.24 1.2.3  x  *note", "-"); // the first part is no date
    row("  14.03.24  1.2.3  *note", "-"); // the first part is empty
    row(" 14.03.24x  1.2.3  *note", "-");
    row("14.03.24\t\t1.2.3\t\t*note", "-");
    row("14.03.24", "-");
    row("  ", "-");
    row("    ", "-");
}

void TstVersionFiles::partsStandBetweenTwoBlanks()
{
    QFETCH(QString, line);
    QFETCH(QString, version);
    QFETCH(int, flag);
    QStringList expected;
    if (version != "-")
        expected += line + '|' + version + '|' + QString::number(flag);
    QCOMPARE(texts(firmwareEntries(line.toUtf8() + '\n')), expected);
}

void TstVersionFiles::dateMustFitTheFormat_data()
{
    QTest::addColumn<QByteArray>("date");
    QTest::addColumn<bool>("valid");
    const auto row = [](const char *date, bool valid) {
        QTest::addRow("\"%s\"", date) << QByteArray(date) << valid;
    };
    row("14.03.24", true);
    row("01.01.00", true);
    row("31.12.99", true);
    row("29.02.24", true);
    row("30.04.24", true);
    row("29.02.23", false);
    row("31.02.24", false);
    row("31.04.24", false);
    row("00.03.24", false);
    row("32.03.24", false);
    row("14.00.24", false);
    row("14.13.24", false);
    row("03.14.24", false);
    row("14-03-24", false);
    row("14/03/24", false);
    row("1.03.24", false);
    row("14.3.24", false);
    row("14.03.4", false);
    row("14.03", false);
    row("14.03.", false);
    row("14.03.2024", false);
    row("2024.03.14", false);
    row("140324", false);
    row("dd.MM.yy", false);
    row("14.Mar.24", false);
    row("Date", false);
    row("", false);
    row("-1.03.24", false);
    row("\xd9\xa1\xd9\xa4.03.24", false); // Arabic digits
}

void TstVersionFiles::dateMustFitTheFormat()
{
    QFETCH(QByteArray, date);
    QFETCH(bool, valid);
    QCOMPARE(firmwareEntries(date + "  1.2.3  *x\n").size(), valid ? 1 : 0);
}

void TstVersionFiles::onlyTenLinesAreRead_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<int>("entries");
    const auto row = [](const char *name, const QByteArray &contents, int entries) {
        QTest::newRow(name) << contents << entries;
    };
    const QByteArray line = kNote + '\n';
    const QByteArray other("other\n");
    row("nine", line.repeated(9), 9);
    row("ten", line.repeated(10), 10);
    row("ten, the last without end", line.repeated(9) + kNote, 10);
    row("eleven", line.repeated(11), 10);
    row("twenty with CRLF", (kNote + "\r\n").repeated(20), 10);
    row("skipped lines count, tenth", other.repeated(9) + line, 1);
    row("skipped lines count, eleventh", other.repeated(10) + line, 0);
    row("empty lines count, tenth", QByteArray("\n").repeated(9) + line, 1);
    row("empty lines count, eleventh", QByteArray("\n").repeated(10) + line, 0);
    row("lines without a date count", QByteArray("31.02.24  1.2.3  *x\n").repeated(8) + line.repeated(5), 2);
    row("a CR alone ends no line", (kNote + '\r').repeated(20) + '\n' + line, 2);
}

void TstVersionFiles::onlyTenLinesAreRead()
{
    QFETCH(QByteArray, contents);
    QFETCH(int, entries);
    QCOMPARE(firmwareEntries(contents).size(), entries);
}

void TstVersionFiles::entriesOfLargeContents()
{
    const QByteArray line = kNote + '\n';
    QCOMPARE(firmwareEntries(line.repeated(100000)).size(), 10);
    QCOMPARE(firmwareEntries(QByteArray(kMegabyte, '\n') + line).size(), 0);
    QCOMPARE(texts(firmwareEntries(QByteArray(kMegabyte, 'a') + '\n' + line)), QStringList{kNoteEntry});
    QCOMPARE(texts(firmwareEntries(QByteArray(kMegabyte, '\0') + '\n' + line)), QStringList{kNoteEntry});
    QCOMPARE(texts(firmwareEntries(QByteArray(kMegabyte, '\xFF') + '\n' + line)), QStringList{kNoteEntry});
    QCOMPARE(texts(firmwareEntries(QByteArray(kMegabyte, ' ') + '\n' + line)), QStringList{kNoteEntry});

    const QVector<FirmwareEntry> entries = firmwareEntries(kNote + QByteArray(kMegabyte, '*') + '\n' + line);
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries.first().line.size(), kNote.size() + kMegabyte);
    QCOMPARE(entries.first().version, QString("1.2.3"));
}

QTEST_GUILESS_MAIN(TstVersionFiles)
#include "tst_versionfiles.moc"
