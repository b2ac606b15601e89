#include "gatewaypanel.h"
#include "support/windowacts.h"

namespace {

/// As the desktop ends the session: the program hears of it, and then all its windows are closed.
void endSession()
{
    const int signal = qApp->metaObject()->indexOfSignal("commitDataRequest(QSessionManager&)");
    QVERIFY(signal >= 0);
    void *noManager[] = {nullptr, nullptr}; // there is none in a test, and no receiver asks for it
    QMetaObject::activate(qApp, signal, noManager);
    QApplication::closeAllWindows();
}

} // namespace

/// The ways in which the panel's window is closed: the link stays up in each of them.
class TstGatewayZrtClose : public QObject
{
    Q_OBJECT

private slots:
    void titleBarIsRefusedAndHidesThePanel();
    void endOfTheSessionClosesAllWindows_data();
    void endOfTheSessionClosesAllWindows();
    void panelOpensAgain();

private:
    static void verifyThatTheLinkIsUp(GatewayPanel &p);
};

void TstGatewayZrtClose::verifyThatTheLinkIsUp(GatewayPanel &p)
{
    QVERIFY(!p.dialog->isVisible());
    QCOMPARE(p.sock->calls, QStringList{"connect"});
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    p.receive("]----");
    p.takeLines();
    p.time.advance(2000);
    QCOMPARE(p.takeLines(), QByteArray("#?\r#?\r"));
}

void TstGatewayZrtClose::titleBarIsRefusedAndHidesThePanel()
{
    GatewayPanel p;
    QVERIFY(!windowacts::closeByTitleBar(*p.dialog));
    verifyThatTheLinkIsUp(p);
}

void TstGatewayZrtClose::endOfTheSessionClosesAllWindows_data()
{
    QTest::addColumn<bool>("isModal");
    QTest::newRow("modal panel") << true; // as it opens; a modal window is closed first
    QTest::newRow("other panel") << false;
}

void TstGatewayZrtClose::endOfTheSessionClosesAllWindows()
{
    QFETCH(bool, isModal);
    GatewayPanel p;
    QWidget other;
    other.show();
    p.dialog->hide();
    p.dialog->setModal(isModal);
    p.dialog->show();
    endSession();
    QVERIFY(!other.isVisible());
    verifyThatTheLinkIsUp(p);
}

void TstGatewayZrtClose::panelOpensAgain()
{
    GatewayPanel p;
    windowacts::closeByTitleBar(*p.dialog);
    p.dialog->show();
    QVERIFY(p.dialog->isVisible());
    QCOMPARE(p.sock->calls, QStringList{"connect"});
}

QTEST_MAIN(TstGatewayZrtClose)
#include "tst_gatewayzrt_close.moc"
