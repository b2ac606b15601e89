#include "gateway/minmaxdialog.h"
#include "gatewaypanel.h"
#include "support/windowacts.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QScrollBar>

namespace {

const QList<const char *> kLists{"comboMode", "comboPTP", "comboSimultn", "comboActivCOM",
                                 "comboBoxDataPtcl"};

} // namespace

/// What the mouse does without meaning it.
class TstGatewayZrtGestures : public QObject
{
    Q_OBJECT

private slots:
    void wheelOverAListWithTheFocusDoesNothing();
    void wheelOverAPickedListDoesNothing();
    void wheelScrollsAnOpenList();
    void secondPressOpensNothing();
};

void TstGatewayZrtGestures::wheelOverAListWithTheFocusDoesNothing()
{
    GatewayPanel p;
    for (const char *name : kLists) {
        auto *list = p.child<QComboBox>(name);
        list->setFocus();
        QVERIFY2(list->hasFocus(), name);
        for (int index = 0; index < list->count(); ++index) {
            list->setCurrentIndex(index);
            windowacts::turnWheel(*list, true);
            windowacts::turnWheel(*list, true);
            QCOMPARE(list->currentIndex(), index);
            windowacts::turnWheel(*list, false);
            QCOMPARE(list->currentIndex(), index);
        }
    }
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtGestures::wheelOverAPickedListDoesNothing()
{
    GatewayPanel p;
    auto *list = p.child<QComboBox>("comboSimultn");
    list->setFocus();
    list->showPopup();
    QTRY_VERIFY(list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
    QTRY_VERIFY(!list->view()->isVisible());
    QCOMPARE(p.takeLines(), QByteArray("#006_1\r"));
    QVERIFY(list->hasFocus());
    windowacts::turnWheel(*list, false);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtGestures::wheelScrollsAnOpenList()
{
    const GatewayPanel p;
    auto *list = p.child<QComboBox>("comboSimultn");
    list->setStyleSheet("QComboBox { combobox-popup: 0; }"); // as in styles that limit the list's height
    list->setMaxVisibleItems(3);
    list->showPopup();
    QTRY_VERIFY(list->view()->isVisible());
    const QScrollBar *bar = list->view()->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    windowacts::turnWheel(*list->view()->viewport(), false);
    QVERIFY(bar->value() > 0);
    list->hidePopup();
}

void TstGatewayZrtGestures::secondPressOpensNothing()
{
    GatewayPanel p;
    QSignalSpy asked(p.dialog.get(), &GatewayZRT::Signal_displayMinMax);
    for (const char *name : {"minBox", "maxBox"}) {
        QWidget *box = p.child(name);
        QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(3, 3), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(box, &second);
    }
    QCOMPARE(asked.size(), 0);
    QVERIFY(!childByName<MinMaxDialog>(p.dialog.get(), "minMaxDialog")->isVisible());
}

QTEST_MAIN(TstGatewayZrtGestures)
#include "tst_gatewayzrt_gestures.moc"
