#pragma once

namespace sim {

// How payloads are laid out: codes, sizes and the offsets of their fields, from the first byte of the
// payload.

/// The first byte of a payload, in both directions.
enum PayloadCode {
    SystemStatusCode = 0x01,
    FastSystemStatusCode = 0x08,
    FastModuleStatusCode = 0x10,
    StaticStatusCode = 0x12,
    EepromCode = 0x14,
    FpgaCode = 0x16,
    PowerCode = 0x18,
    SupplyCode = 0x1C,
    FunctionCode = 0x1E,
    BridgeCode = 0x20,
    RangeCode = 0x22,
    OffsetCode = 0x24,
    FilterCode = 0x26,
    ActionCode = 0x28,
    RatesCode = 0x2A,
    ResetCode = 0x2B
};

// Requests: a code, three zero bytes, arguments.
constexpr int kArgumentAt = 4;
constexpr int kFpgaFirstNumberAt = 5;
constexpr int kFpgaSecondNumberAt = 7;
constexpr int kFpgaDataAt = 9;

// Replies: every one begins with this head.
constexpr int kHeadSize = 16;
enum HeadAt {
    ControlFlagsAt = 8,
    StatusFlagsAt = 9,
    InputVoltageAt = 10,
    OutputVoltageAt = 12,
    LoadCurrentAt = 14
};
constexpr int kResetFlag = 1;         ///< of the control flags: the session must start anew
constexpr int kHotFlag = 1;           ///< of the status flags
constexpr double kInputSteps = 100;   ///< of the input voltage, in a volt
constexpr double kOutputSteps = 1000; ///< of the output voltage, in a volt
constexpr double kLoadSteps = 2000;   ///< of the load current, in an ampere

enum SystemAt { CountAt = 16, TypesAt = 18, FixedAt = 146, TextsAt = 156 };
constexpr int kSystemTexts = 6;
constexpr int kModuleSlots = FixedAt - TypesAt;
constexpr int kFixedModuleSlots = TextsAt - FixedAt;

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
constexpr int kModuleStatusSize = 564;
constexpr int kPowerStatusSize = 100;
constexpr int kShortTextSize = 16;
constexpr int kListTextSize = 200;

constexpr int kFastEntries = 130;
constexpr int kFastEntrySize = 9;
/// Bits of a fast status entry, counted from bit 0 of byte 0.
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
enum FastBits { VoltsBits = 11, CelsiusBits = 9, ValueBits = 18, SelftestBits = 5 };

} // namespace sim
