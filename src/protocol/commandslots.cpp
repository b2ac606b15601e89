// The side of the session that takes orders: what the rest of the program asks for goes to its queue.

#include "base/timesource.h"
#include "protocol/communication.h"
#include "protocol/ratecodes.h"
#include "protocol/records/datagrams.h"

void Communication::queueModuleStatus(quint8 address)
{
    emit statusBusy();
    m_queues.addModuleRequest(address);
}

void Communication::queueChannelRequest(const QVariant &request)
{
    emit statusBusy();
    m_queues.addChannelRequest(request);
}

void Communication::queueSystemCommand(const SystemCommand &command)
{
    emit statusBusy();
    m_queues.addSystemCommand(command);
}

void Communication::Slot_SendSamplingRates(const QString &bitRate, const QString &channelCount)
{
    queueSystemCommand({PayloadCode::SamplingRates, rates::bitRateCode(bitRate),
                        rates::channelCountCode(channelCount), 0, 0});
    m_queues.setSystemStatusWanted(true);
}

void Communication::Slot_SendVoltageSupply(uchar channel, uchar on, uchar voltage)
{
    queueSystemCommand({PayloadCode::VoltageSupply, channel, on, voltage, 0});
}

void Communication::Slot_SendChannnelChangeReq(uchar channel, uchar type)
{
    queueSystemCommand({PayloadCode::ChannelChange, channel, type, 0, 0});
}

void Communication::Slot_SendPowerModuleSetting(uchar first, uchar setting, ushort value)
{
    const auto low = static_cast<quint8>(value & 0xFFU);
    const auto high = static_cast<quint8>(value >> 8);
    queueSystemCommand({PayloadCode::PowerSet, first, setting, low, high});
    queueModuleStatus(kPowerModuleAddress);
}

void Communication::Slot_SendSystemReset()
{
    m_queues.setSystemResetPending();
}

void Communication::Slot_FirmwareCommands(const QVariant &cmdMsg)
{
    emit statusBusy();
    m_queues.addFirmwareCommand(cmdMsg);
}

void Communication::Slot_StartFPGAprocess()
{
    m_fpgaRests = false;
    m_fpgaTimer->start(m_periods.fpga);
}

void Communication::Slot_ClearFirmwrCommands()
{
    m_queues.clearFirmwareCommands();
    m_fpgaRests = false;
    m_fpgaTimer->stop();
}

void Communication::PackPayLoadDeviceT1Data(DataModuleDeviceT1 &data, quint8 channelOnWire,
                                            QByteArray &payload)
{
    payload = command::packChannelData(data, channelOnWire);
}

void Communication::PackPayLoadDeviceT2Data(DataModuleDeviceT2 &data, quint8 channelOnWire,
                                            QByteArray &payload)
{
    payload = command::packChannelData(data, channelOnWire);
}

void Communication::PackPayLoadDeviceT3Data(DataModuleDeviceT3 &data, quint8 channelOnWire,
                                            QByteArray &payload)
{
    payload = command::packChannelData(data, channelOnWire);
}
