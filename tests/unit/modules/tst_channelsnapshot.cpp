#include "modules/common/channelsnapshot.h"

#include "modules/common/channelrecord.h"

#include <QtTest>

namespace {

ChannelRecord fullRecord()
{
    ChannelRecord record;
    record.channelNumber = 5;
    record.bridgeTypeList = QStringList{"x"};
    record.bridgeTypeIndex = 3;
    record.gainList = QStringList{"y"};
    record.gainIndex = 7;
    record.autozero = 1;
    record.manualOffset = QStringLiteral("12,5 µV");
    record.filterValue = 2500;
    record.reversePolarity = 1;
    record.shuntState = 131;
    record.level = 4.5;
    return record;
}

} // namespace

/// The snapshot of a channel that goes out with each change request.
class TstChannelSnapshot : public QObject
{
    Q_OBJECT

private slots:
    void bridgeRequest();
    void voltageRequest();
    void thermoRequest();
};

void TstChannelSnapshot::bridgeRequest()
{
    const auto request = changeRequest<DatagramT1>(64, 2, fullRecord(), 7);
    DatagramT1 expected;
    expected.module = 64;
    expected.channel = 2;
    expected.data.bridgeTypeIndex = 3;
    expected.data.gainIndex = 7;
    expected.data.autozero = 1;
    expected.data.manualOffset = "12,5 \xC2\xB5V";
    expected.data.filterValue = 2500;
    expected.data.reversePolarity = true;
    expected.data.shuntState = 131;
    expected.data.selector = 7;
    QCOMPARE(request, expected); // no lists, no level
}

void TstChannelSnapshot::voltageRequest()
{
    const auto request = changeRequest<DatagramT2>(128, 1, fullRecord(), 2);
    DatagramT2 expected;
    expected.module = 128;
    expected.channel = 1;
    expected.data.bridgeTypeIndex = 3;
    expected.data.gainIndex = 7;
    expected.data.autozero = 1;
    expected.data.filterValue = 2500;
    expected.data.reversePolarity = true;
    expected.data.selector = 2;
    QCOMPARE(request, expected);
}

void TstChannelSnapshot::thermoRequest()
{
    const auto request = changeRequest<DatagramT3>(1, 1, fullRecord(), 4);
    DatagramT3 expected;
    expected.module = 1;
    expected.channel = 1;
    expected.data.thermoDeviceTypeIndex = 3;
    expected.data.temperatureRangeIndex = 7;
    expected.data.autozero = 1;
    expected.data.filterValue = 2500;
    expected.data.selector = 4;
    QCOMPARE(request, expected);
}

QTEST_GUILESS_MAIN(TstChannelSnapshot)
#include "tst_channelsnapshot.moc"
