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

QStringList oneText()
{
    return {QStringLiteral("x")};
}

/// Rows for the fields that the requests of all types have.
template <typename R>
void addSharedFields(const char *type)
{
    QTest::addRow("%s, module", type) << differs<R>([](R &r) { r.module = 1; });
    QTest::addRow("%s, channel", type) << differs<R>([](R &r) { r.channel = 1; });
    QTest::addRow("%s, filter", type) << differs<R>([](R &r) { r.data.filterValue = 1; });
    QTest::addRow("%s, autozero", type) << differs<R>([](R &r) { r.data.autozero = 1; });
    QTest::addRow("%s, selector", type) << differs<R>([](R &r) { r.data.selector = 1; });
}

/// Rows for the fields that types 1 and 2 share.
template <typename R>
void addAmplifierFields(const char *type)
{
    QTest::addRow("%s, bridge types", type) << differs<R>([](R &r) { r.data.bridgeTypeList = oneText(); });
    QTest::addRow("%s, bridge type", type) << differs<R>([](R &r) { r.data.bridgeTypeIndex = 1; });
    QTest::addRow("%s, gains", type) << differs<R>([](R &r) { r.data.gainList = oneText(); });
    QTest::addRow("%s, gain", type) << differs<R>([](R &r) { r.data.gainIndex = 1; });
    QTest::addRow("%s, polarity", type) << differs<R>([](R &r) { r.data.reversePolarity = true; });
    QTest::addRow("%s, level", type) << differs<R>([](R &r) { r.data.level = 1.0; });
}

} // namespace

class TstRequests : public QObject
{
    Q_OBJECT

private slots:
    void selectorsHaveTheirWireValues();
    void everyFieldOfARequestCounts_data();
    void everyFieldOfARequestCounts();
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

void TstRequests::everyFieldOfARequestCounts_data()
{
    QTest::addColumn<bool>("differ");
    addSharedFields<DatagramT1>("type 1");
    addAmplifierFields<DatagramT1>("type 1");
    QTest::newRow("type 1, manual offset")
        << differs<DatagramT1>([](DatagramT1 &r) { r.data.manualOffset = "1"; });
    QTest::newRow("type 1, shunt") << differs<DatagramT1>([](DatagramT1 &r) { r.data.shuntState = 1; });

    addSharedFields<DatagramT2>("type 2");
    addAmplifierFields<DatagramT2>("type 2");

    using R = DatagramT3;
    addSharedFields<R>("type 3");
    QTest::newRow("type 3, device types")
        << differs<R>([](R &r) { r.data.thermoDeviceTypeList = oneText(); });
    QTest::newRow("type 3, device type") << differs<R>([](R &r) { r.data.thermoDeviceTypeIndex = 1; });
    QTest::newRow("type 3, ranges") << differs<R>([](R &r) { r.data.temperatureRangeList = oneText(); });
    QTest::newRow("type 3, range") << differs<R>([](R &r) { r.data.temperatureRangeIndex = 1; });
}

void TstRequests::everyFieldOfARequestCounts()
{
    QFETCH(bool, differ);
    QVERIFY(differ);
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
