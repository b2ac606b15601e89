#include "base/gui/fonts.h"
#include "modulefixture.h"

#include <QtTest>

namespace {

/// Counts the events of one kind that reach a widget tree.
class EventCounter : public QObject
{
public:
    EventCounter(QWidget *root, QList<QEvent::Type> types)
        : m_types(std::move(types))
    {
        root->installEventFilter(this);
        const auto children = root->findChildren<QWidget *>();
        for (QWidget *child : children)
            child->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (m_types.contains(event->type()))
            ++count;
        return false;
    }

    int count = 0;

private:
    QList<QEvent::Type> m_types;
};

/// Delivers what was posted, painting included.
void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

} // namespace

/// The live values of a row and what they cost.
class TstModuleLiveValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fastStatusShowsTheOwnEntry();
    void lastModuleReadsEntry128();
    void invalidVoltageLeavesTheText();
    void invalidTemperatureLeavesTheText();
    void fastStatusOfAWrongTypeReadsAsZero();
    void shortFastStatusReadsAsZero();
    void settersStoreAndShow();
    void unchangedLiveValuesTouchNoWidget();
    void changedLiveValuesKeepTheLayout();
};

void TstModuleLiveValues::initTestCase()
{
    fonts::installSubstitutions();
}

void TstModuleLiveValues::fastStatusShowsTheOwnEntry()
{
    Module module(1);
    module.take(live(1200, 0, 10), 3);
    QCOMPARE(module.live(), QString::fromUtf8("12.00 V|-55.0 °C|0x0A"));
    QCOMPARE(module.controller->GetData()->voltage, 12.0F);
    QCOMPARE(module.controller->GetData()->temperature, -55.0F);
    QCOMPARE(module.controller->GetData()->selftest, quint8(10));
}

void TstModuleLiveValues::lastModuleReadsEntry128()
{
    Module module(1, 128, 255);
    module.take(live(1500, 160, 0), 128);
    QCOMPARE(module.live(), QString::fromUtf8("15.00 V|25.0 °C|O.K."));
}

void TstModuleLiveValues::invalidVoltageLeavesTheText()
{
    Module module(1);
    module.take(live(1200, 160, 0));
    Fast_Module_Status next = live(999, 170, 1);
    next.supplyVoltageInvalid = 1;
    module.take(next);
    QCOMPARE(module.live(), QString::fromUtf8("12.00 V|30.0 °C|0x01"));
}

void TstModuleLiveValues::invalidTemperatureLeavesTheText()
{
    Module module(1);
    module.take(live(1200, 160, 0));
    Fast_Module_Status next = live(1300, 170, 2);
    next.temperatureInvalid = 1;
    module.take(next);
    QCOMPARE(module.live(), QString::fromUtf8("13.00 V|25.0 °C|0x02"));
}

void TstModuleLiveValues::fastStatusOfAWrongTypeReadsAsZero()
{
    Module module(1);
    module.take(live(1200, 160, 5));
    module.controller->Slot_FastModuleStatus(QVariant(7));
    QCOMPARE(module.live(), QString::fromUtf8("0.00 V|-55.0 °C|O.K."));
}

void TstModuleLiveValues::shortFastStatusReadsAsZero()
{
    Module module(1);
    module.take(live(1200, 160, 5));
    module.controller->Slot_FastModuleStatus(QVariant::fromValue(QVector<Fast_Module_Status>(3)));
    QCOMPARE(module.live(), QString::fromUtf8("0.00 V|-55.0 °C|O.K."));
}

void TstModuleLiveValues::settersStoreAndShow()
{
    Module module(1);
    ModuleDevice_Ctrllr *controller = module.controller.get();
    controller->SetVoltage(9.5F);
    controller->SetTemperature(20.0F);
    controller->SetSelftest(255);
    QCOMPARE(module.live(), QString::fromUtf8("9.50 V|20.0 °C|0xFF"));
    QCOMPARE(controller->GetData()->voltage, 9.5F);
    QCOMPARE(controller->GetData()->temperature, 20.0F);
    QCOMPARE(controller->GetData()->selftest, quint8(255));
}

void TstModuleLiveValues::unchangedLiveValuesTouchNoWidget()
{
    Module module(1);
    ModuleDevice_View *row = module.controller->GetView();
    row->show();
    QVERIFY(QTest::qWaitForWindowExposed(row));
    module.take(live(1200, 160, 0));
    settle();
    EventCounter painted(row, {QEvent::Paint, QEvent::UpdateRequest, QEvent::LayoutRequest});
    module.take(live(1200, 160, 0));
    settle();
    QCOMPARE(painted.count, 0);
    // The counter sees a change.
    module.take(live(1201, 160, 0));
    settle();
    QVERIFY(painted.count > 0);
}

void TstModuleLiveValues::changedLiveValuesKeepTheLayout()
{
    Module module(1);
    ModuleDevice_View *row = module.controller->GetView();
    row->show();
    QVERIFY(QTest::qWaitForWindowExposed(row));
    settle();
    EventCounter laidOut(row, {QEvent::LayoutRequest});
    module.take(live(1999, 500, 31));
    module.take(status(1));
    settle();
    const int byNames = laidOut.count;
    module.take(live(2, 3, 0));
    settle();
    QCOMPARE(laidOut.count, byNames);
}

QTEST_MAIN(TstModuleLiveValues)
#include "tst_modulelivevalues.moc"
