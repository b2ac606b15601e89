#include "modules/widgets/customt3spinbox.h"
#include "modules/widgets/filterspinbox.h"
#include "modules/widgets/fixedplaces.h"
#include "support/virtualtime.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

/// Counts how often a widget is asked to lay out its children.
class LayoutRequests : public QObject
{
public:
    explicit LayoutRequests(QWidget &widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            ++count;
        return false;
    }

    int count = 0;
};

class TstFixedPlaces : public QObject
{
    Q_OBJECT

private slots:
    void childrenStayInTheirPlaces();
    void changesOfAChildAskForNoLayout_data();
    void changesOfAChildAskForNoLayout();
    void holdsNothing();
    void filterBoxAsksForNoLayout();
    void thermoFilterBoxAsksForNoLayout();
};

namespace {

const QString kRed = QStringLiteral("color:#C00000");
const QRect kPlace(7, 5, 60, 20);

void show(QWidget &window)
{
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        qFatal("the window does not show");
    QCoreApplication::processEvents();
}

/// Layout requests to the box and to what holds it when the style of the box changes.
int requestsOfStyle(QWidget &box, QWidget &window)
{
    LayoutRequests ofBox(box);
    LayoutRequests ofWindow(window);
    box.setStyleSheet(kRed);
    QCoreApplication::processEvents();
    return ofBox.count + ofWindow.count;
}

} // namespace

void TstFixedPlaces::childrenStayInTheirPlaces()
{
    QWidget window;
    window.setLayout(new FixedPlaces);
    auto *label = new QLabel(QStringLiteral("text"), &window);
    label->setGeometry(kPlace);
    show(window);
    window.resize(300, 200);
    label->setText(QStringLiteral("a text that is far too long for its place"));
    label->hide();
    label->show();
    QCoreApplication::processEvents();
    QCOMPARE(label->geometry(), kPlace);
    QVERIFY(label->isVisible());
    QCOMPARE(window.size(), QSize(300, 200));
}

void TstFixedPlaces::changesOfAChildAskForNoLayout_data()
{
    QTest::addColumn<bool>("fixed");
    QTest::newRow("a layout that moves nothing") << true;
    QTest::newRow("no layout") << false;
}

void TstFixedPlaces::changesOfAChildAskForNoLayout()
{
    QFETCH(bool, fixed);
    QWidget window;
    if (fixed)
        window.setLayout(new FixedPlaces);
    auto *edit = new QLineEdit(&window);
    edit->setGeometry(kPlace);
    show(window);
    LayoutRequests requests(window);
    edit->setStyleSheet(kRed);
    QCoreApplication::processEvents();
    QCOMPARE(requests.count, fixed ? 0 : 1);
}

void TstFixedPlaces::holdsNothing()
{
    FixedPlaces places;
    places.addItem(new QSpacerItem(10, 10));
    QCOMPARE(places.count(), 0);
    QVERIFY(!places.itemAt(0));
    QVERIFY(!places.takeAt(0));
    QVERIFY(!places.sizeHint().isValid());
}

void TstFixedPlaces::filterBoxAsksForNoLayout()
{
    QWidget window;
    window.setLayout(new FixedPlaces);
    VirtualTime time;
    FilterSpinBox box(time, &window);
    box.setGeometry(kPlace);
    show(window);
    const QRect edit = box.findChild<QLineEdit *>()->geometry();
    QCOMPARE(requestsOfStyle(box, window), 0);
    QCOMPARE(box.findChild<QLineEdit *>()->geometry(), edit);
    QCOMPARE(box.geometry(), kPlace);
}

void TstFixedPlaces::thermoFilterBoxAsksForNoLayout()
{
    QWidget window;
    window.setLayout(new FixedPlaces);
    CustomT3SpinBox box(&window);
    box.setGeometry(kPlace);
    show(window);
    QCOMPARE(requestsOfStyle(box, window), 0);
    box.resize(100, 24);
    QVERIFY(box.findChild<QLineEdit *>()->width() > 60); // the box still places its edit
}

QTEST_MAIN(TstFixedPlaces)

#include "tst_fixedplaces.moc"
