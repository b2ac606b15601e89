#include "app/dynamicmodulesframe_view.h"
#include "app/initmodulenotfound_view.h"
#include "base/gui/fonts.h"
#include "controller/modulecontroller_view.h"
#include "mainwindowfixture.h"
#include "modules/moduledevice_view.h"

#include <QApplication>
#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>

/// The rows in the real window at its smallest size.
class TstRowsInWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void controllerRowStandsWhole_data();
    void controllerRowStandsWhole();
    void moduleRowsStandWhole_data();
    void moduleRowsStandWhole();
    void placeholderLeavesTheListItsRoom();

private:
    void addModules(int count);

    std::unique_ptr<MainWindowFixture> m;
    QVector<ModuleDevice_View *> m_rows; // they belong to the window
};

void TstRowsInWindow::initTestCase()
{
    fonts::installSubstitutions();
    QApplication::setFont(fonts::text());
}

void TstRowsInWindow::init()
{
    m = std::make_unique<MainWindowFixture>();
    m->view->addModuleFrame(new DynamicModulesFrame_View);
}

void TstRowsInWindow::cleanup()
{
    m.reset();
    m_rows.clear();
}

void TstRowsInWindow::addModules(int count)
{
    for (int i = 0; i < count; ++i) {
        ModuleIdentification identification;
        identification.headerForm = HeaderForm::StrainGauge;
        m_rows.append(
            new ModuleDevice_View(i + 1, identification, ModuleMeasurement(), 2 * i + 1, 2 * i + 2));
        m->view->addModule(m_rows.last(), i);
    }
}

void TstRowsInWindow::controllerRowStandsWhole_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    for (const char *style : {"Fusion", "Windows"}) {
        for (const int modules : {0, 1, 3, 4, 5, 128}) {
            QTest::addRow("%s, %d before the window is shown", style, modules)
                << QString(style) << modules << 0;
        }
        QTest::addRow("%s, 128 after it is shown", style) << QString(style) << 0 << 128;
    }
}

void TstRowsInWindow::controllerRowStandsWhole()
{
    QFETCH(QString, style);
    QFETCH(int, before);
    QFETCH(int, after);
    QApplication::setStyle(style);
    auto *row = new ModuleController_View(1);
    m->view->addController(row);
    addModules(before);
    m->show();
    addModules(after);
    QCoreApplication::processEvents();

    QCOMPARE(m->view->size(), QSize(1160, 500));
    QVERIFY2(row->height() >= row->layout()->totalMinimumSize().height(),
             qPrintable(QStringLiteral("%1 of %2 pixels")
                            .arg(row->height())
                            .arg(row->layout()->totalMinimumSize().height())));
    QVERIFY(row->parentWidget()->contentsRect().contains(row->geometry()));
    // What the rest of the window leaves belongs to the list.
    const QWidget *frame = row->parentWidget();
    QCOMPARE(frame->height(), qMax(frame->minimumHeight(), frame->sizeHint().height()));
    QVERIFY(m->child<QScrollArea>("scrollArea")->viewport()->height() > 250);
}

void TstRowsInWindow::moduleRowsStandWhole_data()
{
    QTest::addColumn<QString>("style");
    QTest::newRow("Fusion") << "Fusion";
    QTest::newRow("Windows") << "Windows";
}

void TstRowsInWindow::moduleRowsStandWhole()
{
    QFETCH(QString, style);
    QApplication::setStyle(style);
    m->view->addController(new ModuleController_View(1));
    addModules(5);
    m->show();
    QCoreApplication::processEvents();
    for (const ModuleDevice_View *row : m_rows) {
        QVERIFY(row->height() >= row->layout()->totalMinimumSize().height());
        QVERIFY(row->width() >= row->layout()->totalMinimumSize().width());
        for (const char *area : {"channelArea_A", "channelArea_B"})
            QVERIFY(row->contentsRect().contains(childByName<QWidget>(row, area)->geometry()));
    }
    QVERIFY(!m->child<QScrollArea>("scrollArea")->horizontalScrollBar()->isVisible());
}

void TstRowsInWindow::placeholderLeavesTheListItsRoom()
{
    m->view->addController(new InitModuleNotFound_View(1));
    m->view->addModule(new InitModuleNotFound_View(3), 0);
    m->show();
    QVERIFY(m->child<QFrame>("controllerFrame")->height() <= 150);
    QVERIFY(m->child<QScrollArea>("scrollArea")->viewport()->height() > 200);
}

QTEST_MAIN(TstRowsInWindow)

#include "tst_rowsinwindow.moc"
