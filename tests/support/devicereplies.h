#pragma once

#include <QByteArray>
#include <QList>
#include <functional>

/// Bytes that a device sends, put together here and not by the program's own code.
namespace device {

/// What the device answers to the payload of a request: payloads in order; none if it stays silent.
using Script = std::function<QList<QByteArray>(const QByteArray &request)>;

constexpr char kSystemStatus = 0x01;
constexpr char kFastSystemStatus = 0x08;
constexpr char kFastModuleStatus = 0x10;
constexpr char kStaticStatus = 0x12;

/// The whole frame around a payload, as the device sends it.
QByteArray frame(const QByteArray &payload, quint8 counter = 1);

/// The 16 bytes with which every reply begins; bit 0 of `controlFlags` asks for a new session.
QByteArray head(char code, char controlFlags = 0);

QByteArray fastSystemStatus(char controlFlags = 0);

/// 130 entries of zeros.
QByteArray fastModuleStatus();

/// `types` are the type codes of the analog modules. The controller is always there. The texts are
/// "fixed", "PCM", "1000", "5000", "x" and "FM".
QByteArray systemStatus(const QByteArray &types, bool withPower);

/// The same with a number of modules that need not fit the types.
QByteArray systemStatusClaiming(quint16 modules, const QByteArray &types, bool withPower);

/// Status of a module with its address in the serial number ("SN 5") and two entries in each list.
QByteArray moduleStatus(quint8 address, quint8 type);
QByteArray powerStatus();

/// A device that answers every status request as a chain of these modules does, and commands with a fast
/// system status.
Script chain(const QByteArray &types, bool withPower);

} // namespace device
