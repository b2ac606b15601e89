#include "app/dynamicmodulesframe_view.h"

#include "app/initmodulenotfound_view.h"
#include "support/childbyname.h"
#include "support/messagecatcher.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>
#include <memory>

class TstDynamicModulesFrameView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void frameIsBuiltAsAgreed();
    void controllerSlotIsBuiltAsAgreed();
    void scrollAreaIsBuiltAsAgreed();
    void controllerGoesToItsSlot();
    void newControllerTakesTheCellOfADeletedOne();
    void moduleGoesToItsRow();
    void oneModuleSitsAtTheTop();
    void removedModuleLeavesTheLayoutAndLives();
    void deletedPlaceholderFreesItsRow();
    void placeholdersTellWhatIsMissing();
    void secondPlaceholderStaysWhenAControllerComes();
    void allModulesOfAFullChainStandInOrder();

private:
    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(m_frame.get(), name);
    }

    QGridLayout *controllerLayout() const { return child<QGridLayout>("controllerLayout"); }
    QGridLayout *modulesLayout() const { return child<QGridLayout>("modulesLayout"); }
    void show();

    std::unique_ptr<DynamicModulesFrame_View> m_frame;
};

void TstDynamicModulesFrameView::init()
{
    m_frame = std::make_unique<DynamicModulesFrame_View>();
}

void TstDynamicModulesFrameView::cleanup()
{
    m_frame.reset();
}

void TstDynamicModulesFrameView::show()
{
    m_frame->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_frame.get()));
}

