#include "app/dynamicmodulesframe_view.h"
#include "app/initmodulenotfound_view.h"
#include "base/gui/fonts.h"
#include "mainwindowfixture.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>
#include <QStatusBar>
#include <QToolBar>

namespace {

QStringList describe(const QLayout *layout)
{
    QStringList texts;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        texts.append(item->widget() ? item->widget()->objectName()
                                    : QString::number(item->sizeHint().width()));
    }
    return texts;
}

} // namespace

class TstFrameworkView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void titleNamesTheVersion();
    void iconGetsItsLargePicturesOnceItIsPainted();
    void onlyTheHeightIsResizable();
    void barStandsInItsOrder();
    void widgetsOfTheBarAreAsAgreed();
    void barFitsTheWindow_data();
    void barFitsTheWindow();
    void longNoticeDoesNotWidenTheWindow();
    void labelsOfTheStatusBarAreAsAgreed();
    void actionsAreOutOfReach();
    void loadActionOnlyEmitsItsSignal();
    void panelAndFrameStandBelowTheBar();
    void rowsArePassedOnToTheFrame();
    void barFollowsTheTabKey();
    void everyControlHasANameAndAnAccessibleName();
    void systemReportButtonAsksForTheReport_data();
    void systemReportButtonAsksForTheReport();

    void windowStateIsStoredAndRestored();
    void windowStateBringsBackTheCorners();
    void storedGeometryNeverBreaksTheSize_data();
    void storedGeometryNeverBreaksTheSize();
    void brokenStoredStateIsIgnored();
    void closingEndsTheEventLoop();

private:
    std::unique_ptr<MainWindowFixture> m;
};

void TstFrameworkView::initTestCase()
{
    fonts::installSubstitutions();
    QApplication::setFont(fonts::text());
    QApplication::setQuitOnLastWindowClosed(false);
}

void TstFrameworkView::init()
{
    m = std::make_unique<MainWindowFixture>();
}

void TstFrameworkView::cleanup()
{
    m.reset();
}

void TstFrameworkView::titleNamesTheVersion()
{
    QCOMPARE(m->view->windowTitle(), QString("Torvex Configurator (V1.1.62)"));
    QVERIFY(!m->view->windowIcon().isNull());
}

void TstFrameworkView::iconGetsItsLargePicturesOnceItIsPainted()
{
    const QSize large(256, 256);
    QVERIFY(!m->view->windowIcon().availableSizes().contains(large)); // the start does not wait for them
    m->show();
    QTRY_VERIFY(m->view->windowIcon().availableSizes().contains(large));
}

void TstFrameworkView::onlyTheHeightIsResizable()
{
    QCOMPARE(m->view->size(), QSize(1160, 500));
    QCOMPARE(m->view->minimumSize(), QSize(1160, 500));
    QCOMPARE(m->view->maximumSize(), QSize(1160, QWIDGETSIZE_MAX));
    QVERIFY(m->view->documentMode());
}

void TstFrameworkView::barStandsInItsOrder()
{
    const auto *bar = m->child<QHBoxLayout>("topLayout");
    const QStringList expected{"3",
                               "configButton",
                               "ipEdit",
                               "comEdit",
                               "connectionLamp",
                               "txLamp",
                               "rxLamp",
                               "10",
                               "updateLabel",
                               "60",
                               "119",
                               "helpButton",
                               "16",
                               "systemReportButton",
                               "2",
                               "2",
                               "statusBox",
                               "10"};
    QCOMPARE(describe(bar), expected);
    QCOMPARE(bar->spacing(), 5);
    for (int i = 0; i < bar->count(); ++i) {
        if (bar->itemAt(i)->widget())
            QCOMPARE(bar->itemAt(i)->alignment(), Qt::Alignment(Qt::AlignTop));
    }
}

