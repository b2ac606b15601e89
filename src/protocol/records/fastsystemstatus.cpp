#include "protocol/records/fastsystemstatus.h"

#include "base/bytereader.h"

#include <tuple>

namespace {

auto fields(const Fast_System_Status &s)
{
    return std::tie(s.payloadType, s.reserved1, s.reserved2, s.controlFlags, s.statusFlags, s.voltageRaw,
                    s.outputVoltageRaw, s.loadCurrentRaw);
}

} // namespace

bool operator==(const Fast_System_Status &a, const Fast_System_Status &b)
{
    return fields(a) == fields(b);
}

QDebug operator<<(QDebug debug, const Fast_System_Status &status)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Fast_System_Status(type " << status.payloadType << ", control " << status.controlFlags
                    << ", status " << status.statusFlags << ", voltage " << status.voltageRaw << ", output "
                    << status.outputVoltageRaw << ", load " << status.loadCurrentRaw << ')';
    return debug;
}

Fast_System_Status readFastSystemStatus(ByteReader &reader)
{
    Fast_System_Status status;
    status.payloadType = reader.readU8();
    status.reserved1 = reader.readU8();
    for (quint8 &byte : status.reserved2)
        byte = reader.readU8();
    status.controlFlags = reader.readU8();
    status.statusFlags = reader.readU8();
    status.voltageRaw = reader.readU16();
    status.outputVoltageRaw = reader.readU16();
    status.loadCurrentRaw = reader.readU16();
    return status;
}
