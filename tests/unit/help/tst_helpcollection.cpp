#include "help/helpbrowser.h"
#include "help/helpengine.h"
#include "smallmanual.h"
#include "support/childbyname.h"
#include "support/droppedprivileges.h"
#include "support/messagecatcher.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QHelpEngine>
#include <QRandomGenerator>
#include <QThread>
#include <QTreeView>
#include <QtTest>
#include <algorithm>
#include <memory>

namespace {

constexpr QFile::Permissions kReadOnlyFolder = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                               QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
constexpr QFile::Permissions kReadOnlyFile = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool overwrite(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray randomBytes(int size)
{
    QRandomGenerator random(7);
    QByteArray bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random.bounded(256)); });
    return bytes;
}

QAbstractItemModel *contents(const HelpEngine &window)
{
    return childByName<QTreeView>(&window, "contentsView")->model();
}

QAbstractItemModel *index(const HelpEngine &window)
{
    return childByName<QAbstractItemView>(&window, "indexView")->model();
}

QString text(const HelpEngine &window)
{
    return childByName<HelpBrowser>(&window, "helpBrowser")->toPlainText();
}

/// True once everything of the small manual is there.
bool showsTheManual(const HelpEngine &window)
{
    return text(window).startsWith(QStringLiteral("The first page.")) && contents(window)->rowCount() == 1 &&
           index(window)->rowCount() == 2;
}

/// The lines of the log, but for the one that the test's platform writes for each window.
QStringList told(const MessageCatcher &log)
{
    QStringList lines = log.lines();
    lines.removeAll(QStringLiteral("This plugin does not support propagateSizeHints()"));
    return lines;
}

/// Number of threads of this program.
int threads()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

} // namespace

/// The window of the manual, and what becomes of the files that it reads.
class TstHelpCollection : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void standsBesideTheProgram();
    void isOpenedWithTheFirstShowOnly();
    void windowThatIsNeverShownOpensNothing();
    void missingCollectionLeavesEverythingEmpty_data();
    void missingCollectionLeavesEverythingEmpty();
    void browserAloneCreatesNoCollection();
    void brokenCollectionLeavesEverythingEmpty_data();
    void brokenCollectionLeavesEverythingEmpty();
    void damagedFilesDoNoHarm_data();
    void damagedFilesDoNoHarm();
    void missingPagesLeaveThePageBlank();
    void readOnlyFolderIsEnough();
    void movedFilesAreReadAndNotWritten();
    void severalWindowsReadAtOnce();
    void anotherProgramMayReadToo();
    void threadsEndWithTheWindow_data();
    void threadsEndWithTheWindow();
    void threadsEndBeforeWhatTheyRead();

private:
    std::unique_ptr<SmallManual> m_manual;
};

void TstHelpCollection::init()
{
    m_manual = std::make_unique<SmallManual>();
    QVERIFY(m_manual->build());
}

void TstHelpCollection::standsBesideTheProgram()
{
    QCOMPARE(helpCollectionFile("/opt/x"), QString("/opt/x/documentation/vxconfighelp.qhc"));
}

void TstHelpCollection::isOpenedWithTheFirstShowOnly()
{
    const QString collection = m_manual->collection();
    const QString elsewhere = collection + QStringLiteral(".away");
    QVERIFY(QFile::rename(collection, elsewhere));
    HelpEngine window(collection);
    QCoreApplication::processEvents();
    QVERIFY(QFile::rename(elsewhere, collection)); // soon enough
    QSignalSpy opened(window.findChild<QHelpEngine *>(), &QHelpEngine::setupFinished);
    window.show();
    QTRY_VERIFY(showsTheManual(window));
    QCOMPARE(opened.size(), 1);
    window.hide();
    window.show();
    QVERIFY(showsTheManual(window));
    QCOMPARE(opened.size(), 1);
}

void TstHelpCollection::windowThatIsNeverShownOpensNothing()
{
    HelpEngine window(m_manual->collection());
    window.resize(700, 500);
    QCoreApplication::processEvents();
    const auto open = QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo &file : open)
        QVERIFY(file.symLinkTarget() != m_manual->collection());
    QCOMPARE(contents(window)->rowCount(), 0);
    QCOMPARE(text(window), QString());
}

void TstHelpCollection::missingCollectionLeavesEverythingEmpty_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no file") << "/missing.qhc";
    QTest::newRow("no folder") << "/documentation/missing.qhc";
    QTest::newRow("a folder in its place") << "/folder";
}

