#include "familytests.h"
#include "modules/moduledevicetype3_ctrllr.h"
#include "support/messagecatcher.h"

#include <QMessageBox>
#include <QPointer>
#include <QRegularExpression>

namespace {

/// The warning over the row; it must stand alone.
QMessageBox *warningOf(const FamilyModule &module)
{
    const auto open = module.openDialogs();
    return open.size() == 1 ? qobject_cast<QMessageBox *>(open.first()) : nullptr;
}

} // namespace

/// What only thermo modules do; the rest is that of all families.
class TstModuleDeviceType3Ctrllr : public FamilyTests
{
    Q_OBJECT

protected:
    int typeCode() const override { return 4; }
    void addRequests() const override;
    void addRequestsOfNoChannel() const override;

private slots:
    void statusNamesTheRow();
    void autozeroSlotSendsItsState_data();
    void autozeroSlotSendsItsState();
    void autozeroOfTheFastStatusGoesIntoTheRecordOnly();
    void analogDataIsLoggedOnlyWithItsFlag();
    void value32SteppedUpStays32();
    void value1SteppedDownStays1();
    void specialRangeAsksFirst();
    void specialRangeConfirmedIsSent();
    void specialRangeAbortedSendsIndex0EvenIfItIsInForce();
    void statusUnderTheWarningSendsNothing();
    void warningGoesWithTheController();
    void warningConfirmedAfterTheRowWasRetiredSendsNothing_data();
    void warningConfirmedAfterTheRowWasRetiredSendsNothing();
    void noWarningBelow200();
    void deviceButtonShowsTheVersions();
    void channelButtonIsEmpty();
};

void TstModuleDeviceType3Ctrllr::addRequests() const
{
    using P = ChannelParameter;
    addRequest(P::TypeIndex, Channel::A, 0,
               "T3 m3 c1: type 0, range 2, zero 1, filter 4, lists 0+0, selector 1");
    addRequest(P::TypeIndex, Channel::B, 0,
               "T3 m3 c2: type 0, range 1, zero 0, filter 16, lists 0+0, selector 1");
    addRequest(P::RangeIndex, Channel::A, 0,
               "T3 m3 c1: type 1, range 0, zero 1, filter 4, lists 0+0, selector 2");
    addRequest(P::RangeIndex, Channel::B, 0,
               "T3 m3 c2: type 2, range 0, zero 0, filter 16, lists 0+0, selector 2");
    addRequest(P::RangeIndex, Channel::B, 2,
               "T3 m3 c2: type 2, range 2, zero 0, filter 16, lists 0+0, selector 2");
    addRequest(P::Filter, Channel::A, 1,
               "T3 m3 c1: type 1, range 2, zero 1, filter 8, lists 0+0, selector 4");
    addRequest(P::Filter, Channel::B, 1,
               "T3 m3 c2: type 2, range 1, zero 0, filter 8, lists 0+0, selector 4");
}

void TstModuleDeviceType3Ctrllr::addRequestsOfNoChannel() const
{
    using P = ChannelParameter;
    addRequestOfNoChannel(P::TypeIndex,
                          "T3 m3 c%1: type 2, range 0, zero 0, filter 0, lists 0+0, selector 1");
    addRequestOfNoChannel(P::RangeIndex,
                          "T3 m3 c%1: type 0, range 1, zero 0, filter 0, lists 0+0, selector 2");
    addRequestOfNoChannel(P::Filter, "T3 m3 c%1: type 0, range 0, zero 0, filter 300, lists 0+0, selector 4");
    addRequestOfNoChannel(P::Autozero, "T3 m3 c%1: type 0, range 0, zero 1, filter 0, lists 0+0, selector 5");
}

void TstModuleDeviceType3Ctrllr::statusNamesTheRow()
{
    FamilyModule module(4);
    QCOMPARE(module.text("label_FirstInfoDevice"), QStringLiteral("Sensor Type      "));
    module.begin();
    QCOMPARE(module.names(), QStringLiteral("Thermo|Thermo|Thermo"));
    QCOMPARE(module.text("label_FirstInfoDevice_2"), QStringLiteral("Sensor Type      "));
    QCOMPARE(module.text("label_SecondInfoDevice"), QString::fromUtf8("Temp.Range  [°C]"));
}

