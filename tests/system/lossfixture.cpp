#include "lossfixture.h"

#include "link/permissionadvice.h"
#include "plainport.h"
#include "settings/portlister.h"
#include "sim/chainfile.h"

#include <QAbstractEventDispatcher>
#include <QLineEdit>
#include <QtTest>
#include <algorithm>

using namespace std::chrono_literals;

LossFixture::LossFixture(LinkKind kind)
    : ChannelFixture(kind)
{
    useProductTimeouts();
    reconnect = 6s;
    time.hold();
}

QString LossFixture::chain()
{
    return QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                          "module type=1 serial=SG-\nmodule type=2 serial=V-\n"
                          "module type=4 serial=TH-\nmodule type=9 serial=UN- functionA=1 functionB=2\n");
}

QString LossFixture::otherChain()
{
    return QStringLiteral(
        "system bitrate=5000 channels=32 powering=wired transmission=optical\n"
        "controller serial=C-2\npower serial=P-2\n"
        "module type=2 serial=VV- voltage=16 temperature=60 selftest=3 filter=200 range=2\n"
        "module type=1 serial=GG- voltage=15 temperature=70 selftest=5 filter=300 offset=1.5 polarity=yes\n"
        "module type=9 serial=NN- voltage=18 temperature=80 functionA=2 functionB=1\n");
}

void LossFixture::startUpTo(Moment moment)
{
    if (!device)
        plug(chain());
    switch (moment) {
    case Moment::FirstReply:
        addFaults(QStringLiteral("silence"));
        start();
        WAIT_COMPARE(device->requestCount(0x01), 1);
        QCOMPARE(sight(), opened());
        return;
    case Moment::Walk:
        addFaults(QStringLiteral("silence code=0x12 after=2"));
        start();
        WAIT_COMPARE(device->requestCount(0x12), 3);
        QCOMPARE(sight(),
                 QStringLiteral("pale green | 2 / 5 yellow | COM Port opened: COM40 | "
                                "controller, 4 rows, 2500 (16ch), 3000, inductive, inductive, rates"));
        return;
    case Moment::Cycle:
        start();
        expectWhole();
        forgetChanges();
        return;
    }
}

PlainPort *LossFixture::plugPlainPort()
{
    sim::Chain chain;
    QString error;
    if (!sim::parseChain(otherChain(), &chain, &error))
        qFatal("%s", qPrintable(error));
    device = std::make_unique<sim::Server>(time, chain);
    auto link = std::make_unique<PlainPort>(folder.filePath(QStringLiteral("ports/COM40")));
    PlainPort *port = link.get();
    device->addLink(std::move(link));
    port->plug();
    return port;
}

void LossFixture::announceAdvice(const PlainPort &port, int times)
{
    const QFileInfo device(port.device());
    const QString advice =
        permissionAdvice(QStringLiteral("COM40"), device.filePath(), device.group(), device.groupId());
    QVERIFY(advice.startsWith(QStringLiteral("No permission to open port COM40 (%1), ").arg(port.device())));
    for (int i = 0; i < times; ++i)
        QTest::ignoreMessage(QtWarningMsg, qPrintable(advice));
}

void LossFixture::unplugAndNotice()
{
    const int noticed = losses();
    unplug();
    WAIT_COMPARE(losses(), noticed + 1);
}

std::chrono::milliseconds LossFixture::patience(Moment moment) const
{
    return moment == Moment::Cycle ? periods.comm : periods.initSequence;
}

void LossFixture::pass(std::chrono::seconds by)
{
    for (; by > 0s; by -= 1s) {
        time.skip(1s);
        QCoreApplication::processEvents();
    }
}

void LossFixture::poll(std::chrono::seconds by)
{
    constexpr std::chrono::seconds kStep{3}; // less than the session waits for a reply
    for (; by > 0s; by -= qMin(by, kStep)) {
        const int requests = device->requestCount();
        WAIT_VERIFY(device->requestCount() > requests + 1); // the one before was answered
        time.skip(qMin(by, kStep));
    }
    waitForPolls();
}

void LossFixture::changeChain() const
{
    device->chain().system.poweringMode = QStringLiteral("changed");
    device->chain().module(1).identity.serial = QStringLiteral("changed");
}

void LossFixture::chooseAgain()
{
    if (chosenConnection().commType != Comm_Type::Serial) {
        model_Namespace::Settings settings = chosenConnection();
        app->Slot_ComConfigurationChanged(settings);
        return;
    }
    auto *dialog = window()->portLister();
    dialog->show();
    QCOMPARE(childByName<QLineEdit>(dialog, "comBox")->text(), QStringLiteral("40"));
    QTest::mouseClick(childByName<QPushButton>(dialog, "openBtn"), Qt::LeftButton);
    QVERIFY(!dialog->isVisible());
}