void TstHelpCollection::missingCollectionLeavesEverythingEmpty()
{
    QFETCH(QString, path);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("folder"));
    const MessageCatcher log;
    {
        HelpEngine window(folder.path() + path);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTest::keyClick(&window, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(contents(window)->rowCount(), 0);
        QCOMPARE(index(window)->rowCount(), 0);
        QCOMPARE(text(window), QString());
        const auto topLevels = QApplication::topLevelWidgets();
        QCOMPARE(std::count_if(topLevels.begin(), topLevels.end(), [](QWidget *w) { return w->isVisible(); }),
                 1);
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("folder"));
    QVERIFY(QDir(folder.path() + "/folder").isEmpty());
    QCOMPARE(told(log), QStringList());
}

void TstHelpCollection::browserAloneCreatesNoCollection()
{
    const QTemporaryDir folder;
    QHelpEngine engine(folder.path() + "/missing.qhc");
    HelpBrowser browser(engine);
    const QUrl page(pageAddress("index.html"));
    QCOMPARE(browser.loadResource(QTextDocument::HtmlResource, page).toByteArray(), QByteArray());
    const MessageCatcher log;
    browser.setSource(page);
    QCOMPARE(told(log), QStringList());
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TstHelpCollection::brokenCollectionLeavesEverythingEmpty_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray(1, 'x');
    QTest::newRow("random bytes") << randomBytes(50000);
    QTest::newRow("random bytes behind a sound start")
        << QByteArray("SQLite format 3\0", 16) + randomBytes(50000);
}

void TstHelpCollection::brokenCollectionLeavesEverythingEmpty()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(overwrite(m_manual->collection(), bytes));
    const QStringList filesBefore = QDir(m_manual->folder.path()).entryList(QDir::Files);
    const MessageCatcher log;
    {
        HelpEngine window(m_manual->collection());
        window.show();
        QSignalSpy indexed(index(window), SIGNAL(indexCreated()));
        QVERIFY(indexed.wait()); // what there is to read was read
        QCOMPARE(contents(window)->rowCount(), 0);
        QCOMPARE(index(window)->rowCount(), 0);
        QCOMPARE(text(window), QString());
    }
    QCOMPARE(contentsOf(m_manual->collection()), bytes);
    QCOMPARE(QDir(m_manual->folder.path()).entryList(QDir::Files), filesBefore);
    QCOMPARE(told(log), QStringList());
}

void TstHelpCollection::damagedFilesDoNoHarm_data()
{
    QTest::addColumn<bool>("collection");
    QTest::newRow("collection") << true;
    QTest::newRow("pages") << false;
}

void TstHelpCollection::damagedFilesDoNoHarm()
{
    QFETCH(bool, collection);
    const QString path = collection ? m_manual->collection() : m_manual->documentation();
    const QByteArray whole = contentsOf(path);
    QRandomGenerator random(11);
    for (int round = 0; round < 20; ++round) {
        QByteArray damaged = whole;
        if (round % 2 == 0)
            damaged.truncate(random.bounded(whole.size()));
        for (int flip = 0; flip < 200 && !damaged.isEmpty(); ++flip)
            damaged[random.bounded(damaged.size())] = static_cast<char>(random.bounded(256));
        QVERIFY(overwrite(path, damaged));
        const MessageCatcher log; // a damaged table may be told of
        HelpEngine window(m_manual->collection());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(contentsOf(path), damaged);
    }
}

void TstHelpCollection::missingPagesLeaveThePageBlank()
{
    QVERIFY(QFile::remove(m_manual->documentation()));
    const MessageCatcher log;
    HelpEngine window(m_manual->collection());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(text(window), QString());
    QVERIFY(!QFile::exists(m_manual->documentation()));
    QCOMPARE(told(log), QStringList());
}

void TstHelpCollection::readOnlyFolderIsEnough()
{
    const QString folder = m_manual->folder.path();
    for (const QString &name : QDir(folder).entryList(QDir::Files))
        QVERIFY(QFile::setPermissions(folder + '/' + name, kReadOnlyFile));
    QVERIFY(QFile::setPermissions(folder, kReadOnlyFolder));
    const QStringList filesBefore = QDir(folder).entryList(QDir::Files);
    {
        const DroppedPrivileges user;
        QVERIFY(!QFile(folder + "/new").open(QIODevice::WriteOnly));
        const MessageCatcher log;
        HelpEngine window(m_manual->collection());
        window.show();
        QTRY_VERIFY(showsTheManual(window));
        QCOMPARE(told(log), QStringList());
    }
    QCOMPARE(QDir(folder).entryList(QDir::Files), filesBefore);
    QVERIFY(QFile::setPermissions(folder, DroppedPrivileges::kOpenFolder));
}