void TstModuleDeviceType3Ctrllr::autozeroSlotSendsItsState_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<bool>("state");
    QTest::addColumn<QString>("request");
    QTest::newRow("A on") << 1 << true
                          << "T3 m3 c1: type 1, range 2, zero 1, filter 4, lists 0+0, selector 5";
    QTest::newRow("A off") << 1 << false
                           << "T3 m3 c1: type 1, range 2, zero 0, filter 4, lists 0+0, selector 5";
    QTest::newRow("B on") << 2 << true
                          << "T3 m3 c2: type 2, range 1, zero 1, filter 16, lists 0+0, selector 5";
    QTest::newRow("B off") << 2 << false
                           << "T3 m3 c2: type 2, range 1, zero 0, filter 16, lists 0+0, selector 5";
}

void TstModuleDeviceType3Ctrllr::autozeroSlotSendsItsState()
{
    QFETCH(int, channel);
    QFETCH(bool, state);
    QFETCH(QString, request);
    FamilyModule module(4);
    module.beginWithDifferentChannels();
    qobject_cast<ModuleDeviceType3_Ctrllr *>(module.controller.get())->Slot_SendAutozero(channel, state);
    QCOMPARE(module.takeSent(), QStringList(request));
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType3Ctrllr::autozeroOfTheFastStatusGoesIntoTheRecordOnly()
{
    FamilyModule module(4);
    module.begin();
    const QStringList before = module.shownAll();
    module.report(ChannelParameter::Autozero, Channel::B, 1);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(1).autozero), 0);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(2).autozero), 1);
    module.report(ChannelParameter::Autozero, Channel::B, 3);
    QCOMPARE(static_cast<int>(module.controller->GetData()->channel(2).autozero), 0);
    QCOMPARE(module.shownAll(), before);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType3Ctrllr::analogDataIsLoggedOnlyWithItsFlag()
{
    FamilyModule module(4);
    module.begin();
    const MessageCatcher catcher;
    module.values.valueA = 77;
    module.reportFast();
    QVERIFY(!catcher.containsText(QStringLiteral("analogDataA")));
    module.values.flag3 = 1;
    module.reportFast();
    const QStringList lines = catcher.lines(QtDebugMsg).filter(QStringLiteral("analogDataA"));
    QCOMPARE(lines.size(), 1);
    const QRegularExpression form(QStringLiteral(
        "^void ModuleDeviceType3_Ctrllr::Slot_FastModuleStatus\\(QVariant\\) ?: ?analogDataA: +77$"));
    QVERIFY2(form.match(lines.first()).hasMatch(), qPrintable(lines.first()));
}

void TstModuleDeviceType3Ctrllr::value32SteppedUpStays32()
{
    FamilyModule module(4);
    module.device.filterA = QStringLiteral("32");
    module.begin();
    module.filterBox(Channel::A)->stepBy(1);
    QCOMPARE(module.shown(ChannelParameter::Filter, Channel::A), QStringLiteral("32 red"));
    QCOMPARE(module.takeSent(),
             QStringList("T3 m3 c1: type 0, range 0, zero 0, filter 32, lists 0+0, selector 4"));
}

void TstModuleDeviceType3Ctrllr::value1SteppedDownStays1()
{
    FamilyModule module(4);
    module.device.filterB = QStringLiteral("1");
    module.begin();
    module.filterBox(Channel::B)->stepBy(-1);
    QCOMPARE(module.shown(ChannelParameter::Filter, Channel::B), QStringLiteral("1 red"));
    QCOMPARE(module.takeSent(),
             QStringList("T3 m3 c2: type 0, range 0, zero 0, filter 1, lists 0+0, selector 4"));
}

