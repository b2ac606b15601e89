#include "lossfixture.h"
#include "peersockets.h"
#include "plainport.h"
#include "portholder.h"
#include "settings/portlister.h"
#include "sim/gatewayserver.h"
#include "sleepingmachine.h"
#include "support/droppedprivileges.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QtTest>

using namespace std::chrono_literals;
using LinkKind = SystemFixture::LinkKind;
using Moment = LossFixture::Moment;
using peersockets::End;

namespace {

/// The program, a chain and a gateway. A port is an ordinary user's, whoever runs the test.
struct World
{
    explicit World(LinkKind kind)
        : user(kind == LinkKind::Serial ? std::make_unique<DroppedPrivileges>() : nullptr)
        , f(kind)
        , gateway(f.time)
    {
        QString error;
        if (!gateway.listen(0, &error))
            qFatal("%s", qPrintable(error));
        f.gatewayAddress = QStringLiteral("127.0.0.1:%1").arg(gateway.port());
    }

    const std::unique_ptr<DroppedPrivileges> user;
    LossFixture f;
    sim::GatewayServer gateway;
    std::unique_ptr<PortHolder> holder;
    PlainPort *port = nullptr; ///< of the device, if a test has plugged one
};

using Act = std::function<void(World &)>;

/// A way to lose the link while the chain is polled.
struct Loss
{
    const char *name;
    LinkKind kind;
    Act begin;
    std::chrono::milliseconds patience; ///< then the session misses a reply; 0: it has already
    QString later;                      ///< the status line after some attempts or requests
    Act end;                            ///< the next one works
    bool advises = false;               ///< the log tells with each attempt what to do
};

const QString kUnavailable = QStringLiteral("COM Port unavailable: COM40");
const QString kRetrying = QStringLiteral("Retrying to connect with Torvex");

/// Something that the operator has open.
struct Opened
{
    /// By mouse or keys; calls `rest` while it is open.
    using Open = std::function<void(World &, const std::function<void()> &rest)>;

    const char *name;
    Open open;
    QString title;            ///< how its line of windows() begins
    Act use;                  ///< what the operator does with it after the loss; null: it is gone
    bool choosesLink = false; ///< by that
};

constexpr char kCell[] = "32,1250"; ///< of the tables of rates: channels and kBit/s

void click(const QObject *place, const char *button)
{
    QTest::mouseClick(childByName<QAbstractButton>(place, button), Qt::LeftButton);
}

/// What is open beside the main window; null: nothing is.
QWidget *openWindow(const World &w)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget != w.f.window())
            return widget;
    }
    return nullptr;
}

void pull(World &w)
{
    w.f.unplugAndNotice();
}

void plugAgain(World &w)
{
    w.f.plug(LossFixture::otherChain());
}

void endBy(World &w, End end)
{
    peersockets::endBy(end, w.f.device->tcpPort());
    w.f.unplugAndNotice();
}

void noPermission(World &w)
{
    w.f.unplugAndNotice();
    w.port = w.f.plugPlainPort();
    w.port->setPermissions({});
}

void hold(World &w)
{
    w.f.unplugAndNotice();
    w.port = w.f.plugPlainPort();
    w.holder = std::make_unique<PortHolder>(w.port->device(), PortHolder::Manner::Exclusive);
}

void fallSilent(World &w)
{
    w.f.addFaults(QStringLiteral("silence"));
}

void replyAgain(World &w)
{
    w.f.device->faults().clear();
}

void sleepLonger(World &w)
{
    fallSilent(w); // the device wakes up later
    w.f.time.sleep(kNight, SkippingTime::Asleep::Overdue);
}

const std::vector<Loss> &losses()
{
    static const std::vector<Loss> all{
        {"adapter pulled", LinkKind::Serial, pull, 4s, kUnavailable, plugAgain},
        {"port held", LinkKind::Serial, hold, 4s, kUnavailable, [](World &w) { w.holder->end(); }},
        {"no permission", LinkKind::Serial, noPermission, 4s, kUnavailable,
         [](World &w) { w.port->setPermissions(PlainPort::kForTheOwner); }, true},
        {"closed", LinkKind::Tcp, [](World &w) { endBy(w, End::Orderly); }, 4s, kUnavailable, plugAgain},
        {"reset", LinkKind::Tcp, [](World &w) { endBy(w, End::Reset); }, 4s, kUnavailable, plugAgain},
        {"half-open", LinkKind::Tcp, [](World &w) { peersockets::vanish(w.f.device->tcpPort()); }, 4s,
         kRetrying, [](World &w) { peersockets::resume(w.f.device->tcpPort()); }},
        {"silent peer", LinkKind::Tcp, fallSilent, 4s, kRetrying, replyAgain},
        {"asleep", LinkKind::Tcp, sleepLonger, 0s, kRetrying, replyAgain},
    };
    return all;
}

