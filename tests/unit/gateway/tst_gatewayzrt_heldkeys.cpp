#include "gateway/minmaxdialog.h"
#include "gatewaypanel.h"
#include "support/windowacts.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QMessageBox>

namespace {

constexpr int kRepeats = 10;

/// As the desktop does when a window opens, or when the one above it is closed.
bool activate(QWidget &window)
{
    QApplication::setActiveWindow(&window);
    return QTest::qWaitFor([&window] {
        const QWidget *focused = QApplication::focusWidget();
        return focused && focused->window() == &window;
    });
}

void hold(Qt::Key key)
{
    const QString text = key == Qt::Key_Space ? QStringLiteral(" ") : QString();
    for (int i = 0; i < kRepeats; ++i)
        windowacts::repeatKey(key, text);
}

bool isOpen(const GatewayPanel &p, const char *name)
{
    return childByName<QDialog>(p.dialog.get(), name)->isVisible();
}

void addKeys()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

} // namespace

/// Keys that stay down: each is meant once, for the window in which it was pressed.
class TstGatewayZrtHeldKeys : public QObject
{
    Q_OBJECT

private slots:
    void heldKeyOpensTheValueDialogAndNoMore_data() { addKeys(); }
    void heldKeyOpensTheValueDialogAndNoMore();
    void heldKeyAnswersTheValueDialogOnce_data() { addKeys(); }
    void heldKeyAnswersTheValueDialogOnce();
    void heldReturnLeavesTheDialogsAlone_data();
    void heldReturnLeavesTheDialogsAlone();
    void heldDigitsFillTheField();
    void heldEscapeOfADialogLeavesThePanel();
    void heldEscapeOfABoxLeavesThePanel();
    void heldEscapeOfAListLeavesThePanel();
};

void TstGatewayZrtHeldKeys::heldKeyOpensTheValueDialogAndNoMore()
{
    QFETCH(Qt::Key, key);
    GatewayPanel p;
    p.receiveStatus({{36, "64"}});
    p.takeLines();
    p.child("minBox")->setFocus();
    QTest::keyPress(p.child("minBox"), key);
    auto *dialog = p.openDialog<MinMaxDialog>("minMaxDialog");
    QVERIFY(dialog);
    QVERIFY(activate(*dialog));
    hold(key);
    QVERIFY(dialog->isVisible());
    QCOMPARE(childByName<QLineEdit>(dialog, "valueBox")->text(), QStringLiteral("64"));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtHeldKeys::heldKeyAnswersTheValueDialogOnce()
{
    QFETCH(Qt::Key, key);
    GatewayPanel p;
    p.receiveStatus({{36, "64"}});
    p.takeLines();
    p.child("minBox")->setFocus();
    QTest::keyClick(p.child("minBox"), Qt::Key_Return);
    auto *dialog = p.openDialog<MinMaxDialog>("minMaxDialog");
    QVERIFY(activate(*dialog));
    auto *ok = childByName<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok);
    ok->setFocus();
    QTest::keyClick(ok, key);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(p.takeLines(), QByteArray("#037_64\r"));
    QVERIFY(activate(*p.dialog));
    QVERIFY(p.child("minBox")->hasFocus());
    hold(key);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtHeldKeys::heldReturnLeavesTheDialogsAlone_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("value, field") << QByteArray("minMaxDialog") << QByteArray("valueBox");
    QTest::newRow("value, Cancel") << QByteArray("minMaxDialog") << QByteArray("cancelButton");
    QTest::newRow("server, field") << QByteArray("externIpAndPort") << QByteArray("portNo");
    QTest::newRow("server, Ok") << QByteArray("externIpAndPort") << QByteArray("okButton");
    QTest::newRow("address, field") << QByteArray("changeGatewayDialog") << QByteArray("IpAddress");
    QTest::newRow("address, Ok") << QByteArray("changeGatewayDialog") << QByteArray("okButton");
}

void TstGatewayZrtHeldKeys::heldReturnLeavesTheDialogsAlone()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, part);
    GatewayPanel p;
    auto *dialog = childByName<QDialog>(p.dialog.get(), name);
    dialog->show();
    QVERIFY(activate(*dialog));
    childByName<QWidget>(dialog, part)->setFocus();
    hold(Qt::Key_Return);
    QVERIFY(dialog->isVisible());
    QCOMPARE(p.takeLines(), QByteArray());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(!dialog->isVisible());
}

void TstGatewayZrtHeldKeys::heldDigitsFillTheField()
{
    const GatewayPanel p;
    auto *dialog = childByName<MinMaxDialog>(p.dialog.get(), "minMaxDialog");
    dialog->Slot_Execute({"Set Minimum", "", "Set Minimum"});
    QVERIFY(activate(*dialog));
    for (int i = 0; i < 3; ++i)
        windowacts::repeatKey(Qt::Key_7, "7");
    QCOMPARE(childByName<QLineEdit>(dialog, "valueBox")->text(), QStringLiteral("777"));
}

void TstGatewayZrtHeldKeys::heldEscapeOfADialogLeavesThePanel()
{
    const GatewayPanel p;
    p.child("minBox")->setFocus();
    QTest::keyClick(p.child("minBox"), Qt::Key_Return);
    auto *dialog = p.openDialog<MinMaxDialog>("minMaxDialog");
    QVERIFY(activate(*dialog));
    QTest::keyPress(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!isOpen(p, "minMaxDialog"));
    QVERIFY(activate(*p.dialog));
    QVERIFY(p.child("minBox")->hasFocus());
    hold(Qt::Key_Escape);
    QVERIFY(p.dialog->isVisible());
    QCOMPARE(p.sock->calls, QStringList{"connect"});
    QTest::keyClick(p.child("minBox"), Qt::Key_Escape);
    QVERIFY(!p.dialog->isVisible());
    QCOMPARE(p.sock->calls, (QStringList{"connect", "disconnect"}));
}

void TstGatewayZrtHeldKeys::heldEscapeOfABoxLeavesThePanel()
{
    const GatewayPanel p;
    p.child("rebootBtn")->setFocus();
    QTest::keyClick(p.child("rebootBtn"), Qt::Key_Space);
    auto *box = p.openDialog<QMessageBox>("rebootConfirmation");
    QVERIFY(activate(*box));
    QTest::keyPress(box, Qt::Key_Escape);
    QVERIFY(!box->isVisible());
    QVERIFY(activate(*p.dialog));
    QVERIFY(p.child("rebootBtn")->hasFocus());
    hold(Qt::Key_Escape);
    QVERIFY(p.dialog->isVisible());
    QCOMPARE(p.sock->calls, QStringList{"connect"});
}

void TstGatewayZrtHeldKeys::heldEscapeOfAListLeavesThePanel()
{
    const GatewayPanel p;
    auto *list = p.child<QComboBox>("comboPTP");
    list->setFocus();
    list->showPopup();
    QTRY_VERIFY(list->view()->isVisible());
    QTest::keyPress(list->view(), Qt::Key_Escape);
    QTRY_VERIFY(!list->view()->isVisible());
    QVERIFY(activate(*p.dialog));
    hold(Qt::Key_Escape);
    QVERIFY(p.dialog->isVisible());
    QCOMPARE(p.sock->calls, QStringList{"connect"});
}

QTEST_MAIN(TstGatewayZrtHeldKeys)
#include "tst_gatewayzrt_heldkeys.moc"
