#include "reports/textviewer.h"
#include "support/messagecatcher.h"

#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Writes down with how many arguments it was started and the first of them, and ends with its input.
constexpr char kEditor[] = "#!/bin/sh\n"
                           "printf '%s\\n%s\\n' \"$#\" \"$1\" > \"${0%/*}/started\"\n"
                           "read -r line\n";

/// Where programs are looked for while it lives: nowhere but in this folder.
class ProgramFolder
{
public:
    explicit ProgramFolder(const QString &path)
        : m_before(qgetenv("PATH"))
    {
        qputenv("PATH", QFile::encodeName(path));
    }
    ~ProgramFolder() { qputenv("PATH", m_before); }

    ProgramFolder(const ProgramFolder &) = delete;
    ProgramFolder &operator=(const ProgramFolder &) = delete;

private:
    QByteArray m_before;
};

QProcess *editorOf(const QObject &owner)
{
    return owner.findChild<QProcess *>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

/// The viewer of Windows, with a program of the test in the place of its editor.
class TstTextViewerWin : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void thePathIsOneArgument_data();
    void thePathIsOneArgument();
    void theEditorIsNotWaitedFor();
    void theProcessGoesWithItsEditor();
    void theProcessGoesWithItsOwner();
    void aMissingEditorIsTold();

private:
    void installEditor();
    QString started() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TstTextViewerWin::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TstTextViewerWin::installEditor()
{
    QFile editor(m_folder->filePath(QStringLiteral("notepad.exe")));
    QVERIFY(editor.open(QIODevice::WriteOnly));
    editor.write(kEditor);
    editor.close();
    QVERIFY(editor.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

/// What the editor wrote down; empty as long as it did not.
QString TstTextViewerWin::started() const
{
    QFile file(m_folder->filePath(QStringLiteral("started")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void TstTextViewerWin::thePathIsOneArgument_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "/home/user/Desktop/temp.txt";
    QTest::newRow("blanks") << "/home/my  user/The Desktop /temp.txt";
    QTest::newRow("quotes") << "/home/\"my\" 'user'/temp.txt";
    QTest::newRow("umlaut") << QString::fromUtf8("/home/Jürgen/temp.txt");
    QTest::newRow("signs of a shell") << "/home/$HOME/*;&%PATH%/temp.txt";
}

void TstTextViewerWin::thePathIsOneArgument()
{
    QFETCH(QString, path);
    installEditor();
    const ProgramFolder programs(m_folder->path());
    QObject owner;
    showTextFile(path, &owner);
    QTRY_COMPARE(started(), QStringLiteral("1\n%1\n").arg(path));
    editorOf(owner)->closeWriteChannel();
    QTRY_VERIFY(!editorOf(owner));
}

void TstTextViewerWin::theEditorIsNotWaitedFor()
{
    installEditor();
    const ProgramFolder programs(m_folder->path());
    QObject owner;
    showTextFile(QStringLiteral("temp.txt"), &owner);
    QPointer<QProcess> editor(editorOf(owner));
    QVERIFY(editor);
    QVERIFY(editor->state() != QProcess::NotRunning); // it runs until its input ends
    QCOMPARE(editor->openMode() & QIODevice::ReadWrite, QIODevice::OpenMode(QIODevice::ReadWrite));
    editor->closeWriteChannel();
    QTRY_VERIFY(!editor);
}

void TstTextViewerWin::theProcessGoesWithItsEditor()
{
    installEditor();
    const ProgramFolder programs(m_folder->path());
    QObject owner;
    showTextFile(QStringLiteral("temp.txt"), &owner);
    QTRY_VERIFY(!started().isEmpty());
    QPointer<QProcess> editor(editorOf(owner));
    QVERIFY(editor);
    const MessageCatcher log;
    editor->kill(); // the same to the viewer as an editor that is closed, but with an error
    QTRY_VERIFY(!editor);
    QCOMPARE(log.lines(QtCriticalMsg), QStringList());
}

void TstTextViewerWin::theProcessGoesWithItsOwner()
{
    installEditor();
    const ProgramFolder programs(m_folder->path());
    auto owner = std::make_unique<QObject>();
    showTextFile(QStringLiteral("temp.txt"), owner.get());
    const QPointer<QProcess> editor(editorOf(*owner));
    QVERIFY(editor);
    const MessageCatcher log;
    // An editor that still runs is ended.
    QTest::ignoreMessage(QtWarningMsg,
                         "QProcess: Destroyed while process (\"notepad.exe\") is still running.");
    owner.reset();
    QVERIFY(!editor);
    QCOMPARE(log.lines(QtCriticalMsg), QStringList());
}

void TstTextViewerWin::aMissingEditorIsTold()
{
    const ProgramFolder programs(m_folder->path());
    QObject owner;
    const MessageCatcher log;
    QTest::ignoreMessage(QtCriticalMsg,
                         QRegularExpression(QStringLiteral(" : No editor for \"/home/user/temp[.]txt\" - ")));
    showTextFile(QStringLiteral("/home/user/temp.txt"), &owner);
    QTRY_COMPARE(log.lines(QtCriticalMsg).size(), 1);
    QTRY_VERIFY(!editorOf(owner));
}

QTEST_GUILESS_MAIN(TstTextViewerWin)
#include "tst_textviewer_win.moc"
