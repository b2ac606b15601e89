#include "sessionfixture.h"

#include <QtTest>

/// The commands of the firmware window, which go out as fast as the replies come.
class TstFirmwareQueue : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        s = std::make_unique<SessionFixture>();
        s->bringTo(SessionState::Cyclic);
    }
    void cleanup() { s.reset(); }

    void firmwareCommandsGoAsFastAsTheReplies();
    void firmwareCommandsWaitForTheSemaphore();
    void firmwareTimerRestsWhileNoReplyComes();
    void abortWhileNoReplyComesEndsTheRest();
    void cleanSlateEndsTheRest();
    void droppedCommandsAreTold_data();
    void droppedCommandsAreTold();
    void firmwareCommandsSilenceThePolling();
    void firmwareResetBecomesTheSystemReset();
    void firmwareCommandTooLongForAFrameIsDropped_data();
    void firmwareCommandTooLongForAFrameIsDropped();
    void firmwareTimerStopsItselfWhenTheQueueIsEmpty();
    void clearedFirmwareCommandsAreNotSent();
    void commandsAfterAnAbortWaitForANewStart();
    void commandsWithoutAStartEndInTheCommTimeout();
    void resetEmptiesTheFirmwareQueue();
    void foreignFirmwareCommandDoesNotTakeTheSemaphore();

private:
    std::unique_ptr<SessionFixture> s;
};

void TstFirmwareQueue::firmwareCommandsGoAsFastAsTheReplies()
{
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0xE1, "ab"));
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010103000000"});
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"16010201e1030002006162"});
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
    QCOMPARE(s->time.elapsedMs(), qint64(0));
}

void TstFirmwareQueue::firmwareCommandsWaitForTheSemaphore()
{
    s->time.advance(500); // a poll is out
    s->forget();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010103000000"});
}

void TstFirmwareQueue::firmwareTimerRestsWhileNoReplyComes()
{
    s->time.advance(500); // a poll is out
    s->forget();
    const int others = s->time.activeTimers();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0));
    s->comm->Slot_StartFPGAprocess();
    QCOMPARE(s->time.activeTimers(), others + 1);
    s->time.turn();
    QCOMPARE(s->time.activeTimers(), others);
    s->endTurn();
    QCOMPARE(s->time.activeTimers(), others + 1);
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010103000000"});
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
}

void TstFirmwareQueue::abortWhileNoReplyComesEndsTheRest()
{
    s->time.advance(500);
    s->forget();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->comm->Slot_ClearFirmwrCommands();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0)); // waits for a new start
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
}

void TstFirmwareQueue::cleanSlateEndsTheRest()
{
    s->time.advance(500);
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->comm->Slot_CommTimeout();
    s->answerUntilCyclic();
    s->forget();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0)); // waits for a new start
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
}

void TstFirmwareQueue::droppedCommandsAreTold_data()
{
    QTest::addColumn<int>("commands");
    QTest::addColumn<int>("sent");
    QTest::addColumn<int>("told");
    QTest::newRow("none") << 0 << 0 << 0;
    QTest::newRow("none sent") << 2 << 0 << 1;
    QTest::newRow("one of two sent") << 2 << 1 << 1;
    QTest::newRow("both sent") << 2 << 2 << 0;
}

void TstFirmwareQueue::droppedCommandsAreTold()
{
    QFETCH(int, commands);
    QFETCH(int, sent);
    QFETCH(int, told);
    for (int i = 0; i < commands; ++i)
        s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    if (sent > 0)
        s->comm->Slot_StartFPGAprocess();
    for (int i = 0; i < sent; ++i) {
        s->time.turn();
        if (i + 1 < sent)
            s->endTurn();
    }
    QCOMPARE(s->sent().size(), sent);
    QCOMPARE(s->comm->firmwareCommandsWait(), sent < commands);
    QSignalSpy dropped(s->comm.get(), &Communication::firmwareCommandsDropped);
    s->comm->Slot_CommTimeout();
    QCOMPARE(dropped.count(), told);
    QVERIFY(!s->comm->firmwareCommandsWait());
    s->comm->Slot_CommTimeout();
    QCOMPARE(dropped.count(), told);
}

void TstFirmwareQueue::firmwareCommandsSilenceThePolling()
{
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0));
    s->comm->queueModuleStatus(3);
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->forget();
    s->time.advance(3000);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn(); // holds the comm time-out off
    s->time.advance(1500);
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000003"}); // the queue is empty: the cycle goes on
}

void TstFirmwareQueue::firmwareResetBecomesTheSystemReset()
{
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0x2B));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"2b000000000000"});
    QCOMPARE(s->log.lines().count(QStringLiteral("System Reset request Sent")), 1);
}

void TstFirmwareQueue::firmwareCommandTooLongForAFrameIsDropped_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("goesOut");
    QTest::newRow("a full frame") << 1300 - 9 << true;
    QTest::newRow("one byte more") << 1300 - 8 << false;
    QTest::newRow("beyond 16 bits") << 70000 << false;
}

void TstFirmwareQueue::firmwareCommandTooLongForAFrameIsDropped()
{
    QFETCH(int, size);
    QFETCH(bool, goesOut);
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0xE1, QByteArray(size, 'x')));
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0));
    s->comm->Slot_StartFPGAprocess();
    if (!goesOut)
        s->expectDropped(size + 9);
    s->time.turn();
    QCOMPARE(s->serial->frames.size(), goesOut ? 1 : 0);
    if (goesOut) {
        QCOMPARE(s->serial->frames.first().size(), 1322);
        return;
    }
    s->time.turn(); // it did not take the semaphore
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
}

void TstFirmwareQueue::firmwareTimerStopsItselfWhenTheQueueIsEmpty()
{
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->time.turn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>()); // the timer runs no more
}

void TstFirmwareQueue::clearedFirmwareCommandsAreNotSent()
{
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->comm->Slot_ClearFirmwrCommands();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstFirmwareQueue::commandsAfterAnAbortWaitForANewStart()
{
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->comm->Slot_ClearFirmwrCommands();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0));
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0x2B));
    s->time.advance(1000);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
}

void TstFirmwareQueue::commandsWithoutAStartEndInTheCommTimeout()
{
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->forget();
    s->time.advance(4000);
    QCOMPARE(s->takeEvents().first(), QStringLiteral("CleanSlate"));
    QCOMPARE(s->sent(), QList<QByteArray>{"0100000001"});
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>()); // the reset emptied the queue
}

void TstFirmwareQueue::resetEmptiesTheFirmwareQueue()
{
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->reply(device::fastSystemStatus(1));
    s->forget();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
}

void TstFirmwareQueue::foreignFirmwareCommandDoesNotTakeTheSemaphore()
{
    s->comm->Slot_FirmwareCommands(QVariant(5));
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(0));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
}

QTEST_GUILESS_MAIN(TstFirmwareQueue)
#include "tst_firmwarequeue.moc"
