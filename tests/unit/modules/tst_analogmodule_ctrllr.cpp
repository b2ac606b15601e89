#include "base/gui/fonts.h"
#include "modulefixture.h"

#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>
#include <array>

Q_DECLARE_METATYPE(HeaderForm)

class TstAnalogModuleCtrllr : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void eachTypeGetsItsRow_data();
    void eachTypeGetsItsRow();
    void numbersStandOnTheButtons();
    void beginsWithInitialTextsAndZeros();
    void statusShowsNamesAndIdentification_data();
    void statusShowsNamesAndIdentification();
    void statusFillsTheDataRecordButNotItsSerialNumber();
    void statusOfAnotherModuleIsSkipped();
    void foreignTypeUpdatesOnlyTheIdentification_data();
    void foreignTypeUpdatesOnlyTheIdentification();
    void changedTypeOfTheSameFamilyRenamesTheRow();
    void xvdtStatusChangesTheHeaders();
    void universalStatusNamesEachChannel();
    void staticStatusOfAWrongTypeIsSkipped();
    void setUpOperationsOfTheOwnFamilyAct_data();
    void setUpOperationsOfTheOwnFamilyAct();
    void versionBoxShowsTheVersions();
    void versionBoxDoesNotBlock();
    void rowMayBeDeletedWhileTheBoxIsOpen();
    void versionTextsAreNoMarkup();
    void unknownModuleKeepsOnlyIdentificationAndStatus();
    void unknownModuleTakesStatus();
    void unknownModuleStaysUnknownWhateverItReports();
    void shiftClickStampsTheType();
    void rowGoesWithItsController();
    void rowMayGoBeforeItsController();
};

void TstAnalogModuleCtrllr::initTestCase()
{
    fonts::installSubstitutions();
}

void TstAnalogModuleCtrllr::eachTypeGetsItsRow_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QByteArray>("log");
    const char *type1 = "Model Type 1 created...";
    const char *type2 = "Model Type 2 created...";
    const char *type3 = "Model Type 3 created...";
    const char *type4 = "Model Type 4 created...";
    QTest::newRow("1") << HeaderForm::StrainGauge << "3" << QByteArray(type1);
    for (const char *code : {"2", "3", "5", "6", "7", "8"})
        QTest::newRow(code) << HeaderForm::Voltage << "3" << QByteArray(type2);
    QTest::newRow("4") << HeaderForm::Thermo << "3" << QByteArray(type3);
    for (const char *code : {"9", "0", "10", "100", "120", "255"})
        QTest::newRow(code) << HeaderForm::Universal << "unknown" << QByteArray(type4);
}

void TstAnalogModuleCtrllr::eachTypeGetsItsRow()
{
    QFETCH(QByteArray, log);
    QTest::ignoreMessage(QtDebugMsg, log.constData());
    const Module module(QByteArray(QTest::currentDataTag()).toInt());
    QTEST(module.controller->GetData()->headerForm, "form");
    QTEST(module.controller->GetData()->address, "address");
}

void TstAnalogModuleCtrllr::numbersStandOnTheButtons()
{
    const Module module(1, 128, 255);
    const ModuleDevice_View *row = module.controller->GetView();
    QCOMPARE(childByName<QPushButton>(row, "pushButton_DeviceButton")->text(), QStringLiteral("128"));
    QCOMPARE(childByName<QPushButton>(row, "pushButton_ChA")->text(), QStringLiteral("255"));
    QCOMPARE(childByName<QPushButton>(row, "pushButton_ChB")->text(), QStringLiteral("256"));
    QCOMPARE(module.controller->moduleNumber(), 128);
    QCOMPARE(module.controller->GetData()->moduleNumber, 128);
}

void TstAnalogModuleCtrllr::beginsWithInitialTextsAndZeros()
{
    const Module module(1);
    QCOMPARE(module.names(), kFirstNames);
    QCOMPARE(module.identification(), kFirstIdentification);
    QCOMPARE(module.live(), QString::fromUtf8("0.00 V|0.0 °C|O.K."));
}

void TstAnalogModuleCtrllr::statusShowsNamesAndIdentification_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("1") << "Strain Gauge";
    QTest::newRow("2") << "Voltage";
    QTest::newRow("3") << QString::fromUtf8("IEPE/ICP®");
    QTest::newRow("4") << "Thermo";
    QTest::newRow("5") << "XVDT";
    QTest::newRow("6") << "Potentiometer";
    QTest::newRow("7") << "4_20";
    QTest::newRow("8") << "Auxilary";
}

