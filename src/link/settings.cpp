#include "link/settings.h"

#include <tuple>

namespace model_Namespace {

namespace {

constexpr int kBaudRate = 115200;
constexpr int kDataBits = 8;
constexpr int kEvenParity = 2;
constexpr int kStopBits = 1;

auto fields(const Settings &s)
{
    return std::tie(s.portName, s.dataBits, s.parity, s.baudRate, s.stopBits, s.flowControl, s.serialConfig,
                    s.ipAddress, s.tcpPort, s.commType);
}

} // namespace

bool operator==(const Settings &a, const Settings &b)
{
    return fields(a) == fields(b);
}

QDebug operator<<(QDebug debug, const Settings &settings)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Settings(kind " << static_cast<int>(settings.commType) << ", " << settings.portName
                    << ' ' << settings.baudRate << ' ' << settings.parity << ' ' << settings.dataBits << ' '
                    << settings.stopBits << ' ' << settings.serialConfig << ", " << settings.ipAddress << ':'
                    << settings.tcpPort << ')';
    return debug;
}

void setDefaultSerialParameters(Settings &settings)
{
    settings.dataBits = kDataBits;
    settings.parity = kEvenParity;
    settings.baudRate = kBaudRate;
    settings.stopBits = kStopBits;
    settings.flowControl = 0;
}

} // namespace model_Namespace
