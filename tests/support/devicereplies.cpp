#include "support/devicereplies.h"

namespace device {

namespace {

constexpr char kController = 100;
constexpr char kPower = 120;
constexpr quint8 kPowerAddress = 0x81;
constexpr int kSlots = 128;
constexpr quint32 kStart = 0xF0F1;

QByteArray u16(quint32 value)
{
    QByteArray bytes;
    bytes.append(static_cast<char>(value & 0xFFU));
    bytes.append(static_cast<char>((value >> 8) & 0xFFU));
    return bytes;
}

quint32 sum(const QByteArray &bytes)
{
    quint32 total = kStart;
    for (const char byte : bytes)
        total += static_cast<quint8>(byte);
    return total;
}

quint32 crc(const QByteArray &bytes)
{
    quint32 value = kStart;
    for (const char byte : bytes) {
        value ^= static_cast<quint32>(static_cast<quint8>(byte)) << 8;
        for (int round = 0; round < 8; ++round)
            value = ((value << 1) ^ ((value & 0x8000U) != 0 ? 0x1021U : 0U)) & 0xFFFFU;
    }
    return value;
}

QByteArray padded(const QByteArray &text, int width)
{
    return text.leftJustified(width, '\0', true);
}

/// Head, address, a second byte that nothing reads, type.
QByteArray staticHead(quint8 address, char type)
{
    return head(kStaticStatus) + char(address) + '\0' + type;
}

QByteArray identification(const QByteArray &serialNumber)
{
    return padded(serialNumber, 16) + padded("HW 1", 16) + padded("1.0.1", 16) + padded("2.0.2", 16);
}

} // namespace

QByteArray frame(const QByteArray &payload, quint8 counter)
{
    QByteArray bytes = QByteArray::fromHex("8081828301");
    bytes.append(static_cast<char>(counter)).append('P').append('K').append(QByteArray(8, '\0'));
    bytes.append(u16(static_cast<quint32>(payload.size())));
    bytes.append(u16(sum(bytes)));
    bytes.append(payload);
    return bytes + u16(crc(bytes));
}

QByteArray head(char code, char controlFlags)
{
    return code + QByteArray(7, '\0') + controlFlags + QByteArray(7, '\0');
}

QByteArray fastSystemStatus(char controlFlags)
{
    return head(kFastSystemStatus, controlFlags);
}

QByteArray fastModuleStatus()
{
    return head(kFastModuleStatus) + QByteArray(130 * 9, '\0');
}

QByteArray systemStatus(const QByteArray &types, bool withPower)
{
    return systemStatusClaiming(static_cast<quint16>(types.size()), types, withPower);
}

QByteArray systemStatusClaiming(quint16 modules, const QByteArray &types, bool withPower)
{
    QByteArray fixedModules(1, kController);
    if (withPower)
        fixedModules.append(kPower);
    const QByteArray texts =
        QByteArray("fixed") + '\0' + "PCM" + '\0' + "1000" + '\0' + "5000" + '\0' + "x" + '\0' + "FM" + '\0';
    return head(kSystemStatus) + u16(modules) + padded(types, kSlots) + padded(fixedModules, 10) + texts;
}

QByteArray moduleStatus(quint8 address, quint8 type)
{
    const QByteArray settings(17, '\0'); // offsets 19 to 35: all indices and bits 0
    return staticHead(address, char(type)) + settings + identification("SN " + QByteArray::number(address)) +
           padded("0.0", 16) + padded("0.0", 16) + padded("1000", 16) + padded("1000", 16) +
           padded("350$120$", 200) + padded("2$4$", 200);
}

QByteArray powerStatus()
{
    const QByteArray settings = QByteArray(8, '\0') + u16(12000) + QByteArray(7, '\0'); // 12 V, fixed
    return staticHead(kPowerAddress, kPower) + settings + identification("PW 1");
}

Script chain(const QByteArray &types, bool withPower)
{
    return [types, withPower](const QByteArray &request) -> QList<QByteArray> {
        const auto argument = static_cast<quint8>(request.at(request.size() > 4 ? 4 : 0));
        switch (request.at(0)) {
        case kSystemStatus:
            return {systemStatus(types, withPower)};
        case kFastModuleStatus:
            return {fastModuleStatus()};
        case kStaticStatus:
            if (argument == kPowerAddress)
                return withPower ? QList<QByteArray>{powerStatus()} : QList<QByteArray>();
            if (argument == 0)
                return {moduleStatus(argument, quint8(kController))};
            if (argument <= types.size())
                return {moduleStatus(argument, quint8(types.at(argument - 1)))};
            return {};
        default:
            return {fastSystemStatus()};
        }
    };
}

} // namespace device
