#include "firmwarefixture.h"
#include "protocol/communication.h"
#include "waiting.h"

#include <QLineEdit>
#include <QLoggingCategory>
#include <QPlainTextEdit>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

using LinkKind = SystemFixture::LinkKind;

namespace {

constexpr int kSlow = 50000; ///< bytes per second: a large image takes several seconds
constexpr firmwareimage::Target kAnalog2{1, 2};

/// Bytes in which each block differs from the others, the same ones each time.
QByteArray contents(int size)
{
    QRandomGenerator random(quint32(size) + 1);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

/// The same as an image for the FPGA5.
QByteArray imageContents(int size)
{
    const QByteArray chip("iCE40UP5K-SG48");
    return contents(size).replace(100, chip.size(), chip);
}

QByteArray filledUp(QByteArray file)
{
    while (file.size() % 256 != 0)
        file.append('\xFF');
    return file;
}

} // namespace

/// An image reaches the simulated flash over real links: as commands that the session sends, and by the
/// operator's clicks in the firmware window.
class TstFirmwareFlashing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); }
    void cleanup() { s.reset(); }

    void imageArrivesAsTheFileIs_data();
    void imageArrivesAsTheFileIs();
    void targetsDoNotMix();
    void brokenRunIsDroppedAndTheNextOneIsWhole_data();
    void brokenRunIsDroppedAndTheNextOneIsWhole();

    void operatorFlashesAFile();
    void operatorFlashesAFileThatIsQueuedInPortions_data();
    void operatorFlashesAFileThatIsQueuedInPortions();
    void nothingElseIsSentWhileTheWindowFlashes();
    void fileIsKnownAfterARestart();
    void abortEndsTheRunOnTheWire();
    void startBehindAnAbortSendsStopAndResetFirst();
    void linkThatDiesLeavesTheBarUntilTheAbort();

private:
    void begin(LinkKind kind = LinkKind::Tcp, int bytesPerSecond = 0);
    void flashSlowlyAndAbort();

    std::unique_ptr<FirmwareFixture> s;
};

void TstFirmwareFlashing::begin(LinkKind kind, int bytesPerSecond)
{
    s = std::make_unique<FirmwareFixture>(kind);
    s->begin(bytesPerSecond);
}

void TstFirmwareFlashing::imageArrivesAsTheFileIs_data()
{
    QTest::addColumn<LinkKind>("kind");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("commands"); // start, pages, blocks, stop
    QTest::newRow("no byte") << LinkKind::Tcp << 0 << 1 + 1 + 0 + 1;
    QTest::newRow("one byte") << LinkKind::Tcp << 1 << 1 + 1 + 1 + 1;
    QTest::newRow("a block less one") << LinkKind::Tcp << 255 << 1 + 1 + 1 + 1;
    QTest::newRow("a block") << LinkKind::Tcp << 256 << 1 + 1 + 1 + 1;
    QTest::newRow("a block and one") << LinkKind::Tcp << 257 << 1 + 1 + 2 + 1;
    QTest::newRow("a page less one") << LinkKind::Tcp << 65535 << 1 + 1 + 256 + 1;
    QTest::newRow("a page") << LinkKind::Tcp << 65536 << 1 + 2 + 256 + 1;
    QTest::newRow("a page and one") << LinkKind::Tcp << 65537 << 1 + 2 + 257 + 1;
    QTest::newRow("an image of usual size") << LinkKind::Tcp << 300000 << 1 + 5 + 1172 + 1;
    QTest::newRow("over a serial line") << LinkKind::Serial << 65537 << 1 + 2 + 257 + 1;
}