void TstAnalogModuleCtrllr::statusShowsNamesAndIdentification()
{
    QFETCH(QString, name);
    const int code = QByteArray(QTest::currentDataTag()).toInt();
    Module module(code);
    module.take(status(code));
    QCOMPARE(module.names(), QStringLiteral("%1|%1|%1").arg(name));
    QCOMPARE(module.identification(), kNewIdentification);
}

void TstAnalogModuleCtrllr::statusFillsTheDataRecordButNotItsSerialNumber()
{
    Module module(1);
    module.take(status(1));
    const ModuleModel *data = module.controller->GetData();
    QCOMPARE(data->hardware, QStringLiteral("01.02"));
    QCOMPARE(data->firmware1, QStringLiteral("03.04.05"));
    QCOMPARE(data->firmware2, QStringLiteral("06.07"));
    QCOMPARE(data->serialNumber, QStringLiteral("XXXXXXX"));
}

void TstAnalogModuleCtrllr::statusOfAnotherModuleIsSkipped()
{
    Module module(1);
    module.take(status(1, 4));
    module.take(status(1, 0));
    QCOMPARE(module.names(), kFirstNames);
    QCOMPARE(module.identification(), kFirstIdentification);
}

void TstAnalogModuleCtrllr::foreignTypeUpdatesOnlyTheIdentification_data()
{
    QTest::addColumn<int>("own");
    QTest::addColumn<int>("reported");
    QTest::newRow("voltage on a strain gauge row") << 1 << 2;
    QTest::newRow("strain gauge on a voltage row") << 2 << 1;
    QTest::newRow("thermo on a voltage row") << 2 << 4;
    QTest::newRow("voltage on a thermo row") << 4 << 2;
    QTest::newRow("strain gauge on a universal row") << 9 << 1;
    QTest::newRow("universal on a strain gauge row") << 1 << 9;
    QTest::newRow("no known type") << 1 << 77;
    QTest::newRow("no type") << 2 << 0;
    QTest::newRow("controller") << 9 << 100;
}

void TstAnalogModuleCtrllr::foreignTypeUpdatesOnlyTheIdentification()
{
    QFETCH(int, own);
    QFETCH(int, reported);
    Module module(own);
    const QString header = module.text("label_FirstInfoDevice");
    module.take(status(reported));
    QCOMPARE(module.identification(), kNewIdentification);
    QCOMPARE(module.names(), kFirstNames);
    QCOMPARE(module.controller->GetData()->hardware, QStringLiteral("XX.XX"));
    QCOMPARE(module.text("label_FirstInfoDevice"), header);
}

void TstAnalogModuleCtrllr::changedTypeOfTheSameFamilyRenamesTheRow()
{
    Module module(3);
    module.take(status(2));
    QCOMPARE(module.names(), QStringLiteral("Voltage|Voltage|Voltage"));
}

void TstAnalogModuleCtrllr::xvdtStatusChangesTheHeaders()
{
    Module module(5);
    QCOMPARE(module.text("label_SecondInfoDevice"), QString::fromUtf8("Range  [±V]   "));
    module.take(status(5));
    for (const char *name : {"label_FirstInfoDevice", "label_FirstInfoDevice_2"})
        QCOMPARE(module.text(name), QStringLiteral("Input"));
    for (const char *name : {"label_SecondInfoDevice", "label_SecondInfoDevice_2"})
        QCOMPARE(module.text(name), QStringLiteral("Range  "));
    Module voltage(2);
    voltage.take(status(2));
    QCOMPARE(voltage.text("label_SecondInfoDevice"), QString::fromUtf8("Range  [±V]   "));
}

void TstAnalogModuleCtrllr::universalStatusNamesEachChannel()
{
    Module module(9);
    Module_Status reported = status(9);
    reported.functionCodeA = 6;
    reported.functionCodeB = 1;
    module.take(reported);
    QCOMPARE(module.names(), QStringLiteral("Analog|Potentiometer|Strain Gauge"));
    QCOMPARE(module.text("label_FirstInfoDevice"), QStringLiteral("Input"));
    QCOMPARE(module.text("label_FirstInfoDevice_2"), QStringLiteral("BridgeType  [Ohm]"));
    QVERIFY(module.hidden("label_Shunt"));
    QVERIFY(!module.hidden("label_Shunt_2"));
}

void TstAnalogModuleCtrllr::staticStatusOfAWrongTypeIsSkipped()
{
    Module module(1);
    module.controller->Slot_StaticModuleStatus(QVariant(QStringLiteral("no status")));
    module.controller->Slot_StaticModuleStatus(QVariant());
    QCOMPARE(module.identification(), kFirstIdentification);
}

