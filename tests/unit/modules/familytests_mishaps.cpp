#include "familytests.h"
#include "modules/modulerequests.h"
#include "requesttext.h"

#include <QAbstractItemView>
#include <QPointer>

void FamilyTests::oddStaticVariantChangesNothing_data()
{
    QTest::addColumn<QVariant>("variant");
    QTest::newRow("none") << QVariant();
    QTest::newRow("text") << QVariant(QStringLiteral("Module_Status"));
    QTest::newRow("number") << QVariant(3);
    QTest::newRow("fast status") << QVariant::fromValue(QVector<Fast_Module_Status>(kFastModuleStatusCount));
    QTest::newRow("one entry of a fast status") << QVariant::fromValue(Fast_Module_Status());
    QTest::newRow("record of zeros") << QVariant::fromValue(Module_Status());
}

void FamilyTests::oddStaticVariantChangesNothing()
{
    QFETCH(QVariant, variant);
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    const QStringList shown = module.shownAll();
    const QString names = module.names();
    module.controller->Slot_StaticModuleStatus(variant);
    QCOMPARE(module.shownAll(), shown);
    QCOMPARE(module.names(), names);
    QCOMPARE(module.identification(), kNewIdentification);
    module.change(ChannelParameter::TypeIndex, Channel::A, 0);
    QCOMPARE(module.takeSent().size(), 1);
}

void FamilyTests::oddFastVariantCountsAsADefaultEntry_data()
{
    QTest::addColumn<QVariant>("variant");
    QTest::newRow("none") << QVariant();
    QTest::newRow("text") << QVariant(QStringLiteral("status"));
    QTest::newRow("static status") << QVariant::fromValue(status(typeCode()));
    QTest::newRow("no entries") << QVariant::fromValue(QVector<Fast_Module_Status>());
    QTest::newRow("own entry missing") << QVariant::fromValue(QVector<Fast_Module_Status>(3));
}

void FamilyTests::oddFastVariantCountsAsADefaultEntry()
{
    QFETCH(QVariant, variant);
    FamilyModule module(typeCode());
    module.values = ::live(1200, 110, 10);
    module.begin();
    QCOMPARE(module.live(), QString::fromUtf8("12.00 V|0.0 °C|0x0A"));
    module.controller->Slot_FastModuleStatus(variant);
    QCOMPARE(module.live(), QString::fromUtf8("0.00 V|-55.0 °C|O.K."));
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::fastStatusTakesItsOwnEntry()
{
    FamilyModule module(typeCode());
    module.values = ::live(1200, 110, 10);
    module.begin();
    module.take(::live(900, 200, 1), 2);
    QCOMPARE(module.live(), QString::fromUtf8("0.00 V|-55.0 °C|O.K."));
    module.take(::live(900, 200, 1), 3);
    QCOMPARE(module.live(), QString::fromUtf8("9.00 V|45.0 °C|0x01"));
}

void FamilyTests::requestsReachThoseWhoTakeThem()
{
    FamilyModule module(typeCode());
    module.begin();
    QObject taker;
    QStringList taken;
    module.controller->connectRequests(
        {&taker, [&taken](const QVariant &request) { taken << requestText(request); },
         [&taken](int channel, int function) {
             taken << QStringLiteral("change channel %1 to %2").arg(channel).arg(function);
         },
         [&taken](int channel, int on, int voltage) {
             taken << QStringLiteral("supply channel %1: %2 %3").arg(channel).arg(on).arg(voltage);
         }});
    for (const ChannelParameter parameter : module.parameters())
        module.change(parameter, Channel::B, 1);
    QCOMPARE(taken.size(), static_cast<int>(module.parameters().size()));
    QCOMPARE(taken, module.takeSent());
}

void FamilyTests::requestsEndWithThoseWhoTakeThem()
{
    FamilyModule module(typeCode());
    module.begin();
    auto taker = std::make_unique<QObject>();
    int taken = 0;
    module.controller->connectRequests({taker.get(), [&taken](const QVariant &) { ++taken; },
                                        [&taken](int, int) { ++taken; },
                                        [&taken](int, int, int) { ++taken; }});
    module.change(ChannelParameter::TypeIndex, Channel::A, 1);
    QCOMPARE(taken, 1);
    taker.reset();
    module.change(ChannelParameter::TypeIndex, Channel::A, 2);
    QCOMPARE(taken, 1);
    QCOMPARE(module.takeSent().size(), 2);
}

void FamilyTests::channelButtonSlotIsEmpty()
{
    FamilyModule module(typeCode());
    module.begin();
    const QStringList shown = module.shownAll();
    module.controller->Slot_ChannelButton();
    QVERIFY(module.openDialogs().isEmpty());
    QCOMPARE(module.shownAll(), shown);
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::retiredRowAsksForNothing_data()
{
    addParameters();
}

void FamilyTests::retiredRowAsksForNothing()
{
    QFETCH(ChannelParameter, parameter);
    QFETCH(Channel, channel);
    FamilyModule module(typeCode());
    module.begin();
    module.controller->retire();
    module.change(parameter, channel, 1);
    module.time.advance(30000);
    QCOMPARE(module.takeSent(), QStringList());
    // A status that is still on its way changes nothing of that.
    module.begin();
    module.change(parameter, channel == Channel::A ? Channel::B : Channel::A, 1);
    module.time.advance(30000);
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::retiredRowFetchesNoStatus_data()
{
    addParameters();
}

void FamilyTests::retiredRowFetchesNoStatus()
{
    QFETCH(ChannelParameter, parameter);
    QFETCH(Channel, channel);
    FamilyModule module(typeCode());
    module.begin();
    module.change(parameter, channel, 1);
    QCOMPARE(module.takeSent().size(), 1);
    module.controller->retire();
    module.time.advance(30000);
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::retiredRowObeysNoGroupCommand()
{
    FamilyModule module(typeCode());
    module.begin();
    module.controller->retire();
    GroupCommand command;
    for (const int type : {1, typeCode()}) {
        command.moduleType = static_cast<quint8>(type);
        for (command.command = 0; command.command < 12; ++command.command)
            module.controller->Slot_FilterOrRangeHandle(command);
    }
    module.time.advance(30000);
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::timerThatRunsGoesWithTheController_data()
{
    addParameters();
}

void FamilyTests::timerThatRunsGoesWithTheController()
{
    QFETCH(ChannelParameter, parameter);
    QFETCH(Channel, channel);
    FamilyModule module(typeCode());
    module.begin();
    module.change(parameter, channel, 1);
    module.time.advance(500);
    module.takeSent();
    const QPointer<QWidget> row(&module.row());
    module.controller.reset();
    QVERIFY(!row);
    module.time.advance(30000);
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::openListGoesWithTheController()
{
    FamilyModule module(typeCode());
    module.begin();
    module.typeBox(Channel::A)->showPopup();
    const QPointer<QWidget> list(module.typeBox(Channel::A)->view());
    QVERIFY(list->isVisible());
    module.controller.reset();
    QVERIFY(!list);
    module.time.advance(5000);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::openVersionBoxGoesWithTheController()
{
    FamilyModule module(typeCode());
    module.begin();
    QTest::mouseClick(childByName<QPushButton>(&module.row(), "pushButton_DeviceButton"), Qt::LeftButton);
    QCOMPARE(module.openDialogs().size(), 1);
    const QPointer<QDialog> box(module.openDialogs().first());
    QCOMPARE(box->windowTitle(), QStringLiteral("Module Version Info"));
    module.controller.reset();
    QVERIFY(!box);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}
