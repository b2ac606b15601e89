#pragma once

namespace sim {

/// The first byte of a payload, in both directions.
enum RequestCode {
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

constexpr int kArgumentAt = 4;

} // namespace sim
