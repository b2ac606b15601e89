#include "protocol/records/powerstatus.h"

#include "base/bytereader.h"
#include "protocol/records/fastsystemstatus.h"

#include <tuple>

namespace {

constexpr int kTextWidth = 16;

auto fields(const Power_Status &s)
{
    return std::tie(s.moduleAddress, s.identification, s.moduleType, s.powerMode, s.powerProtection,
                    s.reserved1, s.reserved2, s.reserved3, s.fixedVoltage, s.autoVoltage, s.reserved4,
                    s.reserved5, s.reserved6, s.serialNumber, s.hardwareVersion, s.firmware1Version,
                    s.firmware2Version);
}

} // namespace

bool operator==(const Power_Status &a, const Power_Status &b)
{
    return fields(a) == fields(b);
}

QDebug operator<<(QDebug debug, const Power_Status &status)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Power_Status(type " << status.moduleType << ", " << status.serialNumber << ", mode "
                    << status.powerMode << ", protection " << status.powerProtection << ", fixed "
                    << status.fixedVoltage << " mV, auto " << status.autoVoltage << " mV)";
    return debug;
}

Power_Status decodePowerStatus(const QByteArray &payload)
{
    ByteReader reader(payload);
    reader.seek(kFastSystemStatusSize);
    Power_Status status;
    status.moduleAddress = reader.readU8();
    status.identification = reader.readU8();
    status.moduleType = reader.readU8();
    status.powerMode = reader.readU8();
    status.powerProtection = reader.readU8();
    for (quint8 &byte : status.reserved1)
        byte = reader.readU8();
    status.reserved2 = reader.readU8();
    status.reserved3 = reader.readU8();
    status.fixedVoltage = reader.readU16();
    status.autoVoltage = reader.readU16();
    status.reserved4 = reader.readU16();
    for (quint8 &byte : status.reserved5)
        byte = reader.readU8();
    status.reserved6 = reader.readU8();
    status.serialNumber = reader.readText(kTextWidth);
    status.hardwareVersion = reader.readText(kTextWidth);
    status.firmware1Version = reader.readText(kTextWidth);
    status.firmware2Version = reader.readText(kTextWidth);
    return status;
}