void TstFrameworkView::widgetsOfTheBarAreAsAgreed()
{
    m->show();
    const auto *config = m->child<QPushButton>("configButton");
    QCOMPARE(config->text(), QString("Config Communication"));
    QCOMPARE(config->size(), QSize(140, 23));

    const auto *ip = m->child<QLineEdit>("ipEdit");
    QVERIFY(ip->isReadOnly());
    QCOMPARE(ip->text(), QString("192.168.0.62"));
    QCOMPARE(ip->width(), 110);

    const auto *com = m->child<QLineEdit>("comEdit");
    QVERIFY(com->isReadOnly());
    QCOMPARE(com->placeholderText(), QString("COM "));
    QCOMPARE(com->text(), QString());
    QCOMPARE(com->toolTip(), QString("Click to change COM settings"));
    QCOMPARE(com->width(), 55);

    QVERIFY(m->child<QLineEdit>("connectionLamp")->isReadOnly());
    QCOMPARE(m->child<QLineEdit>("connectionLamp")->maximumSize(), QSize(16, 20));
    for (const char *name : {"rxLamp", "txLamp"}) {
        QVERIFY(m->child<QLineEdit>(name)->isReadOnly());
        QCOMPARE(m->child<QLineEdit>(name)->maximumSize(), QSize(20, 20));
    }
    QCOMPARE(m->child<QLineEdit>("rxLamp")->text(), QString("Rx"));
    QCOMPARE(m->child<QLineEdit>("txLamp")->text(), QString("Tx"));

    const auto *help = m->child<QPushButton>("helpButton");
    QCOMPARE(help->text(), QString("?"));
    QCOMPARE(help->maximumSize(), QSize(16, 20));
    const auto *report = m->child<QPushButton>("systemReportButton");
    QCOMPARE(report->text(), QString("System Report"));
    QCOMPARE(report->size(), QSize(119, 23));
    QCOMPARE(m->child<QLabel>("updateLabel")->maximumSize(), QSize(300, 17));

    const auto *box = m->child<QLineEdit>("statusBox");
    QVERIFY(box->isReadOnly());
    QCOMPARE(box->size(), QSize(90, 24));
    QCOMPARE(box->font().pixelSize(), 12);
    QCOMPARE(box->alignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(box->toolTip(), QString("Software busy indicator"));
}

void TstFrameworkView::barFitsTheWindow_data()
{
    QTest::addColumn<QString>("family");
    QTest::newRow("Open Sans") << "Open Sans";
    QTest::newRow("DejaVu Sans") << "DejaVu Sans";
}

void TstFrameworkView::barFitsTheWindow()
{
    QFETCH(QString, family);
    QFont font = fonts::text();
    font.setFamily(family);
    for (QWidget *widget : m->view->findChildren<QWidget *>())
        widget->setFont(font);
    m->view->Slot_ModulesRead(128);
    m->child<QLineEdit>("comEdit")->setText(QStringLiteral("COM150"));
    m->child<QLineEdit>("ipEdit")->setText(QStringLiteral("255.255.255.255"));
    m->show();

    QCOMPARE(m->view->width(), 1160);
    const QRect room = m->view->centralWidget()->rect();
    const auto *bar = m->child<QHBoxLayout>("topLayout");
    int right = 0;
    for (int i = 0; i < bar->count(); ++i) {
        const QWidget *widget = bar->itemAt(i)->widget();
        if (!widget)
            continue;
        QVERIFY2(room.contains(widget->geometry()), qPrintable(widget->objectName()));
        QVERIFY2(widget->x() >= right, qPrintable(widget->objectName()));
        right = widget->geometry().right();
        const QString text = widget->property("text").toString();
        const int needed = QFontMetrics(widget->font()).horizontalAdvance(text);
        QVERIFY2(needed + 2 <= widget->width(), qPrintable(widget->objectName()));
    }
}

void TstFrameworkView::longNoticeDoesNotWidenTheWindow()
{
    m->show();
    const int report = m->child<QPushButton>("systemReportButton")->x();
    m->view->UpdateVersion(QString(200, QLatin1Char('9')) + QStringLiteral(".9.9"));
    m->time.turn();
    QVERIFY(m->child<QLabel>("updateLabel")->isVisible());
    QCOMPARE(m->view->width(), 1160);
    QVERIFY(m->view->centralWidget()->minimumSizeHint().width() <= 1160);
    QCOMPARE(m->child<QPushButton>("systemReportButton")->x(), report);
}

void TstFrameworkView::labelsOfTheStatusBarAreAsAgreed()
{
    m->show();
    const auto *text = m->child<QLabel>("statusLabel");
    QCOMPARE(text->text(), QString("THis is a test message"));
    QCOMPARE(text->maximumHeight(), 17);
    QCOMPARE(text->minimumWidth(), 900);
    const auto *clock = m->child<QLabel>("clockLabel");
    QCOMPARE(clock->styleSheet(), QString("color: black"));
    QCOMPARE(clock->maximumHeight(), 17);
    QCOMPARE(clock->minimumWidth(), 60);

    // A permanent widget stays while a passing message covers the others.
    m->view->statusBar()->showMessage(QStringLiteral("x"));
    QVERIFY(clock->isVisible());
    QVERIFY(!text->isVisible());
}

void TstFrameworkView::actionsAreOutOfReach()
{
    QStringList texts;
    for (const QAction *action : m->view->findChildren<QAction *>(QRegularExpression("^action"))) {
        texts.append(action->text());
        QVERIFY(action->associatedWidgets().isEmpty());
        QVERIFY(action->shortcut().isEmpty());
    }
    texts.sort();
    QCOMPARE(texts, QStringList({"Load Configuration from File", "Save Configuration to File",
                                 "Save Modules Configuration", "Serial Communication"}));
    QVERIFY(m->view->findChildren<QMenuBar *>().isEmpty());
    QVERIFY(m->view->findChildren<QToolBar *>().isEmpty());
}

void TstFrameworkView::loadActionOnlyEmitsItsSignal()
{
    QSignalSpy load(m->view.get(), &Framework_View::Signal_LoadCsvFile);
    m->child<QAction>("actionLoad_Configuration_from_File")->trigger();
    QCOMPARE(load.count(), 1);
}

void TstFrameworkView::panelAndFrameStandBelowTheBar()
{
    auto *panel = new QWidget;
    panel->setMinimumHeight(60);
    auto *frame = new DynamicModulesFrame_View;
    m->view->addSystemPanel(panel);
    m->view->addModuleFrame(frame);
    m->show();
    const auto *layout = m->view->centralWidget()->layout();
    QVERIFY(qobject_cast<const QVBoxLayout *>(layout));
    QCOMPARE(layout->count(), 3);
    QCOMPARE(layout->itemAt(0)->layout(), m->child<QHBoxLayout>("topLayout"));
    QCOMPARE(layout->itemAt(1)->widget(), panel);
    QCOMPARE(layout->itemAt(2)->widget(), frame);
    QVERIFY(panel->y() >= m->child<QLineEdit>("statusBox")->geometry().bottom());
    QVERIFY(frame->y() >= panel->geometry().bottom());
    QVERIFY(frame->height() > 300);
}

void TstFrameworkView::rowsArePassedOnToTheFrame()
{
    auto *frame = new DynamicModulesFrame_View;
    m->view->addModuleFrame(frame);
    auto *controller = new InitModuleNotFound_View(1);
    auto *module = new InitModuleNotFound_View(3);
    m->view->addController(controller);
    m->view->addModule(module, 5);
    const auto *modules = m->child<QGridLayout>("modulesLayout");
    QCOMPARE(m->child<QGridLayout>("controllerLayout")->itemAtPosition(0, 0)->widget(), controller);
    QCOMPARE(modules->itemAtPosition(5, 0)->widget(), module);
    m->view->removeModule(module);
    QCOMPARE(modules->count(), 0);
    delete module;
    // The frame may go before the window does.
    delete frame;
}

void TstFrameworkView::barFollowsTheTabKey()
{
    m->show();
    m->child<QPushButton>("configButton")->setFocus(Qt::TabFocusReason);
    QStringList order;
    for (int i = 0; i < 5; ++i) {
        order.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({"configButton", "ipEdit", "comEdit", "helpButton", "systemReportButton"}));
}

void TstFrameworkView::everyControlHasANameAndAnAccessibleName()
{
    m->view->addModuleFrame(new DynamicModulesFrame_View);
    const auto widgets = m->view->centralWidget()->findChildren<QWidget *>();
    int controls = 0;
    for (const QWidget *widget : widgets) {
        const bool isControl = qobject_cast<const QAbstractButton *>(widget) ||
                               qobject_cast<const QLineEdit *>(widget) || widget->inherits("QScrollArea");
        if (!isControl)
            continue;
        ++controls;
        QVERIFY(!widget->objectName().isEmpty());
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
    QCOMPARE(controls, 10);
}

void TstFrameworkView::systemReportButtonAsksForTheReport_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("mouse") << false;
    QTest::newRow("key") << true;
}

void TstFrameworkView::systemReportButtonAsksForTheReport()
{
    QFETCH(bool, byKey);
    m->show();
    QSignalSpy list(m->view.get(), &Framework_View::Signal_SystemList);
    auto *button = m->child<QPushButton>("systemReportButton");
    if (byKey)
        QTest::keyClick(button, Qt::Key_Space);
    else
        QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(list.count(), 1);
}

void TstFrameworkView::windowStateIsStoredAndRestored()
{
    m->show();
    m->view->resize(1160, 640);
    m->view->move(20, 30);
    const QByteArray state = m->view->saveState();
    m->view->close();
    const auto settings = MainWindowFixture::windowSettings();
    QVERIFY(settings->fileName().startsWith(m->folder.path()));
    QVERIFY(!settings->value(QStringLiteral("geometry")).toByteArray().isEmpty());
    QCOMPARE(settings->value(QStringLiteral("windowState")).toByteArray(), state);

    m->restart();
    QCOMPARE(m->view->size(), QSize(1160, 640));
}

void TstFrameworkView::windowStateBringsBackTheCorners()
{
    // The corners are the part of a window state that shows in a window without tool bars and docks.
    QCOMPARE(m->view->corner(Qt::TopLeftCorner), Qt::TopDockWidgetArea);
    m->view->setCorner(Qt::TopLeftCorner, Qt::LeftDockWidgetArea);
    m->show();
    m->view->close();
    m->restart();
    QCOMPARE(m->view->corner(Qt::TopLeftCorner), Qt::LeftDockWidgetArea);
}

void TstFrameworkView::storedGeometryNeverBreaksTheSize_data()
{
    QTest::addColumn<QSize>("stored");
    QTest::addColumn<int>("height");
    QTest::newRow("too wide") << QSize(1600, 700) << 700;
    QTest::newRow("too narrow") << QSize(600, 700) << 700;
    QTest::newRow("too low") << QSize(1160, 200) << 500;
    QTest::newRow("as agreed") << QSize(1160, 560) << 560;
}

void TstFrameworkView::storedGeometryNeverBreaksTheSize()
{
    QFETCH(QSize, stored);
    QFETCH(int, height);
    QWidget other;
    other.resize(stored);
    MainWindowFixture::windowSettings()->setValue(QStringLiteral("geometry"), other.saveGeometry());
    m->restart();
    m->show();
    QCOMPARE(m->view->size(), QSize(1160, height));
}

void TstFrameworkView::brokenStoredStateIsIgnored()
{
    {
        const auto settings = MainWindowFixture::windowSettings();
        settings->setValue(QStringLiteral("geometry"), QByteArray("no geometry"));
        settings->setValue(QStringLiteral("windowState"), QByteArray("\x01\x02"));
    }
    m->restart();
    QCOMPARE(m->view->size(), QSize(1160, 500));
}

void TstFrameworkView::closingEndsTheEventLoop()
{
    m->show();
    m->view->displayHelp();
    QApplication::setQuitOnLastWindowClosed(true);
    QTimer::singleShot(0, m->view.get(), &QWidget::close);
    QTimer::singleShot(10000, this, [] { QApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
    QApplication::setQuitOnLastWindowClosed(false);
}

QTEST_MAIN(TstFrameworkView)

#include "tst_framework_view.moc"
