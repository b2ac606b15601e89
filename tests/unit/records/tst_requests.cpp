#include "protocol/records/datagrams.h"
#include "protocol/records/fpgafwcommand.h"
#include "protocol/records/groupcommand.h"

#include <QtTest>

namespace {

template <typename Record>
QString printed(const Record &record)
{
    QString text;
    QDebug(&text) << record;
    return text.trimmed();
}

/// A record with one field changed must differ from the default.
template <typename Record, typename Change>
bool differs(Change change)
{
    Record record;
    change(record);
    return !(record == Record()) && record == record;
}

} // namespace

class TstRequests : public QObject
{
    Q_OBJECT

private slots:
    void selectorsHaveTheirWireValues();
    void everyFieldOfAType1RequestCounts();
    void everyFieldOfAType2RequestCounts();
    void everyFieldOfAType3RequestCounts();
    void everyFieldOfAGroupCommandCounts();
    void everyFieldOfAnFpgaCommandCounts();
    void requestsStartWithoutChannelAndSelector();
    void valuesPrintThemselves();
};

void TstRequests::selectorsHaveTheirWireValues()
{
    QCOMPARE(wireCode(ChannelSelector::None), quint8(0));
    QCOMPARE(wireCode(ChannelSelector::TypeIndex), quint8(1));
    QCOMPARE(wireCode(ChannelSelector::RangeIndex), quint8(2));
    QCOMPARE(wireCode(ChannelSelector::ManualOffset), quint8(3));
    QCOMPARE(wireCode(ChannelSelector::Filter), quint8(4));
    QCOMPARE(wireCode(ChannelSelector::Autozero), quint8(5));
    QCOMPARE(wireCode(ChannelSelector::ReversePolarity), quint8(6));
    QCOMPARE(wireCode(ChannelSelector::Shunt), quint8(7));
    QCOMPARE(wireCode(ChannelSelector::AutoReset), quint8(8));
    QCOMPARE(wireCode(ChannelSelector::ShuntAll), quint8(9));
}

void TstRequests::everyFieldOfAType1RequestCounts()
{
    using R = DatagramT1;
    const QStringList list{QStringLiteral("x")};
    QVERIFY(differs<R>([](R &r) { r.module = 1; }));
    QVERIFY(differs<R>([](R &r) { r.channel = 1; }));
    QVERIFY(differs<R>([&](R &r) { r.data.bridgeTypeList = list; }));
    QVERIFY(differs<R>([&](R &r) { r.data.gainList = list; }));
    QVERIFY(differs<R>([](R &r) { r.data.bridgeTypeIndex = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.gainIndex = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.autozero = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.manualOffset = "1"; }));
    QVERIFY(differs<R>([](R &r) { r.data.filterValue = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.reversePolarity = true; }));
    QVERIFY(differs<R>([](R &r) { r.data.shuntState = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.level = 1.0; }));
    QVERIFY(differs<R>([](R &r) { r.data.selector = 1; }));
}

void TstRequests::everyFieldOfAType2RequestCounts()
{
    using R = DatagramT2;
    const QStringList list{QStringLiteral("x")};
    QVERIFY(differs<R>([](R &r) { r.module = 1; }));
    QVERIFY(differs<R>([](R &r) { r.channel = 1; }));
    QVERIFY(differs<R>([&](R &r) { r.data.bridgeTypeList = list; }));
    QVERIFY(differs<R>([&](R &r) { r.data.gainList = list; }));
    QVERIFY(differs<R>([](R &r) { r.data.bridgeTypeIndex = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.gainIndex = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.filterValue = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.reversePolarity = true; }));
    QVERIFY(differs<R>([](R &r) { r.data.level = 1.0; }));
    QVERIFY(differs<R>([](R &r) { r.data.selector = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.autozero = 1; }));
}

void TstRequests::everyFieldOfAType3RequestCounts()
{
    using R = DatagramT3;
    const QStringList list{QStringLiteral("x")};
    QVERIFY(differs<R>([](R &r) { r.module = 1; }));
    QVERIFY(differs<R>([](R &r) { r.channel = 1; }));
    QVERIFY(differs<R>([&](R &r) { r.data.thermoDeviceTypeList = list; }));
    QVERIFY(differs<R>([&](R &r) { r.data.temperatureRangeList = list; }));
    QVERIFY(differs<R>([](R &r) { r.data.thermoDeviceTypeIndex = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.temperatureRangeIndex = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.filterValue = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.selector = 1; }));
    QVERIFY(differs<R>([](R &r) { r.data.autozero = 1; }));
}

void TstRequests::everyFieldOfAGroupCommandCounts()
{
    QVERIFY(differs<GroupCommand>([](GroupCommand &g) { g.moduleType = 1; }));
    QVERIFY(differs<GroupCommand>([](GroupCommand &g) { g.command = 1; }));
    QVERIFY(differs<GroupCommand>([](GroupCommand &g) { g.value = -1; }));
}

void TstRequests::everyFieldOfAnFpgaCommandCounts()
{
    using C = FPGAfwCommand;
    QVERIFY(differs<C>([](C &c) { c.b0 = 1; }));
    QVERIFY(differs<C>([](C &c) { c.b1 = 1; }));
    QVERIFY(differs<C>([](C &c) { c.b2 = 1; }));
    QVERIFY(differs<C>([](C &c) { c.b3 = 1; }));
    QVERIFY(differs<C>([](C &c) { c.w1 = 1; }));
    QVERIFY(differs<C>([](C &c) { c.w2 = 1; }));
    QVERIFY(differs<C>([](C &c) { c.data = "x"; }));
}

void TstRequests::requestsStartWithoutChannelAndSelector()
{
    QCOMPARE(DatagramT1().channel, quint8(0));
    QCOMPARE(DatagramT1().data.selector, quint8(0));
    QCOMPARE(DatagramT2().data.selector, quint8(0));
    QCOMPARE(DatagramT3().data.selector, quint8(0));
}

void TstRequests::valuesPrintThemselves()
{
    DatagramT1 t1;
    t1.module = 5;
    t1.channel = 2;
    t1.data.selector = 3;
    t1.data.manualOffset = "-1.5";
    QVERIFY(printed(t1).startsWith(
        QStringLiteral("DatagramT1(module 5, channel 2, DataModuleDeviceT1(selector 3")));
    QVERIFY(printed(t1).contains(QStringLiteral("offset -1.5")));
    QVERIFY(printed(DatagramT2())
                .startsWith(QStringLiteral("DatagramT2(module 0, channel 0, DataModuleDeviceT2")));
    QVERIFY(printed(DatagramT3())
                .startsWith(QStringLiteral("DatagramT3(module 0, channel 0, DataModuleDeviceT3")));
    QCOMPARE(printed(GroupCommand{9, 4, 2}), QStringLiteral("GroupCommand(type 9, command 4, value 2)"));
    QCOMPARE(printed(FPGAfwCommand{1, 2, 1, 225, 7, 256, "abc"}),
             QStringLiteral("FPGAfwCommand(1 2 1 225, 7, 256, 3 bytes)"));
}

QTEST_GUILESS_MAIN(TstRequests)
#include "tst_requests.moc"
