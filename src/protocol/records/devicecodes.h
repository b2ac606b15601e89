#pragma once

#include <QtGlobal>

/// The code with which every payload begins, in both directions.
enum class PayloadCode : quint8 {
    SystemStatus = 0x01,       ///< request and reply
    FastSystemStatus = 0x08,   ///< request and reply
    FastModuleStatus = 0x10,   ///< request and reply
    StaticModuleStatus = 0x12, ///< request and reply
    ModuleEeprom = 0x14,       ///< request; its reply has no decoder
    FpgaCommand = 0x16,
    PowerSet = 0x18,
    VoltageSupply = 0x1C,
    ChannelChange = 0x1E,
    ChannelParamA = 0x20,
    ChannelParamB = 0x22,
    ChannelOffset = 0x24,
    ChannelFilter = 0x26,
    ChannelAction = 0x28,
    SamplingRates = 0x2A,
    SystemReset = 0x2B,
};

/// Parameter of PayloadCode::ChannelAction. One request with an action "everywhere" reaches all matching
/// channels of the chain.
enum class ChannelAction : quint8 {
    AutoReset = 128,
    Autozero = 129,
    PositiveShuntOff = 130,
    PositiveShuntOn = 131,
    PolarityNormal = 132,
    PolarityReversed = 133,
    NegativeShuntOff = 136,
    NegativeShuntOn = 137,
    PositiveShuntOffEverywhere = 138,
    PositiveShuntOnEverywhere = 139,
    NegativeShuntOffEverywhere = 140,
    NegativeShuntOnEverywhere = 141,
    ShuntsOffEverywhere = 142,
    PreselectedOnEverywhere = 143,
    DeselectPositiveShunt = 154,
    PreselectPositiveShunt = 155,
    DeselectNegativeShunt = 156,
    PreselectNegativeShunt = 157,
};

constexpr quint8 wireCode(ChannelAction action)
{
    return static_cast<quint8>(action);
}

/// Address of the power module in static status requests.
constexpr quint8 kPowerModuleAddress = 0x81;

/// The most analog modules that a chain can have.
constexpr int kMaxAnalogModules = 128;
