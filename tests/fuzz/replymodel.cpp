#include "replymodel.h"

#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/powerstatus.h"
#include "protocol/records/systemstatus.h"
#include "sim/payloadlayout.h"

#include <QString>

namespace replymodel {

namespace {

constexpr int kPowerType = 120;
constexpr int kPowerStep = 0x81;

int u8(const QByteArray &payload, int at)
{
    return at < payload.size() ? static_cast<quint8>(payload.at(at)) : 0;
}

/// Of a value that is cut short nothing counts.
int u16(const QByteArray &payload, int at)
{
    return at + 1 < payload.size() ? u8(payload, at) | u8(payload, at + 1) << 8 : 0;
}

QString text(const QByteArray &payload, int at, int width)
{
    QByteArray bytes = payload.mid(at, width);
    const int end = bytes.indexOf('\0');
    if (end >= 0)
        bytes.truncate(end);
    return QString::fromUtf8(bytes);
}

quint32 bits(const QByteArray &payload, int firstByte, int firstBit, int width)
{
    quint32 value = 0;
    for (int i = 0; i < width; ++i) {
        const int bit = firstBit + i;
        value |= (static_cast<quint32>(u8(payload, firstByte + bit / 8)) >> bit % 8 & 1U) << i;
    }
    return value;
}

bool isHeadRead(const Fast_System_Status &status, const QByteArray &payload)
{
    return status.payloadType == u8(payload, 0) && status.controlFlags == u8(payload, sim::ControlFlagsAt) &&
           status.statusFlags == u8(payload, sim::StatusFlagsAt) &&
           status.voltageRaw == u16(payload, sim::InputVoltageAt) &&
           status.outputVoltageRaw == u16(payload, sim::OutputVoltageAt) &&
           status.loadCurrentRaw == u16(payload, sim::LoadCurrentAt);
}

bool areTextsRead(const System_Status &status, const QByteArray &payload)
{
    const int size = payload.size() < sim::TextsAt ? 0 : (payload.size() - sim::TextsAt) % 256;
    QByteArray rest = payload.mid(sim::TextsAt, size);
    for (const QString *shown : {&status.poweringMode, &status.dataTransmission, &status.samplingRate,
                                 &status.bitRate, &status.reservedText, &status.transmissionMode}) {
        const int end = rest.indexOf('\0');
        if (*shown != QString::fromUtf8(end < 0 ? rest : rest.left(end)))
            return false;
        rest = end < 0 ? QByteArray() : rest.mid(end + 1);
    }
    return true;
}

bool isSystemRead(const System_Status &status, const QByteArray &payload)
{
    if (status.nModules != u16(payload, sim::CountAt))
        return false;
    for (int i = 0; i < sim::kModuleSlots; ++i) {
        if (status.analogModuleType(i) != u8(payload, sim::TypesAt + i))
            return false;
    }
    for (int i = 0; i < sim::kFixedModuleSlots; ++i) {
        if (status.sModules.at(static_cast<std::size_t>(i)) != u8(payload, sim::FixedAt + i))
            return false;
    }
    return areTextsRead(status, payload);
}

bool isEntryRead(const Fast_Module_Status &status, const QByteArray &payload, int entry)
{
    const auto field = [&](int bit, int width) {
        return bits(payload, sim::kHeadSize + entry * sim::kFastEntrySize, bit, width);
    };
    return status.supplyVoltage == field(sim::VoltsBit, sim::VoltsBits) &&
           status.supplyVoltageInvalid == field(sim::VoltsInvalidBit, 1) &&
           status.temperature == field(sim::CelsiusBit, sim::CelsiusBits) &&
           status.temperatureInvalid == field(sim::CelsiusInvalidBit, 1) &&
           status.valueA == field(sim::ValueABit, sim::ValueBits) &&
           status.autozeroA == field(sim::AutozeroABit, 1) &&
           status.autozeroB == field(sim::AutozeroBBit, 1) && status.shuntA == field(sim::ShuntABit, 1) &&
           status.shuntB == field(sim::ShuntBBit, 1) &&
           status.valueB == field(sim::ValueBBit, sim::ValueBits) &&
           status.moduleState == field(sim::SelftestBit, sim::SelftestBits);
}

bool areEntriesRead(const QVector<Fast_Module_Status> &entries, const QByteArray &payload)
{
    if (entries.size() != sim::kFastEntries)
        return false;
    for (int entry = 0; entry < entries.size(); ++entry) {
        if (!isEntryRead(entries.at(entry), payload, entry))
            return false;
    }
    return true;
}

template <typename Status>
bool isIdentityRead(const Status &status, const QByteArray &payload)
{
    constexpr int kWidth = sim::kShortTextSize;
    return status.moduleAddress == u8(payload, sim::AddressAt) &&
           status.moduleType == u8(payload, sim::TypeAt) &&
           status.serialNumber == text(payload, sim::SerialAt, kWidth) &&
           status.hardwareVersion == text(payload, sim::HardwareAt, kWidth) &&
           status.firmware1Version == text(payload, sim::Firmware1At, kWidth) &&
           status.firmware2Version == text(payload, sim::Firmware2At, kWidth);
}

bool isModuleRead(const Module_Status &status, const QByteArray &payload)
{
    constexpr int kWidth = sim::kShortTextSize;
    return isIdentityRead(status, payload) && status.bridgeIndexA == u8(payload, sim::BridgeAt) &&
           status.bridgeIndexB == u8(payload, sim::BridgeAt + 1) &&
           status.rangeIndexA == u8(payload, sim::RangeAt) &&
           status.rangeIndexB == u8(payload, sim::RangeAt + 1) &&
           status.functionCodeA == u8(payload, sim::FunctionAt) &&
           status.functionCodeB == u8(payload, sim::FunctionAt + 1) &&
           status.revPolBits == u8(payload, sim::PolarityAt) &&
           status.shuntPreselect == u8(payload, sim::PreselectAt) &&
           status.offsetA == text(payload, sim::OffsetAt, kWidth) &&
           status.offsetB == text(payload, sim::OffsetAt + kWidth, kWidth) &&
           status.filterA == text(payload, sim::FilterAt, kWidth) &&
           status.filterB == text(payload, sim::FilterAt + kWidth, kWidth) &&
           status.sensorList == text(payload, sim::SensorsAt, sim::kListTextSize) &&
           status.rangeList == text(payload, sim::RangesAt, sim::kListTextSize);
}

bool isPowerRead(const Power_Status &status, const QByteArray &payload)
{
    return isIdentityRead(status, payload) && status.powerMode == u8(payload, sim::PowerModeAt) &&
           status.powerProtection == u8(payload, sim::ProtectionAt) &&
           status.fixedVoltage == u16(payload, sim::FixedVoltageAt) &&
           status.autoVoltage == u16(payload, sim::AutoVoltageAt);
}

} // namespace

Events Session::take(const QByteArray &payload, SessionState state)
{
    m_state = state;
    if ((u8(payload, sim::ControlFlagsAt) & sim::kResetFlag) != 0) {
        cleanSlate();
        return {Event::CleanSlate};
    }
    switch (u8(payload, 0)) {
    case sim::FastSystemStatusCode:
        return {Event::FastSystemStatus, Event::RcvPayload};
    case sim::FastModuleStatusCode:
        return {Event::FastSystemStatus, Event::FastModuleStatus, Event::RcvPayload};
    case sim::SystemStatusCode:
        return takeSystemStatus(payload);
    case sim::StaticStatusCode:
        return takeStaticStatus(payload);
    default:
        return {Event::RcvPayload};
    }
}

Events Session::takeSystemStatus(const QByteArray &payload)
{
    if (m_state != SessionState::SystemStatusAwaited) {
        cleanSlate();
        return {Event::DebugMsg, Event::DebugMsg, Event::CleanSlate};
    }
    if (m_wantsRates) {
        m_wantsRates = false;
        m_state = SessionState::Cyclic;
        return {Event::DebugMsg, Event::SamplingNBitRate};
    }
    m_state = SessionState::ModuleWalk;
    m_isSystemKnown = true;
    m_count = (u16(payload, sim::CountAt) + 1) % 65536;
    m_hasPower = payload.mid(sim::FixedAt, sim::kFixedModuleSlots).contains(char(kPowerType));
    return {Event::DebugMsg, Event::FastSystemStatus, Event::SystemStatus, Event::RcvPayload};
}

Events Session::takeStaticStatus(const QByteArray &payload)
{
    if (!m_isSystemKnown)
        return {Event::DebugMsg};
    const int type = u8(payload, sim::TypeAt);
    Events events;
    if (type == kPowerType)
        events << Event::FastSystemStatus << Event::StaticPowerStatus;
    else
        events << Event::DebugMsg << Event::FastSystemStatus << Event::StaticModuleStatus;
    if (m_state != SessionState::Cyclic) {
        events << walk(type);
        if (events.last() == Event::StateInitialized)
            events << Event::DebugMsg;
    }
    return events << Event::RcvPayload;
}

Event Session::walk(int type)
{
    m_next = (m_next + 1) % 65536;
    const bool allRead = m_next == m_count;
    if (type == kPowerType || m_next > m_count || (allRead && !m_hasPower)) {
        m_state = SessionState::Cyclic;
        return Event::StateInitialized;
    }
    if (allRead)
        m_next = kPowerStep;
    return Event::ModuleRead;
}

void Session::cleanSlate()
{
    m_state = SessionState::SystemStatusAwaited;
    m_isSystemKnown = false;
    m_next = 0;
    m_count = 0;
}

bool isRead(Event event, const QVariant &record, const QByteArray &payload)
{
    switch (event) {
    case Event::FastSystemStatus:
        return isHeadRead(record.value<Fast_System_Status>(), payload);
    case Event::SystemStatus:
    case Event::SamplingNBitRate:
        return isSystemRead(record.value<System_Status>(), payload);
    case Event::FastModuleStatus:
        return areEntriesRead(record.value<QVector<Fast_Module_Status>>(), payload);
    case Event::StaticModuleStatus:
        return isModuleRead(record.value<Module_Status>(), payload);
    case Event::StaticPowerStatus:
        return isPowerRead(record.value<Power_Status>(), payload);
    case Event::DebugMsg:
    case Event::CleanSlate:
    case Event::ModuleRead:
    case Event::StateInitialized:
    case Event::RcvPayload:
    case Event::Count:
        break;
    }
    return true; // carries no record
}

} // namespace replymodel
