#include "protocol/commandpacking.h"

#include "base/bytewriter.h"
#include "base/variantcast.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/fpgafwcommand.h"

#include <QDebug>
#include <initializer_list>

namespace command {

namespace {

constexpr int kReservedBytes = 3; ///< zeros behind the code of every request

/// The fields of a change request that can go on the wire, whatever record they came from.
struct ChannelChange
{
    int recordType = 0; ///< 1 to 3, for the log
    ChannelSelector selector = ChannelSelector::None;
    qint32 typeIndex = 0;
    qint32 rangeIndex = 0;
    qint32 filterValue = 0;
    bool reversePolarity = false;
    quint8 shuntState = 0;
    QByteArray manualOffset;
};

struct Parameter
{
    quint8 code = 0;
    QByteArray bytes;
    bool isText = false;
};

/// The selector of a record, None if it is not among those that the record knows.
ChannelSelector knownSelector(quint8 value, std::initializer_list<ChannelSelector> known)
{
    for (const ChannelSelector selector : known) {
        if (wireCode(selector) == value)
            return selector;
    }
    return ChannelSelector::None;
}

Parameter byteParameter(PayloadCode code, qint32 value)
{
    return {static_cast<quint8>(code), ByteWriter().writeU8(static_cast<quint8>(value)).bytes(), false};
}

/// A text has no length field: it ends with a zero byte and the payload.
Parameter textParameter(PayloadCode code, const QByteArray &text)
{
    return {static_cast<quint8>(code), ByteWriter().writeBytes(text).writeZeros(1).bytes(), true};
}

Parameter parameterOf(const ChannelChange &change)
{
    switch (change.selector) {
    case ChannelSelector::TypeIndex:
        return byteParameter(PayloadCode::ChannelParamA, change.typeIndex);
    case ChannelSelector::RangeIndex:
        return byteParameter(PayloadCode::ChannelParamB, change.rangeIndex);
    case ChannelSelector::ManualOffset:
        return textParameter(PayloadCode::ChannelOffset, change.manualOffset);
    case ChannelSelector::Filter:
        return textParameter(PayloadCode::ChannelFilter, QByteArray::number(change.filterValue));
    case ChannelSelector::Autozero:
        return byteParameter(PayloadCode::ChannelAction, wireCode(ChannelAction::Autozero));
    case ChannelSelector::ReversePolarity:
        return byteParameter(PayloadCode::ChannelAction,
                             wireCode(change.reversePolarity ? ChannelAction::PolarityReversed
                                                             : ChannelAction::PolarityNormal));
    case ChannelSelector::Shunt:
        return byteParameter(PayloadCode::ChannelAction, change.shuntState);
    case ChannelSelector::AutoReset:
        return byteParameter(PayloadCode::ChannelAction, wireCode(ChannelAction::AutoReset));
    case ChannelSelector::None:
    case ChannelSelector::ShuntAll:
        break;
    }
    return {0, QByteArray(1, '\0'), false};
}

void logPacking(const ChannelChange &change, const Parameter &parameter, quint8 channelOnWire)
{
    QDebug line = qDebug();
    line.noquote().nospace() << "Packing Change Request Type " << change.recordType
                             << " ===> setChannelCommand ";
    if (parameter.isText)
        line << "param2Str +parameter1 +parameter2: " << parameter.bytes.chopped(1);
    else
        line << "param2 + parameter1 + parameter2: " << quint8(parameter.bytes.at(0));
    line << ' ' << channelOnWire << ' ' << parameter.code;
}

QByteArray packChange(const ChannelChange &change, quint8 channelOnWire)
{
    const Parameter parameter = parameterOf(change);
    ByteWriter writer;
    writer.writeU8(parameter.code).writeZeros(kReservedBytes).writeU8(channelOnWire);
    writer.writeBytes(parameter.bytes);
    logPacking(change, parameter, channelOnWire);
    return writer.bytes();
}

template <typename Request>
std::optional<QByteArray> packRequest(const QVariant &variant)
{
    auto request = recordFromVariant<Request>(variant);
    const auto channel = wireChannel(request.module, request.channel);
    if (!channel)
        return std::nullopt;
    return packChannelData(request.data, *channel);
}

} // namespace

QByteArray packStatusRequest(PayloadCode code, quint8 argument)
{
    return ByteWriter()
        .writeU8(static_cast<quint8>(code))
        .writeZeros(kReservedBytes)
        .writeU8(argument)
        .bytes();
}

QByteArray packModuleRequest(quint8 address)
{
    return packStatusRequest(PayloadCode::StaticModuleStatus, address);
}

std::optional<QByteArray> packInitRequest(SessionState state, quint16 nextModule, quint16 eepromBlock)
{
    switch (state) {
    case SessionState::SystemStatusAwaited:
        return packStatusRequest(PayloadCode::SystemStatus, 1);
    case SessionState::ModuleWalk:
        return packModuleRequest(static_cast<quint8>(nextModule & 0xFFU));
    case SessionState::ModuleEeprom:
        return packStatusRequest(PayloadCode::ModuleEeprom, static_cast<quint8>(eepromBlock & 0xFFU));
    case SessionState::Cyclic:
        break;
    }
    return std::nullopt;
}

std::optional<quint8> wireChannel(quint32 module, quint8 channel)
{
    if (channel != 1 && channel != 2)
        return std::nullopt;
    const quint8 number = static_cast<quint8>(2 * module - 2 + channel);
    if (number == 0)
        return std::nullopt;
    return number;
}

QByteArray packChannelData(DataModuleDeviceT1 &data, quint8 channelOnWire)
{
    using S = ChannelSelector;
    ChannelChange change;
    change.recordType = 1;
    change.selector = knownSelector(data.selector, {S::TypeIndex, S::RangeIndex, S::ManualOffset, S::Filter,
                                                    S::Autozero, S::ReversePolarity, S::Shunt, S::AutoReset});
    change.typeIndex = data.bridgeTypeIndex;
    change.rangeIndex = data.gainIndex;
    change.filterValue = data.filterValue;
    change.reversePolarity = data.reversePolarity;
    change.shuntState = data.shuntState;
    change.manualOffset = QByteArray::fromStdString(data.manualOffset);
    data.selector = wireCode(S::None);
    return packChange(change, channelOnWire);
}

QByteArray packChannelData(DataModuleDeviceT2 &data, quint8 channelOnWire)
{
    using S = ChannelSelector;
    ChannelChange change;
    change.recordType = 2;
    change.selector = knownSelector(data.selector, {S::TypeIndex, S::RangeIndex, S::Filter, S::Autozero,
                                                    S::ReversePolarity, S::AutoReset});
    change.typeIndex = data.bridgeTypeIndex;
    change.rangeIndex = data.gainIndex;
    change.filterValue = data.filterValue;
    change.reversePolarity = data.reversePolarity;
    data.selector = wireCode(S::None);
    return packChange(change, channelOnWire);
}

QByteArray packChannelData(DataModuleDeviceT3 &data, quint8 channelOnWire)
{
    using S = ChannelSelector;
    ChannelChange change;
    change.recordType = 3;
    change.selector = knownSelector(data.selector, {S::TypeIndex, S::RangeIndex, S::Filter});
    change.typeIndex = data.thermoDeviceTypeIndex;
    change.rangeIndex = data.temperatureRangeIndex;
    change.filterValue = data.filterValue;
    data.selector = wireCode(S::None);
    return packChange(change, channelOnWire);
}

std::optional<QByteArray> packChannelRequest(const QVariant &request)
{
    const int type = request.userType();
    if (type == qMetaTypeId<DatagramT1>())
        return packRequest<DatagramT1>(request);
    if (type == qMetaTypeId<DatagramT2>())
        return packRequest<DatagramT2>(request);
    if (type == qMetaTypeId<DatagramT3>())
        return packRequest<DatagramT3>(request);
    qDebug() << "Unknown Request being packed";
    return std::nullopt;
}

QByteArray packSystemCommand(const SystemCommand &command)
{
    ByteWriter writer;
    writer.writeU8(static_cast<quint8>(command.code)).writeZeros(kReservedBytes);
    writer.writeU8(command.p1).writeU8(command.p2).writeU8(command.p3);
    if (command.code == PayloadCode::PowerSet)
        writer.writeU8(command.p4);
    return writer.bytes();
}

QByteArray packSystemReset()
{
    return packSystemCommand({PayloadCode::SystemReset, 0, 0, 0, 0});
}

QByteArray packFpgaCommand(const FPGAfwCommand &command)
{
    if (command.b3 == static_cast<quint8>(FpgaCommandCode::Reset))
        return packSystemReset();
    return ByteWriter()
        .writeU8(static_cast<quint8>(PayloadCode::FpgaCommand))
        .writeU8(command.b0)
        .writeU8(command.b1)
        .writeU8(command.b2)
        .writeU8(command.b3)
        .writeU16(command.w1)
        .writeU16(command.w2)
        .writeBytes(command.data)
        .bytes();
}

} // namespace command