void TstAnalogModuleCtrllr::setUpOperationsOfTheOwnFamilyAct_data()
{
    QTest::addColumn<int>("family");
    QTest::newRow("1") << 1;
    QTest::newRow("7") << 2;
    QTest::newRow("4") << 3;
    QTest::newRow("9") << 4;
}

void TstAnalogModuleCtrllr::setUpOperationsOfTheOwnFamilyAct()
{
    QFETCH(int, family);
    const ChannelSetup setup{
        {QStringLiteral("a")}, {QStringLiteral("b"), QStringLiteral("c")}, -1, 1, 1, 1, 2, 3};
    ChannelRecord values;
    values.gainList = QStringList{"b", "c"};
    values.gainIndex = 1;
    values.filterValue = 2;
    using C = ModuleDevice_Ctrllr;
    using Setup = void (C::*)(int, const ChannelSetup &);
    using Values = void (C::*)(int, const ChannelRecord &);
    const std::array<Setup, 4> setups{&C::SetChannelT1Setup, &C::SetChannelT2Setup, &C::SetChannelT3Setup,
                                      &C::SetChannelT4Setup};
    const std::array<Values, 4> takes{&C::SetChannelT1Values, &C::SetChannelT2Values, &C::SetChannelT3Values,
                                      &C::SetChannelT4Values};
    for (int operation = 1; operation <= 4; ++operation) {
        const bool own = operation == family;
        Module module(QByteArray(QTest::currentDataTag()).toInt());
        ModuleDevice_Ctrllr &controller = *module.controller;
        const auto index = static_cast<std::size_t>(operation - 1);
        (controller.*setups.at(index))(3, setup); // there is no such channel
        for (const int channel : {1, 2})
            QCOMPARE(controller.GetData()->channel(channel).gainList.size(), 0);
        (controller.*setups.at(index))(2, setup);
        QCOMPARE(controller.GetData()->channel(2).gainList.size(), own ? 2 : 0);
        QCOMPARE(controller.GetData()->channel(2).filterMax, own ? 2 : family == 3 ? 32 : 999999999);
        (controller.*takes.at(index))(2, values);
        QCOMPARE(controller.GetData()->channel(2).gainIndex, own ? 1 : 0);
        QCOMPARE(controller.GetData()->channel(2).channelNumber, 6);
        QCOMPARE(controller.GetData()->channel(2).filterMax, own ? 2 : family == 3 ? 32 : 999999999);
        QCOMPARE(controller.GetData()->channel(2).offsetStep, own ? 1 : family % 3 == 1 ? 0.1 : 0);
        (controller.*takes.at(index))(3, values); // there is no such channel
        QCOMPARE(controller.GetData()->channel(1).gainIndex, 0);
        const auto shown = controller.GetView()->findChildren<QSpinBox *>(QStringLiteral("filterSpinBox"));
        QCOMPARE(shown.size(), 2);
        QCOMPARE(shown.at(1)->value(), own ? 2 : shown.at(1)->minimum());
    }
}

void TstAnalogModuleCtrllr::versionBoxShowsTheVersions()
{
    Module module(1);
    module.take(status(1));
    QTest::mouseClick(childByName<QPushButton>(module.controller->GetView(), "pushButton_DeviceButton"),
                      Qt::LeftButton);
    auto *box = module.controller->GetView()->findChild<QMessageBox *>();
    QVERIFY(box);
    QVERIFY(box->isVisible());
    QCOMPARE(box->windowTitle(), QStringLiteral("Module Version Info"));
    QCOMPARE(box->text(),
             QStringLiteral("Component version numbers\nHardware:\t01.02\nFirmware 1:\t03.04.05\n"
                            "Firmware 2:\t06.07\n"));
    QCOMPARE(box->icon(), QMessageBox::Information);
    QCOMPARE(box->standardButtons(), QMessageBox::Ok);
    const QPointer<QMessageBox> watched(box);
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    QTRY_VERIFY(!watched);
}

void TstAnalogModuleCtrllr::versionBoxDoesNotBlock()
{
    Module module(1);
    module.controller->Slot_DeviceButton();
    // A status that comes while the box is open is shown behind it.
    module.take(status(1));
    QCOMPARE(module.identification(), kNewIdentification);
    QCOMPARE(module.controller->GetView()->findChild<QMessageBox *>()->text(),
             QStringLiteral("Component version numbers\nHardware:\tXX.XX\nFirmware 1:\tXX.XX.XX\n"
                            "Firmware 2:\tXX.XX.XX\n"));
}