void TstHelpCollection::movedFilesAreReadAndNotWritten()
{
    const QTemporaryDir folder;
    const QString collection = folder.filePath("small.qhc");
    const QString documentation = folder.filePath("small.qch");
    QVERIFY(QFile::rename(m_manual->collection(), collection));
    QVERIFY(QFile::rename(m_manual->documentation(), documentation));
    QFile file(documentation);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime({2020, 1, 1}, {12, 0}), QFile::FileModificationTime));
    file.close();
    const QByteArray collectionBefore = contentsOf(collection);
    const QByteArray documentationBefore = contentsOf(documentation);
    {
        HelpEngine window(collection);
        window.show();
        QTRY_VERIFY(showsTheManual(window));
    }
    QCOMPARE(contentsOf(collection), collectionBefore);
    QCOMPARE(contentsOf(documentation), documentationBefore);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList({"small.qch", "small.qhc"}));
}

void TstHelpCollection::severalWindowsReadAtOnce()
{
    const MessageCatcher log;
    HelpEngine first(m_manual->collection());
    HelpEngine second(m_manual->collection());
    first.show();
    second.show();
    QTRY_VERIFY(showsTheManual(first));
    QTRY_VERIFY(showsTheManual(second));
    QCOMPARE(told(log), QStringList());
}

void TstHelpCollection::anotherProgramMayReadToo()
{
    QProcess other;
    other.start("python3", {"-c",
                            "import sqlite3, sys\n"
                            "data = sqlite3.connect(sys.argv[1], isolation_level=None)\n"
                            "data.execute('BEGIN')\n"
                            "data.execute('SELECT * FROM sqlite_master').fetchone()\n"
                            "print('reading', flush=True)\n"
                            "sys.stdin.read()\n",
                            m_manual->collection()});
    QVERIFY(other.waitForReadyRead());
    QCOMPARE(other.readAllStandardOutput().trimmed(), QByteArray("reading"));
    const MessageCatcher log;
    HelpEngine window(m_manual->collection());
    window.show();
    QTRY_VERIFY(showsTheManual(window));
    QCOMPARE(told(log), QStringList());
    QCOMPARE(other.state(), QProcess::Running);
    other.closeWriteChannel();
    QVERIFY(other.waitForFinished());
}

void TstHelpCollection::threadsEndWithTheWindow_data()
{
    QTest::addColumn<int>("turns");
    QTest::newRow("before they begin") << 0;
    QTest::newRow("while they read") << 1;
    QTest::newRow("a little later") << 3;
}

void TstHelpCollection::threadsEndWithTheWindow()
{
    QFETCH(int, turns);
    const int before = threads();
    for (int round = 0; round < 20; ++round) {
        HelpEngine window(m_manual->collection());
        window.show();
        for (int turn = 0; turn < turns; ++turn)
            QCoreApplication::processEvents();
    }
    QTRY_VERIFY(threads() <= before); // some, also of before, may still be on their way out
}

void TstHelpCollection::threadsEndBeforeWhatTheyRead()
{
    bool oneWasRunning = false;
    for (int round = 0; round < 10; ++round) {
        HelpEngine window(m_manual->collection());
        window.show();
        const QObject *reader = contents(window)->QObject::parent();
        const auto threads = reader->findChildren<QThread *>();
        QCOMPARE(threads.size(), 2);
        const auto began = [](const QThread *thread) { return thread->isRunning() || thread->isFinished(); };
        const QDeadlineTimer limit(std::chrono::seconds(5));
        while (!std::all_of(threads.begin(), threads.end(), began) && !limit.hasExpired())
            QCoreApplication::processEvents();
        connect(reader, &QObject::destroyed, this, [&oneWasRunning, threads] {
            for (const QThread *thread : threads)
                oneWasRunning = oneWasRunning || thread->isRunning();
        });
    }
    QVERIFY(!oneWasRunning);
}

QTEST_MAIN(TstHelpCollection)

#include "tst_helpcollection.moc"
