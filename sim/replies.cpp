#include "sim/replies.h"

#include "sim/bytes.h"
#include "sim/catalogue.h"

namespace sim {

namespace {

constexpr int kHeadSize = 16;
constexpr int kModuleSlots = 128;
constexpr int kSystemFixedSize = 156;
constexpr int kFastEntries = 130;
constexpr int kFastEntrySize = 9;
constexpr int kModuleStatusSize = 564;
constexpr int kPowerStatusSize = 100;
constexpr int kShortText = 16;
constexpr int kListText = 200;

enum HeadAt { StatusFlagsAt = 9, InputVoltageAt = 10, OutputVoltageAt = 12, LoadCurrentAt = 14 };
enum SystemAt { CountAt = 16, TypesAt = 18, FixedAt = 146 };
enum StaticAt {
    AddressAt = 16,
    TypeAt = 18,
    PowerModeAt = 19,
    ProtectionAt = 20,
    FixedVoltageAt = 27,
    AutoVoltageAt = 29,
    BridgeAt = 19,
    RangeAt = 21,
    FunctionAt = 23,
    PolarityAt = 25,
    SupplyAt = 26,
    PreselectAt = 30,
    SerialAt = 36,
    HardwareAt = 52,
    Firmware1At = 68,
    Firmware2At = 84,
    OffsetAt = 100,
    FilterAt = 132,
    SensorsAt = 164,
    RangesAt = 364
};

// Bits of a fast status entry, counted from bit 0 of byte 0.
enum FastBit {
    VoltsBit = 0,
    VoltsInvalidBit = 11,
    CelsiusBit = 12,
    CelsiusInvalidBit = 21,
    ValueABit = 24,
    AutozeroABit = 43,
    AutozeroBBit = 44,
    ShuntABit = 45,
    ShuntBBit = 46,
    ValueBBit = 48,
    SelftestBit = 67
};

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
    putText(bytes, SerialAt, kShortText, identity.serial);
    putText(bytes, HardwareAt, kShortText, identity.hardware);
    putText(bytes, Firmware1At, kShortText, identity.firmware1);
    putText(bytes, Firmware2At, kShortText, identity.firmware2);
}

} // namespace

QByteArray Replies::head(quint8 code) const
{
    QByteArray bytes(kHeadSize, '\0');
    putU8(bytes, 0, code);
    if (!m_chain.power)
        return bytes;
    const Power &power = *m_chain.power;
    putU8(bytes, StatusFlagsAt, power.tooHot ? 1 : 0);
    putU16(bytes, InputVoltageAt, qRound(m_live.inputVolts(power.inputVolts, m_now) * 100));
    putU16(bytes, OutputVoltageAt, power.outputMillivolts());
    putU16(bytes, LoadCurrentAt, qRound(m_live.loadAmperes(power.loadAmperes, m_now) * 2000));
    return bytes;
}

QByteArray Replies::systemStatus() const
{
    QByteArray bytes = head(0x01).leftJustified(kSystemFixedSize, '\0');
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
    putBits(entry, VoltsBit, 11, m_live.voltsRaw(address, health, m_now));
    putBits(entry, VoltsInvalidBit, 1, health.voltsInvalid ? 1 : 0);
    putBits(entry, CelsiusBit, 9, m_live.celsiusRaw(address, health, m_now));
    putBits(entry, CelsiusInvalidBit, 1, health.celsiusInvalid ? 1 : 0);
    putBits(entry, SelftestBit, 5, health.selftest);
    return entry;
}

QByteArray Replies::analogFastEntry(int address) const
{
    const Module &module = m_chain.module(address);
    const Channel &a = module.channel(0);
    const Channel &b = module.channel(1);
    QByteArray entry = fastEntry(address, module.health);
    putBits(entry, ValueABit, 18, m_live.channelRaw(address, 0, a, m_now));
    putBits(entry, ValueBBit, 18, m_live.channelRaw(address, 1, b, m_now));
    putBits(entry, AutozeroABit, 1, a.autozeroRunning(m_now) ? 1 : 0);
    putBits(entry, AutozeroBBit, 1, b.autozeroRunning(m_now) ? 1 : 0);
    putBits(entry, ShuntABit, 1, a.shuntOn(m_now) ? 1 : 0);
    putBits(entry, ShuntBBit, 1, b.shuntOn(m_now) ? 1 : 0);
    return entry;
}

QByteArray Replies::fastModuleStatus() const
{
    QByteArray bytes = head(0x10);
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
    QByteArray bytes = head(0x12).leftJustified(kModuleStatusSize, '\0');
    putU8(bytes, AddressAt, kControllerAddress);
    putU8(bytes, TypeAt, kControllerType);
    putIdentity(bytes, m_chain.controller.identity);
    return bytes;
}

QByteArray Replies::powerStatus() const
{
    const Power &power = *m_chain.power;
    QByteArray bytes = head(0x12).leftJustified(kPowerStatusSize, '\0');
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
    QByteArray bytes = head(0x12).leftJustified(kModuleStatusSize, '\0');
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
        putText(bytes, OffsetAt + i * kShortText, kShortText, channel.offset);
        putText(bytes, FilterAt + i * kShortText, kShortText, channel.filter);
        polarity |= (channel.reversePolarity ? 1 : 0) << i;
        preselect |= ((channel.positivePreselected ? 1 : 0) | (channel.negativePreselected ? 2 : 0))
                     << (2 * i);
    }
    putU8(bytes, PolarityAt, polarity);
    putU8(bytes, PreselectAt, preselect);
    putText(bytes, SensorsAt, kListText, module.sensorList());
    putText(bytes, RangesAt, kListText, module.rangeList());
    return bytes;
}

} // namespace sim
