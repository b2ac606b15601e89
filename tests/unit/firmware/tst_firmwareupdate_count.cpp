#include "firmwarewindow.h"

/// What the progress counts: replies to others too, and commands that were dropped.
class TstFirmwareUpdateCount : public QObject
{
    Q_OBJECT

private slots:
    void updateIsNotCompleteWhileCommandsWait();
    void firstReplyAfterTheLastCommandCompletes();
    void abortedCommandsBeforeTheUpdateAreCountedToo();
    void replyAfterTheLastCommandCompletesOnlyAtTheEnd();

    void droppedCommandsStopTheCounting_data();
    void droppedCommandsStopTheCounting();
    void droppedCommandsWithoutAnUpdate();
    void stalledUpdateCanOnlyBeAborted();
    void looksFromTheStallToTheNextCompletion();
};

namespace {

constexpr int kCommands = 8; // of 1000 bytes: start, one page, four blocks, stop, reset
constexpr int kMaximum = 7;  // of the bar

const QStringList kAbort{"abort", "1 2 1 0 | 0 0", "1 2 1 43 | 0 0"};

/// A session that sends a command after each reply.
struct Queue
{
    explicit Queue(FirmwareWindow &window)
        : w(window)
    {
        w.window.setCommandsWaiting([this] { return sent < w.commands.size(); });
    }

    /// The reply to what was sent last comes, and the next command leaves.
    void answer(int replies = 1)
    {
        for (int i = 0; i < replies; ++i) {
            w.answer();
            sent = std::min(sent + 1, w.commands.size());
        }
    }

    FirmwareWindow &w;
    int sent = 0;
};

} // namespace

void TstFirmwareUpdateCount::updateIsNotCompleteWhileCommandsWait()
{
    FirmwareWindow w;
    bool commandsWait = true;
    w.window.setCommandsWaiting([&commandsWait] { return commandsWait; });
    w.flashImage(1000);
    w.answer(3);
    QCOMPARE(w.bar()->value(), 2);
    w.answer(100);
    QCOMPARE(w.bar()->value(), kMaximum - 1);
    QVERIFY(w.isRunning());
    QVERIFY(!w.messages().contains(QStringLiteral("Done")));
    commandsWait = false;
    w.answer();
    QVERIFY(w.isIdle());
    QCOMPARE(w.status()->text(), QStringLiteral("FPGA flashing complete..."));
}

void TstFirmwareUpdateCount::firstReplyAfterTheLastCommandCompletes()
{
    FirmwareWindow w;
    Queue queue(w);
    w.flashImage(1000);
    queue.answer(kCommands); // the first of them to a poll that was out at the start
    QCOMPARE(queue.sent, kCommands);
    QVERIFY(w.isRunning());
    QCOMPARE(w.bar()->value(), kMaximum - 1);
    queue.answer(); // to the last command
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdateCount::abortedCommandsBeforeTheUpdateAreCountedToo()
{
    FirmwareWindow w;
    Queue queue(w);
    w.flashImage(1000);
    queue.answer(3);
    w.abort();
    queue.sent = kCommands; // the rest was dropped, and stop and reset wait
    w.clickFlash();
    QCOMPARE(w.commands.size(), kCommands + 2 + kCommands);
    queue.answer(2 + kCommands);
    QVERIFY(w.isRunning());
    QCOMPARE(w.bar()->value(), kMaximum - 1);
    queue.answer();
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdateCount::replyAfterTheLastCommandCompletesOnlyAtTheEnd()
{
    FirmwareWindow w;
    w.window.setCommandsWaiting([] { return false; });
    w.flashImage(1000);
    w.answer(kCommands - 1);
    QVERIFY(w.isRunning());
    w.answer();
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdateCount::droppedCommandsStopTheCounting_data()
{
    QTest::addColumn<int>("replies");
    QTest::newRow("none") << 0;
    QTest::newRow("some") << 3;
    QTest::newRow("all but two") << kCommands - 2;
    QTest::newRow("all but the last") << kCommands - 1;
}

void TstFirmwareUpdateCount::droppedCommandsStopTheCounting()
{
    QFETCH(int, replies);
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(replies);
    w.window.stopCounting();
    w.answer(100);
    w.window.Slot_incrementProgress(QVariant());
    QCOMPARE(w.bar()->value(), replies - 1);
    QVERIFY(w.isRunning());
    w.events.clear();
    w.abort();
    QCOMPARE(w.events, kAbort);
    QVERIFY(w.isIdle());
    w.flashImage(1000);
    w.answer(kCommands);
    QVERIFY(w.isIdle());
    QCOMPARE(w.status()->text(), QStringLiteral("FPGA flashing complete..."));
}

void TstFirmwareUpdateCount::droppedCommandsWithoutAnUpdate()
{
    FirmwareWindow w;
    w.window.stopCounting();
    QVERIFY(!w.flashButton()->isEnabled());
    QCOMPARE(w.flashButton()->text(), QStringLiteral("Read and Flash File"));
    w.flashImage(1000);
    w.answer(kCommands);
    w.window.stopCounting();
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdateCount::stalledUpdateCanOnlyBeAborted()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.window.stopCounting();
    w.window.stopCounting();
    QVERIFY(!w.window.ReadFileAndSendCommands());
    w.window.beginOperation();
    w.window.Slot_UpdateFirmwrFilePath(QString());
    QVERIFY(w.isRunning());
    QCOMPARE(w.commands.size(), kCommands);
}

void TstFirmwareUpdateCount::looksFromTheStallToTheNextCompletion()
{
    FirmwareWindow w;
    const auto looks = [&w] {
        return QStringLiteral("%1, bar %2 %3, label %4")
            .arg(w.flashButton()->text(), w.bar()->isVisible() ? "shown" : "hidden")
            .arg(w.bar()->value())
            .arg(w.status()->isVisible() ? w.status()->text() : QStringLiteral("hidden"));
    };
    w.flashImage(1000);
    w.answer(3);
    w.window.stopCounting();
    w.answer(3);
    QCOMPARE(looks(), QStringLiteral("Abort, bar shown 2, label hidden"));
    w.abort();
    QCOMPARE(looks(),
             QStringLiteral("Read and Flash File, bar hidden -1, label Firmware Flashing Aborted.."));
    w.answer(3);
    QCOMPARE(looks(),
             QStringLiteral("Read and Flash File, bar hidden -1, label Firmware Flashing Aborted.."));
    w.clickFlash();
    QCOMPARE(looks(), QStringLiteral("Abort, bar shown -1, label hidden"));
    w.answer(kCommands - 1);
    QCOMPARE(looks(), QStringLiteral("Abort, bar shown 6, label hidden"));
    w.answer();
    QCOMPARE(looks(), QStringLiteral("Read and Flash File, bar hidden 7, label FPGA flashing complete..."));
}

QTEST_MAIN(TstFirmwareUpdateCount)
#include "tst_firmwareupdate_count.moc"
