#include "support/childbyname.h"
#include "support/virtualtime.h"
#include "system/modulesyssettings_ctrllr.h"
#include "system/modulesyssettings_view.h"
#include "system/vx_samplingrates.h"

#include <QPointer>
#include <QPushButton>
#include <QtTest>
#include <memory>

/// Who of the panel and its controller may go first.
class TstSystemPanelLifetime : public QObject
{
    Q_OBJECT

private slots:
    void panelGoesWithItsController();
    void panelThatItsWindowTookAlongIsMissedByNobody();
    void openTableGoesWithThePanelAndSendsNothing();
    void openTableGoesWithTheController();
};

void TstSystemPanelLifetime::panelGoesWithItsController()
{
    VirtualTime time;
    auto controller = std::make_unique<ModuleSysSettings_Ctrllr>(SystemSettings{}, time);
    const QPointer<ModuleSysSettings_View> view = controller->GetView();
    QVERIFY(view);
    controller.reset();
    QVERIFY(!view);
}

void TstSystemPanelLifetime::panelThatItsWindowTookAlongIsMissedByNobody()
{
    VirtualTime time;
    ModuleSysSettings_Ctrllr controller(SystemSettings{}, time);
    auto window = std::make_unique<QWidget>();
    controller.GetView()->setParent(window.get());
    window.reset();
    QVERIFY(!controller.GetView());
    controller.setModules(5);
    controller.setChannels(10);
    controller.setBitRate("2500 (16 ch)");
    controller.setSamplingRate("3000");
    controller.setPoweringMode("inductive");
    controller.setDataTransmission("cable");
    emit controller.Signal_EnableSamplingRate();
    emit controller.Signal_DisableSamplingRate();
    emit controller.Signal_LoadGateway("10.0.0.1", "5000");
    time.advance(10000);
    QCOMPARE(controller.data().modules, 5);
    QCOMPARE(controller.data().channels, 10);
    QCOMPARE(controller.data().bitRate, QStringLiteral("2500 (16 ch)"));
    QCOMPARE(controller.data().samplingRate, QStringLiteral("3000"));
    QCOMPARE(controller.data().poweringMode, QStringLiteral("inductive"));
    QCOMPARE(controller.data().dataTransmission, QStringLiteral("cable"));
}

void TstSystemPanelLifetime::openTableGoesWithThePanelAndSendsNothing()
{
    VirtualTime time;
    auto controller = std::make_unique<ModuleSysSettings_Ctrllr>(SystemSettings{}, time);
    QSignalSpy sent(controller.get(), &ModuleSysSettings_Ctrllr::Signal_SamplingRates);
    emit controller->Signal_EnableSamplingRate();
    controller->GetView()->show();
    QTest::mouseClick(childByName<QPushButton>(controller->GetView(), "bitrateConfigBtn"), Qt::LeftButton);
    const QPointer<VX_SamplingRates> dialog =
        childByName<VX_SamplingRates>(controller->GetView(), "samplingRatesDialog");
    QVERIFY(dialog->isVisible());
    QVERIFY(dialog->isModal());
    QTest::mousePress(childByName<QPushButton>(dialog, "16,2500"), Qt::LeftButton);
    delete controller->GetView();
    QVERIFY(!dialog);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(sent.count(), 0);
}

void TstSystemPanelLifetime::openTableGoesWithTheController()
{
    VirtualTime time;
    auto controller = std::make_unique<ModuleSysSettings_Ctrllr>(SystemSettings{}, time);
    controller->GetView()->show();
    QTest::mouseClick(childByName<QPushButton>(controller->GetView(), "bitrateConfigBtn"), Qt::LeftButton);
    const QPointer<VX_SamplingRates> dialog =
        childByName<VX_SamplingRates>(controller->GetView(), "samplingRatesDialog");
    QVERIFY(dialog->isVisible());
    controller.reset();
    QVERIFY(!dialog);
    QVERIFY(!QApplication::activeModalWidget());
}

QTEST_MAIN(TstSystemPanelLifetime)
#include "tst_systempanellifetime.moc"
