#include "support/messagecatcher.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>
#include <QtTest>
#include <memory>

class TstMessageCatcher : public QObject
{
    Q_OBJECT

private slots:
    void linesAreKeptInOrder();
    void linesAreToldByTheirType();
    void nothingIsKeptAfterClearing();
    void linesOfSeveralThreadsAreKept();
    void whatFailsATestIsWrittenAllTheSame();
};

void TstMessageCatcher::linesAreKeptInOrder()
{
    const MessageCatcher log;
    QTest::ignoreMessage(QtWarningMsg, "two");
    qDebug("one");
    qWarning("two");
    QCOMPARE(log.lines(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    QVERIFY(log.contains(QStringLiteral("one")));
    QVERIFY(!log.contains(QStringLiteral("on")));
    QVERIFY(log.containsText(QStringLiteral("on")));
}

void TstMessageCatcher::linesAreToldByTheirType()
{
    const MessageCatcher log;
    const QString line = QStringLiteral("the same text");
    QTest::ignoreMessage(QtCriticalMsg, "the same text");
    qDebug() << "a debug line";
    qCritical().noquote() << line;
    QCOMPARE(log.lines(QtCriticalMsg), QStringList{line});
    QVERIFY(log.contains(QtCriticalMsg, line));
    QVERIFY(!log.contains(QtWarningMsg, line));
    QVERIFY(log.lines(QtInfoMsg).isEmpty());
}

void TstMessageCatcher::nothingIsKeptAfterClearing()
{
    MessageCatcher log;
    qDebug("one");
    log.clear();
    QVERIFY(log.lines().isEmpty());
}

void TstMessageCatcher::linesOfSeveralThreadsAreKept()
{
    constexpr int kThreads = 4;
    constexpr int kLines = 500;
    const MessageCatcher log;
    std::vector<std::unique_ptr<QThread>> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back(QThread::create([] {
            for (int line = 0; line < kLines; ++line)
                qDebug("line");
        }));
        threads.back()->start();
    }
    for (const auto &thread : threads)
        QVERIFY(thread->wait(20000));
    QCOMPARE(log.lines().size(), kThreads * kLines);
}

void TstMessageCatcher::whatFailsATestIsWrittenAllTheSame()
{
    QProcess program;
    program.start(QCoreApplication::applicationDirPath() + QStringLiteral("/caughtlines"), QStringList());
    QVERIFY(program.waitForFinished(20000));
    QCOMPARE(program.exitStatus(), QProcess::CrashExit);
    const QByteArrayList written = program.readAllStandardError().split('\n');
    QCOMPARE(written.mid(0, 3), (QByteArrayList{"a warning", "a critical line", "this cannot go on"}));
}

QTEST_GUILESS_MAIN(TstMessageCatcher)
#include "tst_messagecatcher.moc"