void TstDynamicModulesFrameView::frameIsBuiltAsAgreed()
{
    QCOMPARE(m_frame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(m_frame->frameShadow(), QFrame::Sunken);
    QCOMPARE(m_frame->minimumSize(), QSize(330, 200));
    QCOMPARE(m_frame->size(), QSize(1238, 652));

    const auto *outer = qobject_cast<QGridLayout *>(m_frame->layout());
    QVERIFY(outer);
    QCOMPARE(outer->verticalSpacing(), 0);
    QCOMPARE(outer->contentsMargins(), QMargins(0, 0, 6, 0));

    const auto *group = qobject_cast<QGroupBox *>(outer->itemAtPosition(0, 0)->widget());
    QVERIFY(group);
    QVERIFY(group->isFlat());
    QVERIFY(group->isEnabled());
    QCOMPARE(group->title(), QString());

    const auto *inner = qobject_cast<QGridLayout *>(group->layout());
    QVERIFY(inner);
    const auto *box = qobject_cast<QVBoxLayout *>(inner->itemAtPosition(0, 0)->layout());
    QVERIFY(box);
    QCOMPARE(inner->spacing(), 0);
    QCOMPARE(inner->contentsMargins(), QMargins());
    QCOMPARE(box->spacing(), 0);
    QCOMPARE(box->contentsMargins(), QMargins());
    QCOMPARE(box->itemAt(0)->widget(), child<QFrame>("controllerFrame"));
    QCOMPARE(box->itemAt(1)->widget(), child<QScrollArea>("scrollArea"));
}

void TstDynamicModulesFrameView::controllerSlotIsBuiltAsAgreed()
{
    const auto *slot = child<QFrame>("controllerFrame");
    QCOMPARE(slot->frameShape(), QFrame::StyledPanel);
    QCOMPARE(slot->frameShadow(), QFrame::Sunken);
    QCOMPARE(slot->minimumHeight(), 80);
    QCOMPARE(slot->maximumHeight(), 150);
    QCOMPARE(slot->layout(), controllerLayout());
    QCOMPARE(controllerLayout()->spacing(), 0);
    QCOMPARE(controllerLayout()->contentsMargins(), QMargins());
}

void TstDynamicModulesFrameView::scrollAreaIsBuiltAsAgreed()
{
    const auto *area = child<QScrollArea>("scrollArea");
    QCOMPARE(area->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(area->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(area->sizeAdjustPolicy(), QAbstractScrollArea::AdjustToContentsOnFirstShow);
    QVERIFY(area->widgetResizable());
    QCOMPARE(area->alignment(), Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(area->widget()->layout(), modulesLayout());
    QCOMPARE(modulesLayout()->verticalSpacing(), 0);
    QCOMPARE(modulesLayout()->contentsMargins(), QMargins(6, 6, 6, 6));
}

void TstDynamicModulesFrameView::controllerGoesToItsSlot()
{
    const MessageCatcher log;
    auto *controller = new QWidget;
    m_frame->addController(controller);
    QCOMPARE(controllerLayout()->itemAtPosition(0, 0)->widget(), controller);
    QCOMPARE(controller->parentWidget(), child<QFrame>("controllerFrame"));
    QCOMPARE(log.lines(), QStringList{"<<New Controller has been attached>>"});
}

void TstDynamicModulesFrameView::newControllerTakesTheCellOfADeletedOne()
{
    auto *first = new QWidget;
    m_frame->addController(first);
    delete first;
    QCOMPARE(controllerLayout()->count(), 0);
    auto *second = new QWidget;
    m_frame->addController(second);
    QCOMPARE(controllerLayout()->count(), 1);
    QCOMPARE(controllerLayout()->itemAtPosition(0, 0)->widget(), second);
}

void TstDynamicModulesFrameView::moduleGoesToItsRow()
{
    const MessageCatcher log;
    auto *module = new QWidget;
    m_frame->addModule(module, 3);
    QLayoutItem *item = modulesLayout()->itemAtPosition(3, 0);
    QVERIFY(item);
    QCOMPARE(item->widget(), module);
    QCOMPARE(item->alignment(), Qt::Alignment(Qt::AlignTop));
    QCOMPARE(modulesLayout()->alignment(), Qt::Alignment(Qt::AlignTop));
    QCOMPARE(log.lines(), QStringList{"<<New module attached at 3>>"});
}

void TstDynamicModulesFrameView::oneModuleSitsAtTheTop()
{
    auto *module = new QWidget;
    module->setMinimumSize(400, 90);
    m_frame->addModule(module, 0);
    show();
    const auto *area = child<QScrollArea>("scrollArea");
    QVERIFY(area->viewport()->height() > 300);
    QCOMPARE(module->mapTo(area->viewport(), QPoint(0, 0)), QPoint(6, 6));
    QCOMPARE(module->height(), 90);
}

void TstDynamicModulesFrameView::removedModuleLeavesTheLayoutAndLives()
{
    QPointer<QWidget> module = new QWidget;
    m_frame->addModule(module, 0);
    m_frame->removeModule(module);
    QCOMPARE(modulesLayout()->count(), 0);
    QVERIFY(module);
    delete module;
}

void TstDynamicModulesFrameView::deletedPlaceholderFreesItsRow()
{
    auto *placeholder = new InitModuleNotFound_View(3);
    m_frame->addModule(placeholder, 0);
    delete placeholder;
    auto *module = new QWidget;
    m_frame->addModule(module, 0);
    QCOMPARE(modulesLayout()->count(), 1);
    QCOMPARE(modulesLayout()->itemAtPosition(0, 0)->widget(), module);
}

void TstDynamicModulesFrameView::placeholdersTellWhatIsMissing()
{
    m_frame->addController(new InitModuleNotFound_View(1));
    m_frame->addModule(new InitModuleNotFound_View(3), 0);
    show();
    const auto *top = child<QFrame>("controllerFrame")->findChild<QLabel *>();
    const auto *list = child<QScrollArea>("scrollArea")->findChild<QLabel *>();
    QVERIFY(top->isVisible());
    QVERIFY(list->isVisible());
    QCOMPARE(top->text(), QString("No Controller connected or detected."));
    QCOMPARE(list->text(), QString("No Device connected or detected."));
}

void TstDynamicModulesFrameView::secondPlaceholderStaysWhenAControllerComes()
{
    auto *noController = new InitModuleNotFound_View(1);
    m_frame->addController(noController);
    m_frame->addModule(new InitModuleNotFound_View(3), 0);
    show();
    delete noController;
    m_frame->addController(new QWidget);
    const auto labels = m_frame->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QVERIFY(labels.first()->isVisible());
    QCOMPARE(labels.first()->text(), QString("No Device connected or detected."));
}

void TstDynamicModulesFrameView::allModulesOfAFullChainStandInOrder()
{
    const MessageCatcher quiet;
    QVector<QWidget *> rows;
    for (int i = 0; i < 128; ++i) {
        auto *row = new QWidget;
        row->setMinimumSize(400, 90);
        m_frame->addModule(row, i);
        rows.append(row);
    }
    show();
    for (int i = 0; i < rows.size(); ++i)
        QCOMPARE(rows.at(i)->pos(), QPoint(6, 6 + 90 * i));
    const auto *bar = child<QScrollArea>("scrollArea")->verticalScrollBar();
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->maximum() + bar->pageStep(), 128 * 90 + 12);
}

QTEST_MAIN(TstDynamicModulesFrameView)

#include "tst_dynamicmodulesframe_view.moc"
