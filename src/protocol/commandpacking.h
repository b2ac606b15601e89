#pragma once

#include "protocol/records/devicecodes.h"
#include "protocol/sessionstate.h"

#include <QByteArray>
#include <QVariant>
#include <optional>

struct DataModuleDeviceT1;
struct DataModuleDeviceT2;
struct DataModuleDeviceT3;
struct FPGAfwCommand;

/// A command to the system as a whole, or to a part of it that is named by its parameters.
struct SystemCommand
{
    PayloadCode code = PayloadCode::SystemReset;
    quint8 p1 = 0;
    quint8 p2 = 0;
    quint8 p3 = 0;
    quint8 p4 = 0; ///< goes out with PowerSet only
};

/// Payloads of all requests that go to the device.
namespace command {

/// Five bytes: code, three zeros, argument.
QByteArray packStatusRequest(PayloadCode code, quint8 argument);

/// Request for the static status of one module: 0 the controller, 1 to 128 an analog module, 0x81 the
/// power module.
QByteArray packModuleRequest(quint8 address);

/// The request that begins a state of the session: the system status, the module `nextModule` of the walk,
/// or the EEPROM block, both with their low byte. The cyclic state has none.
std::optional<QByteArray> packInitRequest(SessionState state, quint16 nextModule, quint16 eepromBlock);

/// Number of a channel on the wire: 2m - 1 for channel 1 and 2m for channel 2 of module m, in one byte.
/// Nothing for any other channel, and nothing where the byte comes to 0.
std::optional<quint8> wireChannel(quint32 module, quint8 channel);

/// Payload of a channel command. The selector of `data` says which field goes out and is 0 afterwards; a
/// selector that the record does not know gives code 0 and parameter 0.
QByteArray packChannelData(DataModuleDeviceT1 &data, quint8 channelOnWire);
QByteArray packChannelData(DataModuleDeviceT2 &data, quint8 channelOnWire);
QByteArray packChannelData(DataModuleDeviceT3 &data, quint8 channelOnWire);

/// Payload for a variant that holds a DatagramT1, DatagramT2 or DatagramT3. Nothing, and a line in the log,
/// for another type; nothing for a request that names no channel.
std::optional<QByteArray> packChannelRequest(const QVariant &request);

QByteArray packSystemCommand(const SystemCommand &command);
QByteArray packSystemReset();

/// Payload of an FPGA command; that of the system reset if the command is the reset.
QByteArray packFpgaCommand(const FPGAfwCommand &command);

} // namespace command
