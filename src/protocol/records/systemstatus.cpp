#include "protocol/records/systemstatus.h"

#include "base/bytereader.h"
#include "protocol/records/fastsystemstatus.h"

#include <QByteArrayList>
#include <algorithm>
#include <tuple>

namespace {

constexpr int kTextOffset = 156;
constexpr int kTextLengthModulus = 256; // the device counts the length of its texts in one byte

auto fields(const System_Status &s)
{
    return std::tie(s.nModules, s.analogModuleTypes, s.sModules, s.poweringMode, s.dataTransmission,
                    s.samplingRate, s.bitRate, s.reservedText, s.transmissionMode);
}

void readTexts(const QByteArray &payload, System_Status &status)
{
    const int length = (payload.size() - kTextOffset) % kTextLengthModulus;
    const QByteArrayList pieces = payload.mid(kTextOffset, length).split('\0');
    const std::array<QString *, 6> texts{&status.poweringMode, &status.dataTransmission,
                                         &status.samplingRate, &status.bitRate,
                                         &status.reservedText, &status.transmissionMode};
    for (std::size_t i = 0; i < texts.size(); ++i)
        *texts.at(i) = QString::fromUtf8(pieces.value(static_cast<int>(i)));
}

} // namespace

bool System_Status::hasFixedModule(quint8 typeCode) const
{
    return std::find(sModules.begin(), sModules.end(), typeCode) != sModules.end();
}

quint8 System_Status::analogModuleType(int index) const
{
    const bool inside = index >= 0 && index < static_cast<int>(analogModuleTypes.size());
    return inside ? analogModuleTypes.at(static_cast<std::size_t>(index)) : quint8(0);
}

bool operator==(const System_Status &a, const System_Status &b)
{
    return fields(a) == fields(b);
}

QDebug operator<<(QDebug debug, const System_Status &status)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "System_Status(" << status.nModules << " modules, " << status.poweringMode << ", "
                    << status.dataTransmission << ", " << status.samplingRate << ", " << status.bitRate
                    << ", " << status.transmissionMode << ')';
    return debug;
}

System_Status decodeSystemStatus(const QByteArray &payload)
{
    ByteReader reader(payload);
    reader.seek(kFastSystemStatusSize);
    System_Status status;
    status.nModules = reader.readU16();
    for (quint8 &type : status.analogModuleTypes)
        type = reader.readU8();
    for (quint8 &type : status.sModules)
        type = reader.readU8();
    readTexts(payload, status);
    return status;
}
