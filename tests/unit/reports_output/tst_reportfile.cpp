#include "reports/reportfile.h"
#include "support/messagecatcher.h"

#include <QDir>
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
    QVERIFY(!saveReport(m_path, [](QIODevice &device) {
        device.write("half");
        return false;
    }));
    QCOMPARE(contents(m_path), QByteArray("the new report"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1); // nothing is left beside it
    QCOMPARE(m_log->lines(QtCriticalMsg).size(), 1);
    QVERIFY(m_log->containsText(m_path));
    QVERIFY(m_log->containsText(QStringLiteral("it could not be made")));
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
    bool isAsked = false;
    QVERIFY(!saveReport(path, [&isAsked](QIODevice &) { return isAsked = true; }));
    QVERIFY(!isAsked);
    QVERIFY(m_log->containsText(path));
    QVERIFY(m_log->containsText(QStringLiteral("No such file or directory")));
}

void TstReportFile::aFolderIsNoFile()
{
    QVERIFY(!saveReport(m_folder->path(), writeText));
    QVERIFY(m_log->containsText(m_folder->path()));
    QVERIFY(QDir(m_folder->path()).exists());
}

void TstReportFile::folderThatVanishesMeanwhileIsTold()
{
    QVERIFY(!saveReport(m_path, [this](QIODevice &device) {
        device.write("half");
        return QDir(m_folder->path()).removeRecursively();
    }));
    QVERIFY(m_log->containsText(m_path));
    QVERIFY(!QFile::exists(m_path));
}

void TstReportFile::anEmptyPathIsTold()
{
    QVERIFY(!saveReport(QString(), writeText));
    QCOMPARE(m_log->lines(QtCriticalMsg).size(), 1);
}

QTEST_GUILESS_MAIN(TstReportFile)
#include "tst_reportfile.moc"