QString LossFixture::unavailable(const QString &line)
{
    return QStringLiteral("gray | OFFLINE yellow | %1 | %2").arg(line, operatorview::kNothing);
}

QString LossFixture::retrying(const QString &line)
{
    return QStringLiteral("yellow | OFFLINE yellow | %1 | %2").arg(line, operatorview::kNothing);
}

QString LossFixture::opened()
{
    return retrying(QStringLiteral("COM Port opened: COM40"));
}

void LossFixture::expectWhole()
{
    WAIT_VERIFY(isReady() && rowCount() == device->chain().modules.size());
    WAIT_COMPARE(operatorview::differences(*this), QStringList());
    QCOMPARE(mismatches(), QStringList());
    QCOMPARE(unconfirmed(), QStringList());
    QVERIFY2(sight().startsWith(QStringLiteral("pale green | READY green | ")), qPrintable(sight()));
    QVERIFY2(sight().endsWith(QStringLiteral(", rates")), qPrintable(sight()));
    QCOMPARE(operatorview::deadButtons(*this), QStringList());
    QCOMPARE(operatorview::reportedModules(*this), rowCount() + 1); // the power module has no row
    QCOMPARE(commands(), QStringList());
    QCOMPARE(device->refusals(), QStringList());
}

void LossFixture::expectNothingShown(const QStringList &windows) const
{
    QCOMPARE(sight().section(operatorview::kSeparator, 3),
             (QStringList{operatorview::kNothing} + windows).join(operatorview::kSeparator));
    QCOMPARE(statusBox(), QStringLiteral("OFFLINE"));
    QCOMPARE(operatorview::reportedModules(*this), 0);
    QCOMPARE(operatorview::deadButtons(*this), QStringList());
}

void LossFixture::expectUnavailableFromTheStart()
{
    QCOMPARE(sight(), unavailable());
    expectNothingShown();
    QCOMPARE(attempts(), 1);
    expectNoAttempt();
}

void LossFixture::expectNoAttempt()
{
    const int before = attempts();
    pass(60s);
    QVERIFY(busyTurns() < kFewTurns);
    QCOMPARE(attempts(), before);
    QCOMPARE(losses(), 0);
    QCOMPARE(sight(), unavailable(QString())); // the line was there for its 7 s
}

int LossFixture::attempts() const
{
    return logged(QStringLiteral("Connect Received")) +
           logged(QStringLiteral("Error : No connection available in port COM40"));
}

void LossFixture::expectRowsToGo(const QString &before, std::chrono::milliseconds patience,
                                 const QStringList &windows)
{
    time.skip(patience - 1ms);
    QCOMPARE(sight(), before);
    time.skip(1ms);
    QCOMPARE(sight(), (QStringList{retrying()} + windows).join(operatorview::kSeparator));
    expectNothingShown(windows);
}

void LossFixture::expectFailingMinute(int from)
{
    for (int second = from; second < from + 60; ++second) {
        QCOMPARE(sight(), unavailable());
        QCOMPARE(retries(), second / 6);
        pass(1s);
    }
    QVERIFY(busyTurns() < kFewTurns);
    QCOMPARE(losses(), 1);
}

void LossFixture::expectBackByChoice()
{
    expectNoAttempt();
    chooseAgain();
    QCOMPARE(sight(), opened());
    expectWhole();
    QCOMPARE(losses(), 0);
}

void LossFixture::expectBackByTheNextRetry()
{
    const int before = retries();
    time.skip(6s);
    QCOMPARE(sight(), opened());
    QCOMPARE(recoveries(), 1);
    expectWhole();
    poll(12s);
    QCOMPARE(retries(), before + 1);
    QVERIFY(isReady());
}

QStringList LossFixture::warnings() const
{
    QStringList lines = log.lines(QtWarningMsg) + log.lines(QtCriticalMsg);
    const auto isOfThePlatform = [](const QString &line) {
        return line.startsWith(QStringLiteral("This plugin does not support "));
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isOfThePlatform), lines.end());
    return lines;
}

void addMoments(const std::function<void(const char *name, LossFixture::Moment moment)> &addRow)
{
    addRow("before the first reply", LossFixture::Moment::FirstReply);
    addRow("in the walk", LossFixture::Moment::Walk);
    addRow("in the cycle", LossFixture::Moment::Cycle);
}

int busyTurns()
{
    constexpr int kTurns = 1000;
    int busy = 0;
    for (int turn = 0; turn < kTurns; ++turn)
        busy += QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents) ? 1 : 0;
    return busy;
}
