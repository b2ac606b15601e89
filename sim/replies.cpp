#include "sim/replies.h"

#include "sim/bytes.h"
#include "sim/catalogue.h"
#include "sim/payloadlayout.h"

namespace sim {

namespace {

constexpr double kRawMaximum = 65535;

/// `value` in steps of a field of two bytes, at the field's end where it lies outside.
void putSteps(QByteArray &bytes, int offset, double value)
{
    putU16(bytes, offset, qRound(qBound(0.0, value, kRawMaximum)));
}

void putBits(QByteArray &bytes, int firstBit, int width, int value)
{
    for (int i = 0; i < width; ++i) {
        if ((value >> i) & 1) {
            const int bit = firstBit + i;
            putU8(bytes, bit / 8, u8At(bytes, bit / 8) | (1 << (bit % 8)));
        }
    }
}

void putIdentity(QByteArray &bytes, const Identity &identity)
{
    putText(bytes, SerialAt, kShortTextSize, identity.serial);
    putText(bytes, HardwareAt, kShortTextSize, identity.hardware);
    putText(bytes, Firmware1At, kShortTextSize, identity.firmware1);
    putText(bytes, Firmware2At, kShortTextSize, identity.firmware2);
}

} // namespace

QByteArray Replies::head(quint8 code) const
{
    QByteArray bytes(kHeadSize, '\0');
    putU8(bytes, 0, code);
    if (!m_chain.power)
        return bytes;
    const Power &power = *m_chain.power;
    putU8(bytes, StatusFlagsAt, power.tooHot ? kHotFlag : 0);
    putSteps(bytes, InputVoltageAt, m_live.inputVolts(power.inputVolts, m_now) * kInputSteps);
    putSteps(bytes, OutputVoltageAt, power.outputMillivolts());
    const double amperes = m_live.loadAmperes(power.loadAmperes, m_now) * power.loadShare();
    putSteps(bytes, LoadCurrentAt, amperes * kLoadSteps);
    return bytes;
}

QByteArray Replies::systemStatus() const
{
    QByteArray bytes = head(SystemStatusCode).leftJustified(TextsAt, '\0');
    putU16(bytes, CountAt, m_chain.moduleCount());
    for (int i = 0; i < qMin(m_chain.modules.size(), kModuleSlots); ++i)
        putU8(bytes, TypesAt + i, m_chain.modules.at(i).type);
    const QByteArray fixed = m_chain.fixedModuleCodes();
    for (int i = 0; i < fixed.size(); ++i)
        putU8(bytes, FixedAt + i, u8At(fixed, i));
    const SystemTexts &system = m_chain.system;
    for (const QString &text : {system.poweringMode, system.dataTransmission, system.samplingRate(),
                                system.bitRate(), system.fifth, system.transmissionMode})
        bytes += text.toUtf8() + '\0';
    return bytes;
}

QByteArray Replies::fastEntry(int address, const Health &health) const
{
    QByteArray entry(kFastEntrySize, '\0');
    putBits(entry, VoltsBit, VoltsBits, m_live.voltsRaw(address, health, m_now));
    putBits(entry, VoltsInvalidBit, 1, health.voltsInvalid ? 1 : 0);
    putBits(entry, CelsiusBit, CelsiusBits, m_live.celsiusRaw(address, health, m_now));
    putBits(entry, CelsiusInvalidBit, 1, health.celsiusInvalid ? 1 : 0);
    putBits(entry, SelftestBit, SelftestBits, health.selftest);
    return entry;
}

QByteArray Replies::analogFastEntry(int address) const
{
    const Module &module = m_chain.module(address);
    const Channel &a = module.channel(0);
    const Channel &b = module.channel(1);
    QByteArray entry = fastEntry(address, module.health);
    putBits(entry, ValueABit, ValueBits, m_live.channelRaw(address, 0, a, m_now));
    putBits(entry, ValueBBit, ValueBits, m_live.channelRaw(address, 1, b, m_now));
    putBits(entry, AutozeroABit, 1, a.autozeroRunning(m_now) ? 1 : 0);
    putBits(entry, AutozeroBBit, 1, b.autozeroRunning(m_now) ? 1 : 0);
    putBits(entry, ShuntABit, 1, a.shuntOn(m_now) ? 1 : 0);
    putBits(entry, ShuntBBit, 1, b.shuntOn(m_now) ? 1 : 0);
    return entry;
}

QByteArray Replies::fastModuleStatus() const
{
    QByteArray bytes = head(FastModuleStatusCode);
    const Controller &controller = m_chain.controller;
    for (int k = 0; k < kFastEntries; ++k) {
        // Entry 128 is the controller's even where there is a module 128; entry 0 repeats it, because 0 is
        // the address under which the controller answers.
        if (k == kControllerAddress || k == kControllerFastEntry)
            bytes += fastEntry(kControllerFastEntry, controller.health);
        else if (k == kPowerAddress && m_chain.power)
            bytes += fastEntry(k, m_chain.power->health);
        else if (m_chain.hasModule(k))
            bytes += analogFastEntry(k);
        else
            bytes += QByteArray(kFastEntrySize, '\0');
    }
    return bytes;
}

QByteArray Replies::staticStatus(quint8 address) const
{
    if (address == kControllerAddress)
        return controllerStatus();
    if (address == kPowerAddress && m_chain.power)
        return powerStatus();
    if (m_chain.hasModule(address))
        return analogStatus(address);
    return {};
}

QByteArray Replies::controllerStatus() const
{
    QByteArray bytes = head(StaticStatusCode).leftJustified(kModuleStatusSize, '\0');
    putU8(bytes, AddressAt, kControllerAddress);
    putU8(bytes, TypeAt, kControllerType);
    putIdentity(bytes, m_chain.controller.identity);
    return bytes;
}

QByteArray Replies::powerStatus() const
{
    const Power &power = *m_chain.power;
    QByteArray bytes = head(StaticStatusCode).leftJustified(kPowerStatusSize, '\0');
    putU8(bytes, AddressAt, kPowerAddress);
    putU8(bytes, TypeAt, kPowerType);
    putU8(bytes, PowerModeAt, power.mode);
    putU8(bytes, ProtectionAt, power.protection);
    putU16(bytes, FixedVoltageAt, power.fixedMillivolts);
    putU16(bytes, AutoVoltageAt, power.autoMillivolts);
    putIdentity(bytes, power.identity);
    return bytes;
}

QByteArray Replies::analogStatus(int address) const
{
    const Module &module = m_chain.module(address);
    QByteArray bytes = head(StaticStatusCode).leftJustified(kModuleStatusSize, '\0');
    putU8(bytes, AddressAt, address);
    putU8(bytes, TypeAt, module.type);
    putIdentity(bytes, module.identity);
    int polarity = 0;
    int preselect = 0;
    for (int i = 0; i < 2; ++i) {
        const Channel &channel = module.channel(i);
        putU8(bytes, BridgeAt + i, channel.bridgeIndex);
        putU8(bytes, RangeAt + i, channel.gainIndex);
        putU8(bytes, FunctionAt + i, channel.function);
        // The reserved bytes carry the sensor supply: its code while it is on.
        putU8(bytes, SupplyAt + i, channel.supplyOn ? channel.supplyCode : 0);
        putText(bytes, OffsetAt + i * kShortTextSize, kShortTextSize, channel.offset);
        putText(bytes, FilterAt + i * kShortTextSize, kShortTextSize, channel.filter);
        polarity |= (channel.reversePolarity ? 1 : 0) << i;
        preselect |= ((channel.positivePreselected ? 1 : 0) | (channel.negativePreselected ? 2 : 0))
                     << (2 * i);
    }
    putU8(bytes, PolarityAt, polarity);
    putU8(bytes, PreselectAt, preselect);
    putText(bytes, SensorsAt, kListTextSize, module.sensorList());
    putText(bytes, RangesAt, kListTextSize, module.rangeList());
    return bytes;
}

} // namespace sim