void TstFirmwareFlashing::imageArrivesAsTheFileIs()
{
    QFETCH(LinkKind, kind);
    QFETCH(int, size);
    QFETCH(int, commands);
    begin(kind);
    QSignalSpy slates(s->app->communication(), &Communication::Signal_CleanSlateProtocol);
    const QByteArray file = contents(size);
    s->flash(file, kAnalog2);
    s->waitForTheResetsEnd(1);
    QCOMPARE(s->images().breaches(), QStringList());
    QCOMPARE(s->images().finishedRuns({1, 2}), 1);
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
    QCOMPARE(s->device->device().resetCount(), 1);
    QCOMPARE(slates.size(), 1); // the restart, which the next reply tells
    // From the first command to the reset nothing else is sent.
    QVERIFY(s->codesOfRequests().contains(QByteArray(commands, '\x16') + '\x2B'));
    QCOMPARE(s->device->requestCount(0x16), commands);
    QCOMPARE(s->device->refusals(), QStringList());
}

void TstFirmwareFlashing::targetsDoNotMix()
{
    begin();
    const QByteArray first = contents(1000);
    const QByteArray second = contents(700);
    s->flash(first, {0, 1});
    s->waitForTheResetsEnd(1);
    s->flash(second, {2, 2});
    s->waitForTheResetsEnd(2);
    QVERIFY(s->images().image({0, 1}) == filledUp(first));
    QVERIFY(s->images().image({2, 2}) == filledUp(second));
    QCOMPARE(s->images().image({1, 2}), QByteArray());
    QCOMPARE(s->images().breaches(), QStringList());
}

void TstFirmwareFlashing::brokenRunIsDroppedAndTheNextOneIsWhole_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<bool>("isSilent"); // the session waits for a reply in vain
    QTest::newRow("link closed") << "close code=0x16 nth=100" << false;
    QTest::newRow("reply lost") << "lose code=0x16 nth=100" << true;
    QTest::newRow("device restarts") << "reset-flag code=0x16 nth=100" << false;
}

void TstFirmwareFlashing::brokenRunIsDroppedAndTheNextOneIsWhole()
{
    QFETCH(QString, fault);
    QFETCH(bool, isSilent);
    begin();
    QString error;
    QVERIFY2(s->device->faults().parse(fault, &error), qPrintable(error));
    s->flash(contents(65536), kAnalog2);
    WAIT_VERIFY(s->device->requestCount(0x16) == 100);
    if (isSilent)
        s->time.skip(s->periods.comm);
    WAIT_VERIFY(s->device->requestCount(0x01) > 0);
    WAIT_VERIFY(s->isWhole());
    s->waitForARound();
    QCOMPARE(s->device->requestCount(0x16), 100);
    QCOMPARE(s->device->requestCount(0x2B), 0);

    s->device->faults().clear();
    s->device->clearCounters();
    const QByteArray file = contents(20000);
    s->flash(file, kAnalog2);
    s->waitForTheResetsEnd(1);
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
    QCOMPARE(s->images().breaches(), QStringList());
}

/// Flashes a large file over a slow link and aborts in the middle; then nothing is under way.
void TstFirmwareFlashing::flashSlowlyAndAbort()
{
    begin(LinkKind::Tcp, kSlow);
    s->openWindow();
    s->choose(s->write("x_ANA_FPGA5_1.bin", imageContents(300000)));
    s->click("flashButton");
    WAIT_VERIFY(s->progress() > 20);
    s->abort();
    QVERIFY(s->fpgaCommands() > 20 && s->fpgaCommands() < 1000);
    WAIT_VERIFY(s->isAnswered());
}

