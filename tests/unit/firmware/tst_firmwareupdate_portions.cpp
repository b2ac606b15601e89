#include "firmwarewindow.h"

/// An image of more than 1280 commands is queued over several turns of the event loop.
class TstFirmwareUpdatePortions : public QObject
{
    Q_OBJECT

private slots:
    void imageOfUsualSizeIsQueuedAtOnce();
    void asManyCommandsAsAPortionHasAreQueuedAtOnce();
    void oneCommandMoreThanAPortionHasTakesAnotherTurn();
    void largeImageIsQueuedOverSeveralTurns();
    void largeImageIsQueuedWhole();
    void sendingStartsWhenAllIsQueued();
    void windowCanBeClosedMeanwhile();
    void windowCanBeDeletedMeanwhile();
    void repliesMeanwhileCompleteNothing();
    void abortMeanwhileQueuesNoMore();
    void droppedCommandsInAPortionEndIt();
    void droppedCommandsMeanwhileQueueNoMore();
    void updateAfterAnAbortMeanwhileIsWhole();
    void commandsAloneStartNothing();
};

namespace {

constexpr int kSize = 1 << 20;
constexpr int kCommands = 4116; // start, 17 pages, 4096 blocks, stop, reset
constexpr int kMostAtOnce = 1280;
constexpr int kLargestAtOnce = 325632; // bytes: start, 5 pages, 1272 blocks, stop, reset

int startsOf(const FirmwareWindow &w)
{
    return w.events.count(QStringLiteral("start"));
}

} // namespace

void TstFirmwareUpdatePortions::imageOfUsualSizeIsQueuedAtOnce()
{
    FirmwareWindow w;
    w.flashImage(300000);
    QCOMPARE(w.commands.size(), 1180);
    QCOMPARE(w.events.last(), QStringLiteral("start"));
    w.time.turn();
    QCOMPARE(w.commands.size(), 1180);
    QCOMPARE(startsOf(w), 1);
}

void TstFirmwareUpdatePortions::asManyCommandsAsAPortionHasAreQueuedAtOnce()
{
    FirmwareWindow w;
    w.flashImage(kLargestAtOnce);
    QCOMPARE(w.commands.size(), kMostAtOnce);
    QCOMPARE(w.events.last(), QStringLiteral("start"));
    w.letQueue();
    QCOMPARE(w.commands.size(), kMostAtOnce);
    QCOMPARE(startsOf(w), 1);
}

void TstFirmwareUpdatePortions::oneCommandMoreThanAPortionHasTakesAnotherTurn()
{
    FirmwareWindow w;
    w.flashImage(kLargestAtOnce + 1);
    QCOMPARE(w.commands.size(), kMostAtOnce);
    QCOMPARE(startsOf(w), 0);
    w.time.turn();
    QCOMPARE(w.commands.size(), kMostAtOnce + 1);
    QCOMPARE(w.events.last(), QStringLiteral("start"));
    QCOMPARE(startsOf(w), 1);
    QCOMPARE(w.time.activeTimers(), 0);
}

void TstFirmwareUpdatePortions::largeImageIsQueuedOverSeveralTurns()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    QVERIFY(w.isRunning());
    QCOMPARE(w.commands.size(), kMostAtOnce);
    w.time.turn();
    QCOMPARE(w.commands.size(), 2 * kMostAtOnce);
    w.time.turn();
    QCOMPARE(w.commands.size(), 3 * kMostAtOnce);
    w.time.turn();
    QCOMPARE(w.commands.size(), kCommands);
    QCOMPARE(w.time.activeTimers(), 0);
}

void TstFirmwareUpdatePortions::largeImageIsQueuedWhole()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    w.letQueue();
    QCOMPARE(w.commands, firmwareimage::commands({1, 2}, FirmwareWindow::image(kSize)));
    const QStringList lines = w.log.lines();
    QCOMPARE(lines.count(QStringLiteral("Block Size: 256")), 4096);
    QCOMPARE(lines.count(QStringLiteral("Total no of bytes 1048576  No of Blocks: 4096")), 1);
    QCOMPARE(lines.count(QStringLiteral("No of Block commands planned sent:  4096")), 1);
    QCOMPARE(lines.count(QStringLiteral("Total bytes packed and being sent:  1048576")), 1);
}

void TstFirmwareUpdatePortions::sendingStartsWhenAllIsQueued()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    w.time.turn();
    w.time.turn();
    QCOMPARE(startsOf(w), 0);
    w.time.turn();
    QCOMPARE(startsOf(w), 1);
    QCOMPARE(w.events.last(), QStringLiteral("start"));
    w.time.advance(1000);
    QCOMPARE(startsOf(w), 1);
    w.answer(kCommands);
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdatePortions::windowCanBeClosedMeanwhile()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    w.window.close();
    w.letQueue();
    QCOMPARE(w.commands.size(), kCommands);
    QCOMPARE(startsOf(w), 1);
}

void TstFirmwareUpdatePortions::windowCanBeDeletedMeanwhile()
{
    QWidget parent;
    auto *w = new FirmwareWindow(&parent);
    w->flashImage(kSize);
    delete &w->window;
    w->letQueue();
    QCOMPARE(w->commands.size(), kMostAtOnce);
    delete w;
}

void TstFirmwareUpdatePortions::repliesMeanwhileCompleteNothing()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    w.answer(2 * kCommands);
    QVERIFY(w.isRunning());
    w.letQueue();
    QCOMPARE(w.commands.size(), kCommands);
    QCOMPARE(startsOf(w), 1);
}

void TstFirmwareUpdatePortions::abortMeanwhileQueuesNoMore()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    w.events.clear();
    w.abort();
    w.letQueue();
    QCOMPARE(w.events, (QStringList{"abort", "1 2 1 0 | 0 0", "1 2 1 43 | 0 0"}));
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdatePortions::droppedCommandsInAPortionEndIt()
{
    FirmwareWindow w;
    connect(&w.window, &FirmwareUpdate::Signal_commandMsg, &w.window, [&w] {
        if (w.commands.size() == 100)
            w.window.stopCounting();
    });
    w.flashImage(kSize);
    w.letQueue();
    QCOMPARE(w.commands.size(), 100);
    QCOMPARE(w.time.activeTimers(), 0);
}

void TstFirmwareUpdatePortions::droppedCommandsMeanwhileQueueNoMore()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    w.window.stopCounting();
    w.letQueue();
    QCOMPARE(w.commands.size(), kMostAtOnce);
    QCOMPARE(startsOf(w), 0);
    QVERIFY(w.isRunning()); // it can be aborted
}

void TstFirmwareUpdatePortions::updateAfterAnAbortMeanwhileIsWhole()
{
    FirmwareWindow w;
    w.flashImage(kSize);
    w.time.turn();
    w.abort();
    w.commands.clear();
    w.flashImage(kSize);
    w.letQueue();
    QCOMPARE(w.commands, firmwareimage::commands({1, 2}, FirmwareWindow::image(kSize)));
    QCOMPARE(startsOf(w), 1);
    w.answer(kCommands);
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdatePortions::commandsAloneStartNothing()
{
    FirmwareWindow w;
    w.window.Slot_UpdateFirmwrFilePath(
        w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), FirmwareWindow::image(kSize)));
    QVERIFY(w.window.ReadFileAndSendCommands());
    w.letQueue();
    QCOMPARE(w.commands.size(), kCommands);
    QCOMPARE(startsOf(w), 0);
}

QTEST_MAIN(TstFirmwareUpdatePortions)

#include "tst_firmwareupdate_portions.moc"