void TstAnalogModuleCtrllr::rowMayBeDeletedWhileTheBoxIsOpen()
{
    Module module(1);
    module.controller->GetView()->show();
    module.controller->Slot_DeviceButton();
    const QPointer<QMessageBox> box(module.controller->GetView()->findChild<QMessageBox *>());
    QVERIFY(box);
    module.controller.reset();
    QVERIFY(!box);
    QCoreApplication::processEvents();
}

void TstAnalogModuleCtrllr::versionTextsAreNoMarkup()
{
    Module module(1);
    module.controller->Slot_DeviceButton();
    QCOMPARE(module.controller->GetView()->findChild<QMessageBox *>()->textFormat(), Qt::PlainText);
}

void TstAnalogModuleCtrllr::unknownModuleKeepsOnlyIdentificationAndStatus()
{
    const Module module(77);
    module.controller->showAsUnknownModule();
    for (const char *name : {"label_Channel",
                             "label_FirstInfoDevice",
                             "label_SecondInfoDevice",
                             "label_Shunt",
                             "label_Filter",
                             "label_ManualOffset",
                             "label_RevPol",
                             "label_Level",
                             "label_Channel_2",
                             "label_FirstInfoDevice_2",
                             "label_SecondInfoDevice_2",
                             "label_Shunt_2",
                             "label_Filter_2",
                             "label_ManualOffset_2",
                             "label_RevPol_2",
                             "label_Level_2",
                             "pushButton_ChA",
                             "pushButton_ChB",
                             "ChDeviceLabel_A",
                             "ChDeviceLabel_B"})
        QVERIFY2(module.hidden(name), name);
    for (const char *name :
         {"label_DeviceName", "label_SnVersion", "label_HwVersion", "label_SwVersion", "label_FpgaVersn",
          "label_Voltage", "label_Temperature", "label_SelftestSt", "pushButton_DeviceButton"})
        QVERIFY2(!module.hidden(name), name);
    QCOMPARE(module.controller->GetData()->address, QStringLiteral("unknown"));
}

void TstAnalogModuleCtrllr::unknownModuleTakesStatus()
{
    Module module(77);
    module.controller->showAsUnknownModule();
    module.take(status(77));
    module.take(live(1200, 110, 0));
    QCOMPARE(module.identification(), kNewIdentification);
    QCOMPARE(module.names(), kFirstNames);
    QCOMPARE(module.live(), QString::fromUtf8("12.00 V|0.0 °C|O.K."));
    QVERIFY(module.hidden("label_Filter"));
}

void TstAnalogModuleCtrllr::unknownModuleStaysUnknownWhateverItReports()
{
    for (const int code : {9, 1, 2, 4, 77}) {
        Module module(77);
        module.controller->showAsUnknownModule();
        module.take(status(code));
        QCOMPARE(module.identification(), kNewIdentification);
        QCOMPARE(module.names(), kFirstNames);
        QCOMPARE(module.controller->GetData()->hardware, QStringLiteral("XX.XX"));
        for (const char *name : {"pushButton_ChA", "pushButton_ChB", "ChDeviceLabel_A", "ChDeviceLabel_B",
                                 "label_Filter", "label_Filter_2", "strip_A", "strip_B"})
            QVERIFY2(module.hidden(name), name);
    }
}

void TstAnalogModuleCtrllr::shiftClickStampsTheType()
{
    for (const int code : {1, 2, 3, 4, 5, 6, 7, 8}) {
        const Module module(code);
        QVector<GroupCommand> sent;
        connect(module.controller.get(), &AnalogModule_Ctrllr::Signal_ShiftClickCommand, this,
                [&sent](const GroupCommand &command) { sent.append(command); });
        GroupCommand command;
        command.moduleType = 99;
        command.command = 3;
        command.value = 250;
        module.controller->Slot_ShiftClick(command);
        QCOMPARE(sent.size(), 1);
        QCOMPARE(static_cast<int>(sent.first().moduleType), code);
        QCOMPARE(sent.first().command, 3);
        QCOMPARE(sent.first().value, 250);
    }
}

void TstAnalogModuleCtrllr::rowGoesWithItsController()
{
    Module module(1);
    const QPointer<ModuleDevice_View> row(module.controller->GetView());
    module.controller.reset();
    QVERIFY(!row);
}

void TstAnalogModuleCtrllr::rowMayGoBeforeItsController()
{
    Module module(1);
    delete module.controller->GetView();
    QVERIFY(!module.controller->GetView());
    module.controller.reset();
}

QTEST_MAIN(TstAnalogModuleCtrllr)
#include "tst_analogmodule_ctrllr.moc"
