#include "reports/reportfile.h"
#include "support/messagecatcher.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

bool writeText(QIODevice &device)
{
    return device.write("the new report") == 14;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The log is to tell that this file was not written.
void expectTold(const QString &path, const char *reason)
{
    const QString line = QStringLiteral("bool saveReport(QString) : Report not written to \"%1\" - \"%2\"");
    const QString told = QRegularExpression::escape(line.arg(path, QLatin1String(reason)));
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QLatin1Char('^') + told + QLatin1Char('$')));
}

} // namespace

class TstReportFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void writesTheFile();
    void replacesAnEarlierFile();
    void earlierFileStaysIfTheReportFails();
    void earlierFileStaysWhileTheReportIsWritten();
    void missingFolderIsTold();
    void aFolderIsNoFile();
    void folderThatVanishesMeanwhileIsTold();
    void anEmptyPathIsTold();

private:
    QString m_path;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageCatcher> m_log;
};

void TstReportFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QString::fromUtf8("Übersicht 1.pdf"));
    m_log = std::make_unique<MessageCatcher>();
}

void TstReportFile::cleanup()
{
    m_log.reset();
}

void TstReportFile::writesTheFile()
{
    QVERIFY(saveReport(m_path, writeText));
    QCOMPARE(contents(m_path), QByteArray("the new report"));
    QVERIFY(m_log->lines().isEmpty());
}

void TstReportFile::replacesAnEarlierFile()
{
    QVERIFY(saveReport(m_path, [](QIODevice &device) { return device.write("an earlier report") > 0; }));
    QVERIFY(saveReport(m_path, writeText));
    QCOMPARE(contents(m_path), QByteArray("the new report"));
}

void TstReportFile::earlierFileStaysIfTheReportFails()
{
    QVERIFY(saveReport(m_path, writeText));
    expectTold(m_path, "it could not be made");
    QVERIFY(!saveReport(m_path, [](QIODevice &device) {
        device.write("half");
        return false;
    }));
    QCOMPARE(contents(m_path), QByteArray("the new report"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1); // nothing is left beside it
}

void TstReportFile::earlierFileStaysWhileTheReportIsWritten()
{
    QVERIFY(saveReport(m_path, writeText));
    QByteArray meanwhile;
    QVERIFY(saveReport(m_path, [&](QIODevice &device) {
        device.write(QByteArray(1 << 20, 'x'));
        meanwhile = contents(m_path);
        return true;
    }));
    QCOMPARE(meanwhile, QByteArray("the new report"));
    QCOMPARE(contents(m_path).size(), 1 << 20);
}

void TstReportFile::missingFolderIsTold()
{
    const QString path = m_folder->filePath(QStringLiteral("gone/report.pdf"));
    expectTold(path, "No such file or directory");
    bool isAsked = false;
    QVERIFY(!saveReport(path, [&isAsked](QIODevice &) { return isAsked = true; }));
    QVERIFY(!isAsked);
}

void TstReportFile::aFolderIsNoFile()
{
    expectTold(m_folder->path(), "Filename refers to a directory");
    QVERIFY(!saveReport(m_folder->path(), writeText));
    QVERIFY(QDir(m_folder->path()).exists());
}

void TstReportFile::folderThatVanishesMeanwhileIsTold()
{
    expectTold(m_path, "No such file or directory");
    QVERIFY(!saveReport(m_path, [this](QIODevice &device) {
        device.write("half");
        return QDir(m_folder->path()).removeRecursively();
    }));
    QVERIFY(!QFile::exists(m_path));
}

void TstReportFile::anEmptyPathIsTold()
{
    expectTold(QString(), "No such file or directory");
    QVERIFY(!saveReport(QString(), writeText));
}

QTEST_GUILESS_MAIN(TstReportFile)
#include "tst_reportfile.moc"