void TstModuleDeviceType3Ctrllr::specialRangeAsksFirst()
{
    FamilyModule module(4);
    module.begin();
    module.pick(module.rangeBox(Channel::A), 2);
    const QMessageBox *warning = warningOf(module);
    QVERIFY(warning);
    QCOMPARE(warning->windowTitle(), QStringLiteral("Warning"));
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType3Ctrllr::specialRangeConfirmedIsSent()
{
    FamilyModule module(4);
    module.begin();
    module.pick(module.rangeBox(Channel::B), 2);
    module.continueInWarning();
    QVERIFY(module.openDialogs().isEmpty());
    QCOMPARE(module.takeSent(),
             QStringList("T3 m3 c2: type 0, range 2, zero 0, filter 4, lists 0+0, selector 2"));
    QCOMPARE(module.shown(ChannelParameter::RangeIndex, Channel::B), QStringLiteral("2 red"));
    module.time.advance(1000);
    QCOMPARE(module.takeSent(), QStringList("get 3"));
}

void TstModuleDeviceType3Ctrllr::specialRangeAbortedSendsIndex0EvenIfItIsInForce()
{
    FamilyModule module(4);
    module.begin();
    module.pick(module.rangeBox(Channel::A), 1);
    QMessageBox *warning = warningOf(module);
    QVERIFY(warning);
    QTest::mouseClick(warning->button(QMessageBox::No), Qt::LeftButton);
    QCOMPARE(module.takeSent(),
             QStringList("T3 m3 c1: type 0, range 0, zero 0, filter 4, lists 0+0, selector 2"));
    QCOMPARE(module.shown(ChannelParameter::RangeIndex, Channel::A), QStringLiteral("0 red"));
}

void TstModuleDeviceType3Ctrllr::statusUnderTheWarningSendsNothing()
{
    FamilyModule module(4);
    module.begin();
    module.pick(module.rangeBox(Channel::A), 2);
    QVERIFY(warningOf(module));
    module.begin();
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
    QVERIFY(warningOf(module));
    module.continueInWarning();
    QCOMPARE(module.takeSent(),
             QStringList("T3 m3 c1: type 0, range 2, zero 0, filter 4, lists 0+0, selector 2"));
}

void TstModuleDeviceType3Ctrllr::warningGoesWithTheController()
{
    FamilyModule module(4);
    module.begin();
    module.pick(module.rangeBox(Channel::A), 2);
    const QPointer<QMessageBox> warning(warningOf(module));
    QVERIFY(warning);
    module.controller.reset();
    QVERIFY(!warning);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType3Ctrllr::warningConfirmedAfterTheRowWasRetiredSendsNothing_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("continue") << static_cast<int>(QMessageBox::Yes);
    QTest::newRow("abort") << static_cast<int>(QMessageBox::No);
}

void TstModuleDeviceType3Ctrllr::warningConfirmedAfterTheRowWasRetiredSendsNothing()
{
    QFETCH(int, answer);
    FamilyModule module(4);
    module.begin();
    module.pick(module.rangeBox(Channel::A), 2);
    QMessageBox *warning = warningOf(module);
    QVERIFY(warning);
    module.controller->retire();
    QTest::mouseClick(warning->button(static_cast<QMessageBox::StandardButton>(answer)), Qt::LeftButton);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstModuleDeviceType3Ctrllr::noWarningBelow200()
{
    FamilyModule module(4);
    module.begin();
    clickArrow(module.filterBox(Channel::A), true);
    module.time.advance(5000);
    QVERIFY(module.openDialogs().isEmpty());
    QCOMPARE(module.takeSent(),
             (QStringList{"T3 m3 c1: type 0, range 0, zero 0, filter 8, lists 0+0, selector 4", "get 3"}));
}

void TstModuleDeviceType3Ctrllr::deviceButtonShowsTheVersions()
{
    FamilyModule module(4);
    module.begin();
    qobject_cast<ModuleDeviceType3_Ctrllr *>(module.controller.get())->DeviceButton();
    const QMessageBox *box = warningOf(module);
    QVERIFY(box);
    QCOMPARE(box->text(),
             QStringLiteral("Component version numbers\nHardware:\t01.02\nFirmware 1:\t03.04.05\n"
                            "Firmware 2:\t06.07\n"));
}

void TstModuleDeviceType3Ctrllr::channelButtonIsEmpty()
{
    FamilyModule module(4);
    module.begin();
    qobject_cast<ModuleDeviceType3_Ctrllr *>(module.controller.get())->ChannelButton();
    QTest::mouseClick(childByName<QPushButton>(&module.row(), "pushButton_ChA"), Qt::LeftButton);
    QVERIFY(module.openDialogs().isEmpty());
    QCOMPARE(module.takeSent(), QStringList());
}

QTEST_MAIN(TstModuleDeviceType3Ctrllr)
#include "tst_moduledevicetype3_ctrllr.moc"
