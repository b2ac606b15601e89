#include "reports/pdfdocument.h"
#include "reports/reportfile.h"
#include "reports/reportsheet.h"
#include "reports/workbook.h"
#include "samplestore.h"
#include "sizelimit.h"
#include "support/droppedprivileges.h"

#include <QBuffer>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ReportSheet sheetOf(int rows)
{
    ReportSheet sheet{QStringLiteral("title"), {QStringLiteral("heading")}, {}};
    for (int row = 0; row < rows; ++row)
        sheet.rows.push_back({row + 3, QStringList{QStringLiteral("the same text"), QStringLiteral("x"),
                                                   QStringLiteral("y")}});
    return sheet;
}

/// Where programs put temporary files while it lives.
class TemporaryFolder
{
public:
    explicit TemporaryFolder(const QString &path)
        : m_before(qgetenv("TMPDIR"))
    {
        qputenv("TMPDIR", QFile::encodeName(path));
    }
    ~TemporaryFolder()
    {
        if (m_before.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", m_before);
    }

    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

private:
    QByteArray m_before;
};

} // namespace

/// Disks that are full, folders that are gone, devices that fail.
class TstReportFailures : public QObject
{
    Q_OBJECT

private slots:
    void fullDiskKeepsTheEarlierPdf_data();
    void fullDiskKeepsTheEarlierPdf();
    void pdfOnADeviceThatRefusesEverythingEnds();
    void pdfNeedsADeviceThatIsOpenForWriting();
    void fullDiskGivesNoWorkbook_data();
    void fullDiskGivesNoWorkbook();
    void missingTemporaryFolderGivesNoWorkbook();
    void nothingStaysInTheTemporaryFolder();
};

void TstReportFailures::fullDiskKeepsTheEarlierPdf_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("no byte more") << 0;
    QTest::newRow("within the first page") << 5000;
    QTest::newRow("within the fonts") << 40000;
}

void TstReportFailures::fullDiskKeepsTheEarlierPdf()
{
    QFETCH(int, bytes);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report.pdf"));
    const QString html = samplestore::overview(128);
    const auto write = [&html](QIODevice &device) {
        return writePdf(device, html, PdfFlow::PageByPage, QStringLiteral("title"));
    };
    QVERIFY(saveReport(path, write));
    const QByteArray earlier = contents(path);
    QVERIFY2(earlier.size() > 50000, qPrintable(QString::number(earlier.size())));
    const QString line = QStringLiteral("bool saveReport(QString) : Report not written to \"%1\" - \"%2\"");
    QTest::ignoreMessage(QtCriticalMsg, qPrintable(line.arg(path, QStringLiteral("File too large"))));
    bool isSaved = true;
    {
        const SizeLimit full(static_cast<rlim_t>(bytes));
        isSaved = saveReport(path, write);
    }
    QVERIFY(!isSaved);
    QCOMPARE(contents(path), earlier);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList(QStringLiteral("report.pdf")));
}

void TstReportFailures::pdfOnADeviceThatRefusesEverythingEnds()
{
    class Refusing : public QIODevice
    {
    public:
        int refused = 0;

    protected:
        qint64 readData(char *, qint64) override { return -1; }
        qint64 writeData(const char *, qint64) override
        {
            ++refused;
            return -1;
        }
    };
    for (const PdfFlow flow : {PdfFlow::OnePage, PdfFlow::PageByPage}) {
        Refusing device;
        QVERIFY(device.open(QIODevice::WriteOnly));
        QVERIFY(writePdf(device, samplestore::overview(128), flow, QStringLiteral("title")));
        QVERIFY(device.refused > 0); // it was tried
    }
}

void TstReportFailures::pdfNeedsADeviceThatIsOpenForWriting()
{
    QBuffer device;
    const auto write = [&device] {
        return writePdf(device, QStringLiteral("text"), PdfFlow::OnePage, QStringLiteral("title"));
    };
    QVERIFY(!write());
    QVERIFY(device.open(QIODevice::ReadOnly));
    QVERIFY(!write());
    device.close();
    QVERIFY(device.open(QIODevice::WriteOnly));
    QVERIFY(write());
    QVERIFY(device.data().startsWith("%PDF"));
}

void TstReportFailures::fullDiskGivesNoWorkbook_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("nothing fits") << 0;
    QTest::newRow("less than the smallest part") << 100;
    // The sheet itself has far more bytes than the archive in which it is packed.
    QTest::newRow("the archive fits, the sheet does not") << 60000;
}

void TstReportFailures::fullDiskGivesNoWorkbook()
{
    QFETCH(int, bytes);
    const ReportSheet sheet = sheetOf(2000);
    const QByteArray whole = workbook(sheet);
    QVERIFY2(whole.size() > 1000 && whole.size() < 60000, qPrintable(QString::number(whole.size())));
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral(" : No workbook - ")));
    QByteArray made;
    {
        const SizeLimit full(static_cast<rlim_t>(bytes));
        made = workbook(sheet);
    }
    QVERIFY(made.isEmpty());
    QVERIFY(!workbook(sheet).isEmpty());
}

void TstReportFailures::missingTemporaryFolderGivesNoWorkbook()
{
    const TemporaryFolder gone(QStringLiteral("/dev/null/folder"));
    const DroppedPrivileges user; // the superuser could write elsewhere
    QTest::ignoreMessage(QtCriticalMsg, "QByteArray workbook(ReportSheet) : No workbook - "
                                        "\"no folder for temporary files: Permission denied\"");
    QVERIFY(workbook(sheetOf(3)).isEmpty());
}

void TstReportFailures::nothingStaysInTheTemporaryFolder()
{
    const QTemporaryDir folder;
    const TemporaryFolder own(folder.path());
    QVERIFY(!workbook(sheetOf(3)).isEmpty());
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             QStringList());
}

QTEST_MAIN(TstReportFailures)
#include "tst_reportfailures.moc"
