#include "gatewaypanel.h"

#include <QLabel>
#include <QMessageBox>

/// Fonts and names that the form cannot give.
class TstGatewayZrtLook : public QObject
{
    Q_OBJECT

private slots:
    void labelsAreSmall();
    void buttonsOfTheBoxesAreNamed_data();
    void buttonsOfTheBoxesAreNamed();
};

void TstGatewayZrtLook::labelsAreSmall()
{
    const GatewayPanel p;
    int headings = 0;
    const auto labels = p.dialog->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->window() != p.dialog.get())
            continue;
        QCOMPARE(label->font().family(), QStringLiteral("Segoe UI"));
        QCOMPARE(label->font().pixelSize(), 11);
        headings += p.table()->isAncestorOf(label) ? 1 : 0;
    }
    QCOMPARE(headings, 15);
}

void TstGatewayZrtLook::buttonsOfTheBoxesAreNamed_data()
{
    QTest::addColumn<QByteArray>("opener");
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("proceed");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("reboot") << QByteArray("rebootBtn") << QByteArray("rebootConfirmation") << "Proceed"
                            << "Abort";
    QTest::newRow("restart") << QByteArray("restartBtn") << QByteArray("restartConfirmation") << "Proceed"
                             << "Abort";
    QTest::newRow("address") << QByteArray("ChangeGateway") << QByteArray("addressConfirmation") << "Yes"
                             << "Cancel";
}

void TstGatewayZrtLook::buttonsOfTheBoxesAreNamed()
{
    QFETCH(QByteArray, opener);
    QFETCH(QByteArray, box);
    const GatewayPanel p;
    p.click(opener);
    const auto *question = p.openDialog<QMessageBox>(box);
    QVERIFY(question);
    const auto *proceed = childByName<QPushButton>(question, "proceedButton");
    const auto *refusal = childByName<QPushButton>(question, "refusalButton");
    QCOMPARE(question->standardButton(const_cast<QPushButton *>(proceed)), QMessageBox::Yes);
    QTEST(proceed->accessibleName(), "proceed");
    QTEST(refusal->accessibleName(), "refusal");
    QVERIFY(refusal->isDefault());
}

QTEST_MAIN(TstGatewayZrtLook)
#include "tst_gatewayzrt_look.moc"
