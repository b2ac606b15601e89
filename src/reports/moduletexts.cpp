#include "reports/moduletexts.h"

#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"
#include "protocol/records/units.h"

namespace moduletexts {

namespace {

// Transmitters have codes of their own, but no row in the chain: only reports name them.
constexpr quint8 kInductiveTransmitter = 130;
constexpr quint8 kRadioTransmitter = 140;
constexpr quint8 kBluetooth = 150;

constexpr int kSerialNumberLength = 9;
constexpr int kShortDigits = 6;

struct TypeNames
{
    quint8 code;
    const char *shortName;
    const char *longName;
};

// All names as agreed, spelling included.
constexpr TypeNames kTypeNames[] = {
    {wireCode(ModuleType::StrainGauge), "STGX", "Strain Gauge"},
    {wireCode(ModuleType::Voltage), "VOLT", "Voltage"},
    {wireCode(ModuleType::Iepe), "IEPE_ICP", "IEPE_ICP"},
    {wireCode(ModuleType::Thermo), "THERMO", "Thermo"},
    {wireCode(ModuleType::Xvdt), "XVDT", "XVDT"},
    {wireCode(ModuleType::Potentiometer), "Potentiometer", "Potentiometer"},
    {wireCode(ModuleType::CurrentLoop), "4_20", "4_20"},
    {wireCode(ModuleType::Auxiliary), "Auxilary", "Auxilary"},
    {wireCode(ModuleType::Universal), "Analog", "Analog"},
    {wireCode(ModuleType::Controller), "CONT", "Controller"},
    {wireCode(ModuleType::Power), "POWER", "Power"},
    {kInductiveTransmitter, "INDUC_TSMTR", "Inductive Transmitter"},
    {kRadioTransmitter, "RDIO_TSMTR", "Radio Transmitter"},
    {kBluetooth, "BLUTOTH", "Bluetooth"},
};

QString typeName(quint8 code, const char *TypeNames::*form, const char *unknown)
{
    for (const TypeNames &names : kTypeNames) {
        if (names.code == code)
            return QString::fromLatin1(names.*form);
    }
    return QString::fromLatin1(unknown) + QString::number(code);
}

} // namespace

QString shortTypeName(quint8 code)
{
    return typeName(code, &TypeNames::shortName, "UNKNWN");
}

QString longTypeName(quint8 code)
{
    return typeName(code, &TypeNames::longName, "unknown");
}

QStringList identity(const Module_Status &module, int address)
{
    return {QString::number(address), longTypeName(module.moduleType), module.serialNumber,
            module.hardwareVersion,   module.firmware1Version,         module.firmware2Version};
}

QString nineDigits(const QString &serialNumber)
{
    return QString(serialNumber).remove(u' ').rightJustified(kSerialNumberLength, u'0');
}

QString selfTest(quint8 failureFlag)
{
    return failureFlag != 0 ? QStringLiteral("Failure") : QStringLiteral("O.K");
}

QString rangeWithUnit(const QString &value, quint8 functionCode)
{
    switch (static_cast<ModuleType>(functionCode)) {
    case ModuleType::StrainGauge:
        return QStringLiteral("±") + value + QStringLiteral(" mV/V");
    case ModuleType::Voltage:
    case ModuleType::Iepe:
    case ModuleType::Potentiometer:
    case ModuleType::Auxiliary:
        return QStringLiteral("±") + value + QStringLiteral(" V");
    case ModuleType::Thermo:
        return value + QStringLiteral(" °C");
    case ModuleType::Unknown:
    case ModuleType::Xvdt:
    case ModuleType::CurrentLoop:
    case ModuleType::Universal:
    case ModuleType::Controller:
    case ModuleType::Power:
        break;
    }
    return value;
}

QString shortVolts(quint16 raw)
{
    return QString::number(units::voltsFromRaw(raw), 'g', kShortDigits);
}

QString shortCelsius(quint16 raw)
{
    return QString::number(units::celsiusFromRaw(raw), 'g', kShortDigits);
}

QString volts(quint16 raw, int decimals)
{
    return QString::number(units::voltsFromRaw(raw), 'f', decimals);
}

QString celsius(quint16 raw, int decimals)
{
    return QString::number(units::celsiusFromRaw(raw), 'f', decimals);
}

} // namespace moduletexts