void TstFirmwareFlashing::operatorFlashesAFile()
{
    begin();
    s->openWindow();
    const QByteArray file = imageContents(65537);
    s->choose(s->write("x_ANA_FPGA5_v2.bin", file));
    s->click("flashButton");
    QCOMPARE(s->buttonText(), QStringLiteral("Abort"));
    QVERIFY(s->part<QProgressBar>("progressBar")->isVisible());
    QCOMPARE(s->part<QProgressBar>("progressBar")->maximum(), 1 + 3 + 257);
    QCOMPARE(s->label(), QString());
    int last = s->progress();
    WAIT_VERIFY(s->progress() > last + 10);
    WAIT_VERIFY(s->buttonText() == QStringLiteral("Read and Flash File"));
    QCOMPARE(s->label(), QStringLiteral("FPGA flashing complete..."));
    QVERIFY(s->part<QProgressBar>("progressBar")->isHidden());
    QVERIFY(s->part<QPlainTextEdit>("messageBox")
                ->toPlainText()
                .endsWith(QStringLiteral("\tFlashing FPGA Done....")));
    s->waitForTheResetsEnd(1);
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
    QCOMPARE(s->images().breaches(), QStringList());
    // The restart that the update ends with changes nothing in the window.
    s->waitForARound();
    QCOMPARE(s->label(), QStringLiteral("FPGA flashing complete..."));
    QCOMPARE(s->buttonText(), QStringLiteral("Read and Flash File"));
    // Again, with another file. A press right behind the end would start nothing.
    s->time.skip(std::chrono::milliseconds(500));
    const QByteArray second = imageContents(3000);
    s->choose(s->write("y_GTW_FPGA5_1.bin", second));
    s->click("flashButton");
    QCOMPARE(s->label(), QString());
    s->waitForTheResetsEnd(2);
    QVERIFY(s->images().image({2, 2}) == filledUp(second));
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
    QCOMPARE(s->images().breaches(), QStringList());
}

void TstFirmwareFlashing::operatorFlashesAFileThatIsQueuedInPortions_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("commands"); // start, pages, blocks, stop
    QTest::newRow("all that is queued at once, 1280 with the reset") << 325632 << 1 + 5 + 1272 + 1;
    QTest::newRow("one more") << 325633 << 1 + 5 + 1273 + 1;
    QTest::newRow("three portions") << 700000 << 1 + 11 + 2735 + 1;
}

void TstFirmwareFlashing::operatorFlashesAFileThatIsQueuedInPortions()
{
    QFETCH(int, size);
    QFETCH(int, commands);
    begin();
    s->openWindow();
    const QByteArray file = imageContents(size);
    s->choose(s->write("x_ANA_FPGA5_v2.bin", file));
    s->click("flashButton");
    QCOMPARE(s->fpgaCommands(), 0);
    s->waitForTheResetsEnd(1);
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
    QCOMPARE(s->images().breaches(), QStringList());
    QCOMPARE(s->label(), QStringLiteral("FPGA flashing complete..."));
    // From the first command to the reset nothing else is sent, wherever the portions join.
    QVERIFY(s->codesOfRequests().contains(QByteArray(commands, '\x16') + '\x2B'));
    QCOMPARE(s->fpgaCommands(), commands);
    QCOMPARE(s->device->refusals(), QStringList());
}

void TstFirmwareFlashing::nothingElseIsSentWhileTheWindowFlashes()
{
    begin();
    s->openWindow();
    s->choose(s->write("x_CON_FPGA5_1.bin", imageContents(65536)));
    Communication *session = s->app->communication();
    // Other work comes up in the middle, and the window is closed.
    connect(s->device.get(), &sim::Server::requestReceived, session, [&](const QByteArray &payload) {
        if (!payload.startsWith('\x16') || s->fpgaCommands() != 100)
            return;
        session->queueModuleStatus(1);
        session->Slot_SendVoltageSupply(1, 1, 0x14);
        s->update()->close();
    });
    s->click("flashButton");
    s->waitForTheResetsEnd(1);
    QVERIFY(!s->update()->isVisible());
    QVERIFY(s->codesOfRequests().contains(QByteArray(1 + 2 + 256 + 1, '\x16') + '\x2B'));
    QCOMPARE(s->fpgaCommands(), 1 + 2 + 256 + 1);
    QVERIFY(s->images().image({0, 2}) == imageContents(65536));
    s->openWindow();
    QCOMPARE(s->label(), QStringLiteral("FPGA flashing complete..."));
}

void TstFirmwareFlashing::fileIsKnownAfterARestart()
{
    begin();
    s->openWindow();
    const QByteArray file = imageContents(1000);
    const QString path = s->write("x_ANA_FPGA5_1.bin", file);
    s->choose(path);
    s->click("flashButton");
    s->waitForTheResetsEnd(1);
    s->startAgain();
    WAIT_VERIFY(s->isWhole());
    s->openWindow();
    QCOMPARE(s->part<QLineEdit>("filePathEdit")->text(), path);
    s->device->clearCounters();
    s->click("flashButton");
    s->waitForTheResetsEnd(1);
    QCOMPARE(s->images().finishedRuns({1, 2}), 2);
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
}

