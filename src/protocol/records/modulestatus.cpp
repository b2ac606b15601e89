#include "protocol/records/modulestatus.h"

#include "base/bytereader.h"
#include "protocol/records/fastsystemstatus.h"

#include <tuple>

namespace {

constexpr int kShortText = 16;
constexpr int kListText = 200;

auto fields(const Module_Status &s)
{
    return std::tie(s.moduleAddress, s.identification, s.moduleType, s.bridgeIndexA, s.bridgeIndexB,
                    s.rangeIndexA, s.rangeIndexB, s.functionCodeA, s.functionCodeB, s.revPolBits, s.reserved1,
                    s.shuntPreselect, s.reserved2, s.reserved3, s.serialNumber, s.hardwareVersion,
                    s.firmware1Version, s.firmware2Version, s.offsetA, s.offsetB, s.filterA, s.filterB,
                    s.sensorList, s.rangeList);
}

} // namespace

bool operator==(const Module_Status &a, const Module_Status &b)
{
    return fields(a) == fields(b);
}

QDebug operator<<(QDebug debug, const Module_Status &status)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Module_Status(address " << status.moduleAddress << ", type " << status.moduleType
                    << ", " << status.serialNumber << ", bridge " << status.bridgeIndexA << '/'
                    << status.bridgeIndexB << ", range " << status.rangeIndexA << '/' << status.rangeIndexB
                    << ", function " << status.functionCodeA << '/' << status.functionCodeB << ", offset "
                    << status.offsetA << '/' << status.offsetB << ", filter " << status.filterA << '/'
                    << status.filterB << ')';
    return debug;
}

Module_Status decodeModuleStatus(const QByteArray &payload)
{
    ByteReader reader(payload);
    reader.seek(kFastSystemStatusSize);
    Module_Status status;
    status.moduleAddress = reader.readU8();
    status.identification = reader.readU8();
    status.moduleType = reader.readU8();
    status.bridgeIndexA = reader.readU8();
    status.bridgeIndexB = reader.readU8();
    status.rangeIndexA = reader.readU8();
    status.rangeIndexB = reader.readU8();
    status.functionCodeA = reader.readU8();
    status.functionCodeB = reader.readU8();
    status.revPolBits = reader.readU8();
    for (quint8 &byte : status.reserved1)
        byte = reader.readU8();
    status.shuntPreselect = reader.readU8();
    for (quint8 &byte : status.reserved2)
        byte = reader.readU8();
    status.reserved3 = reader.readU8();
    status.serialNumber = reader.readText(kShortText);
    status.hardwareVersion = reader.readText(kShortText);
    status.firmware1Version = reader.readText(kShortText);
    status.firmware2Version = reader.readText(kShortText);
    status.offsetA = reader.readText(kShortText);
    status.offsetB = reader.readText(kShortText);
    status.filterA = reader.readText(kShortText);
    status.filterB = reader.readText(kShortText);
    status.sensorList = reader.readText(kListText);
    status.rangeList = reader.readText(kListText);
    return status;
}