Opened::Open byClick(const std::function<QWidget *(World &)> &place, const char *button)
{
    return [=](World &w, const std::function<void()> &rest) {
        click(place(w), button);
        rest();
    };
}

Opened::Open inTheWindow(const char *button)
{
    return byClick([](World &w) { return w.f.window(); }, button);
}

Opened::Open inRow(int module, const char *button)
{
    return byClick([=](World &w) { return w.f.row(module); }, button);
}

/// Its opener returns only when it is closed.
void openConnectionDialog(World &w, const std::function<void()> &rest)
{
    QTimer::singleShot(0, w.f.window(), [&] {
        rest();
        w.f.window()->portLister()->close(); // also if the rest has failed on its way
    });
    click(w.f.window(), "configButton");
}

/// The operator confirms the port that he has, or lets it be: the dialog would choose a port of the gateway
/// of its own.
void useConnectionDialog(World &w)
{
    const bool isSerial = w.f.chosenConnection().commType == Comm_Type::Serial;
    const int attempts = w.f.attempts();
    click(openWindow(w), isSerial ? "openBtn" : "cancelBtn");
    QVERIFY(!openWindow(w));
    QCOMPARE(w.f.attempts(), attempts + (isSerial ? 1 : 0));
}

void openPanel(World &w, const std::function<void()> &rest)
{
    click(w.f.window(), "tvxGateway");
    WAIT_VERIFY(childByName<QWidget>(openWindow(w), kCell)->isEnabled());
    rest();
}

/// The gateway takes the rate, as its link has not gone; the chain's session notes it for later.
void usePanel(World &w)
{
    click(openWindow(w), kCell);
    WAIT_COMPARE(w.gateway.lineCount("#007_1250:32"), 1);
    QCOMPARE(w.gateway.connectionCount(), 1);
    QCOMPARE(w.f.statusBox(), QStringLiteral("0.50 s"));
}

void useRates(World &w)
{
    QVERIFY(!childByName<QWidget>(openWindow(w), kCell)->isEnabled());
    click(openWindow(w), kCell);
    QCOMPARE(w.f.statusBox(), QStringLiteral("OFFLINE"));
}

void openFirmware(World &w, const std::function<void()> &rest)
{
    QTest::keyClick(w.f.window(), Qt::Key_U, Qt::ControlModifier);
    rest();
}

void openList(World &w, const std::function<void()> &rest)
{
    gestures::openList(w.f.rangeBox(2, 'B'));
    rest();
}

void nothing(World &) {}

const std::vector<Opened> &openedWindows()
{
    static const std::vector<Opened> all{
        {"offset of a channel",
         byClick([](World &w) { return w.f.strip(1, 'B'); }, "pushButton_ManualOffset"),
         QStringLiteral("Offset (modal)"), nullptr},
        {"connection", openConnectionDialog, QStringLiteral("Communication Settings (modal)"),
         useConnectionDialog, true},
        {"gateway panel", openPanel, QStringLiteral("ZRT Gateway settings (modal)"), usePanel},
        {"versions of a module", inRow(1, "pushButton_DeviceButton"),
         QStringLiteral("Module Version Info: Component version numbers"), nullptr},
        {"function of a channel", inRow(4, "pushButton_ChB"), QStringLiteral("Modify Channel Function"),
         nullptr},
        {"list of ranges", openList, QStringLiteral("QComboBoxPrivateContainer"), nullptr},
        {"protection", inTheWindow("pushButton_powModType"), QStringLiteral("Power settings (modal)"),
         nullptr},
        {"rates", inTheWindow("bitrateConfigBtn"), QStringLiteral("VX Sampling Rates (modal)"), useRates},
        {"report", inTheWindow("systemReportButton"), QStringLiteral("System Report (modal)"), nothing},
        {"help", inTheWindow("helpButton"), QStringLiteral("Help Manual"), nothing},
        {"firmware", openFirmware, QStringLiteral("Firmware Update"), nothing},
    };
    return all;
}

constexpr int kForEachLoss = 3; ///< of openedWindows(): a dialog of a row, two of the main window

} // namespace

Q_DECLARE_METATYPE(Loss)
Q_DECLARE_METATYPE(Opened)