void TstFirmwareFlashing::abortEndsTheRunOnTheWire()
{
    flashSlowlyAndAbort();
    // The line is silent: the stop and the reset wait, and hold the polling off.
    const int sent = s->device->requestCount();
    const int commands = s->fpgaCommands();
    for (int turn = 0; turn < 5; ++turn)
        s->time.skip(s->periods.cyclic);
    s->time.skip(s->periods.comm);
    WAIT_VERIFY(s->device->requestCount() > sent);
    // The session starts over, and what waited is gone.
    QCOMPARE(s->device->receivedPayloads().at(sent), QByteArray::fromHex("0100000001"));
    WAIT_VERIFY(s->isWhole());
    s->waitForARound();
    QCOMPARE(s->fpgaCommands(), commands);
    QCOMPARE(s->device->requestCount(0x2B), 0);
    QCOMPARE(s->label(), QStringLiteral("Firmware Flashing Aborted.."));
    QCOMPARE(s->progress(), -1);
    QCOMPARE(s->images().finishedRuns({1, 2}), 0);
}

void TstFirmwareFlashing::startBehindAnAbortSendsStopAndResetFirst()
{
    flashSlowlyAndAbort();
    const int sent = s->device->requestCount();
    s->click("flashButton");
    WAIT_VERIFY(s->device->requestCount() >= sent + 4);
    QCOMPARE(s->device->receivedPayloads().mid(sent, 4),
             (QList<QByteArray>{QByteArray::fromHex("160102010000000000"), // stop
                                QByteArray::fromHex("2b000000000000"),     // reset
                                QByteArray::fromHex("160102010100000000"), // start of the new run
                                QByteArray::fromHex("0100000001")}));      // the restart drops the rest of it
    QCOMPARE(s->images().finishedRuns({1, 2}), 1);
    WAIT_VERIFY(s->isWhole());
    const int standing = s->progress();
    s->waitForARound();
    QCOMPARE(s->progress(), standing);
    QVERIFY(standing < 3);
    s->abort();
    s->startOver();
    const QByteArray file = imageContents(1000);
    s->choose(s->write("x_ANA_FPGA5_v2.bin", file));
    s->click("flashButton");
    s->waitForTheResetsEnd(1);
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
    QCOMPARE(s->images().breaches(), QStringList());
}

void TstFirmwareFlashing::linkThatDiesLeavesTheBarUntilTheAbort()
{
    begin();
    s->openWindow();
    const QByteArray file = imageContents(300000);
    s->choose(s->write("x_ANA_FPGA5_1.bin", file));
    QString error;
    QVERIFY(s->device->faults().parse(QStringLiteral("close code=0x16 nth=500"), &error));
    s->click("flashButton");
    WAIT_VERIFY(s->device->requestCount(0x01) == 1);
    WAIT_VERIFY(s->isWhole());
    QCOMPARE(s->fpgaCommands(), 500);
    const int standing = s->progress();
    s->waitForARound();
    QCOMPARE(s->progress(), standing);
    // The first reply makes 0; that to a poll that was out at the start counts too.
    QVERIFY2(standing == 498 || standing == 499, qPrintable(QString::number(standing)));
    QVERIFY(s->part<QProgressBar>("progressBar")->isVisible());
    QCOMPARE(s->label(), QString());
    s->abort();
    s->startOver();
    s->click("flashButton");
    s->waitForTheResetsEnd(1);
    QCOMPARE(s->label(), QStringLiteral("FPGA flashing complete..."));
    QVERIFY(s->images().image({1, 2}) == filledUp(file));
    QCOMPARE(s->images().breaches(), QStringList());
}

QTEST_MAIN(TstFirmwareFlashing)

#include "tst_firmwareflashing.moc"
