#include "protocol/records/fastmodulestatus.h"

#include "base/bytereader.h"
#include "protocol/records/fastsystemstatus.h"

#include <array>
#include <tuple>

namespace {

auto fields(const Fast_Module_Status &s)
{
    return std::tie(s.supplyVoltage, s.supplyVoltageInvalid, s.temperature, s.temperatureInvalid, s.flag1,
                    s.flag2, s.valueA, s.flag3, s.autozeroA, s.autozeroB, s.shuntA, s.shuntB, s.flag4,
                    s.valueB, s.flag5, s.moduleState);
}

constexpr int kEntrySize = 9;

/// Takes bit fields out of the packed bytes of an entry, least significant bit first.
class BitTaker
{
public:
    explicit BitTaker(ByteReader &reader)
    {
        for (quint8 &byte : m_bytes)
            byte = reader.readU8();
    }

    quint32 take(unsigned width)
    {
        quint32 value = 0;
        for (unsigned bit = 0; bit < width; ++bit, ++m_position)
            value |= ((m_bytes.at(m_position / 8) >> (m_position % 8)) & 1U) << bit;
        return value;
    }

    quint8 takeByte(unsigned width) { return static_cast<quint8>(take(width)); }

private:
    std::array<quint8, kEntrySize> m_bytes{};
    unsigned m_position = 0;
};

} // namespace

bool operator==(const Fast_Module_Status &a, const Fast_Module_Status &b)
{
    return fields(a) == fields(b);
}

QDebug operator<<(QDebug debug, const Fast_Module_Status &status)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Fast_Module_Status(voltage " << status.supplyVoltage << ", temperature "
                    << status.temperature << ", values " << status.valueA << '/' << status.valueB
                    << ", state " << status.moduleState << ')';
    return debug;
}

Fast_Module_Status readFastModuleStatus(ByteReader &reader)
{
    BitTaker bits(reader);
    Fast_Module_Status status;
    status.supplyVoltage = static_cast<quint16>(bits.take(11));
    status.supplyVoltageInvalid = bits.takeByte(1);
    status.temperature = static_cast<quint16>(bits.take(9));
    status.temperatureInvalid = bits.takeByte(1);
    status.flag1 = bits.takeByte(1);
    status.flag2 = bits.takeByte(1);
    status.valueA = bits.take(18);
    status.flag3 = bits.takeByte(1);
    status.autozeroA = bits.takeByte(1);
    status.autozeroB = bits.takeByte(1);
    status.shuntA = bits.takeByte(1);
    status.shuntB = bits.takeByte(1);
    status.flag4 = bits.takeByte(1);
    status.valueB = bits.take(18);
    status.flag5 = bits.takeByte(1);
    status.moduleState = bits.takeByte(5);
    return status;
}

QVector<Fast_Module_Status> decodeFastModuleStatus(const QByteArray &payload)
{
    ByteReader reader(payload);
    reader.seek(kFastSystemStatusSize);
    QVector<Fast_Module_Status> entries;
    entries.reserve(kFastModuleStatusCount);
    for (int k = 0; k < kFastModuleStatusCount; ++k)
        entries.append(readFastModuleStatus(reader));
    return entries;
}