/// The operator has something open when the link is lost. It is there until the rows go.
///
/// | Open                           | What the operator sees                                               |
/// |--------------------------------|----------------------------------------------------------------------|
/// | dialog, box or list of a row   | Goes with the row. Nothing is sent.                                  |
/// | or of the top row              |                                                                      |
/// | connection dialog              | Stays. "Select" opens the chosen link at once, and if that fails,    |
/// |                                | anew each 6 s from then on.                                          |
/// | gateway panel                  | Stays connected. A rate goes to the gateway, and not to the chain.   |
/// | rates                          | Stays; no cell can be clicked.                                       |
/// | report, help, firmware         | Stays; the report's table is empty.                                  |
///
/// No other window opens by the loss or by the return of the link, whatever the loss is.
class TstLinkLossDialogs : public QObject
{
    Q_OBJECT

private slots:
    void whatPopsUpIsSeen();
    void openWhenTheLinkIsLost_data();
    void openWhenTheLinkIsLost();

private:
    /// Returns some attempts or requests after the loss, with nothing open any more.
    static void loseWhileOpen(World &w, const Loss &loss, const Opened &opened);
};

/// The measure itself.
void TstLinkLossDialogs::whatPopsUpIsSeen()
{
    World w(LinkKind::Tcp);
    LossFixture &f = w.f;
    f.startUpTo(Moment::FirstReply);
    const QString before = f.sight();
    QMenu popup;
    popup.popup(QPoint());
    QCOMPARE(f.sight(), before + QStringLiteral(" | QMenu"));
    popup.close();
    QDialog dialog(f.window());
    dialog.setWindowTitle(QStringLiteral("Sudden"));
    dialog.open();
    f.window()->showWarning(QStringLiteral("Look out"));
    QCOMPARE(f.sight(), before + QStringLiteral(" | Sudden (modal) | Warning: Look out"));
    dialog.close();
    QCOMPARE(f.sight(), before + QStringLiteral(" | Warning: Look out"));
    openWindow(w)->close();
    QCOMPARE(f.sight(), before);
}

void TstLinkLossDialogs::loseWhileOpen(World &w, const Loss &loss, const Opened &opened)
{
    LossFixture &f = w.f;
    const QString before = f.sight();
    const QStringList windows = operatorview::windows(f);
    QCOMPARE(windows.size(), 1);
    QVERIFY2(windows.first().startsWith(opened.title), qPrintable(windows.first()));
    const QStringList staying = opened.use ? windows : QStringList();
    f.log.clear();
    loss.begin(w);
    QVERIFY(busyTurns() < kFewTurns);
    if (loss.patience > 0s)
        f.expectRowsToGo(before, loss.patience, staying);
    f.expectNothingShown(staying);
    QCOMPARE(operatorview::windows(f), staying);
    const int attempts = opened.choosesLink ? 3 : 2; // in the next 12 s
    if (loss.advises)
        LossFixture::announceAdvice(*w.port, attempts);
    if (opened.use)
        opened.use(w);
    const QStringList left = opened.choosesLink ? QStringList() : staying;
    QCOMPARE(operatorview::windows(f), left);
    f.pass(12s);
    QCOMPARE(f.sight().section(operatorview::kSeparator, 2),
             (QStringList{loss.later, operatorview::kNothing} + left).join(operatorview::kSeparator));
    if (openWindow(w))
        openWindow(w)->close();
}

void TstLinkLossDialogs::openWhenTheLinkIsLost_data()
{
    QTest::addColumn<Loss>("loss");
    QTest::addColumn<Opened>("opened");
    for (const Loss &loss : losses()) {
        for (const Opened &opened : openedWindows()) {
            const bool isFirstLoss = &loss == &losses().front();
            if (isFirstLoss || &opened < &openedWindows().front() + kForEachLoss)
                QTest::addRow("%s, %s", loss.name, opened.name) << loss << opened;
        }
    }
}

void TstLinkLossDialogs::openWhenTheLinkIsLost()
{
    QFETCH(Loss, loss);
    QFETCH(Opened, opened);
    World w(loss.kind);
    LossFixture &f = w.f;
    f.startUpTo(Moment::Cycle);
    f.window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.window()));
    bool ran = false;
    opened.open(w, [&] {
        loseWhileOpen(w, loss, opened);
        ran = true;
    });
    QVERIFY(ran);
    QCOMPARE(operatorview::windows(f), QStringList());
    f.log.clear();
    loss.end(w);
    f.pass(6s);
    f.expectWhole();
    f.poll(3s);
    QCOMPARE(f.commands(), QStringList());
}

QTEST_MAIN(TstLinkLossDialogs)

#include "tst_linkloss_dialogs.moc"
