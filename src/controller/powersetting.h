#pragma once

#include <QStringList>

constexpr double kMillivoltsPerVolt = 1000.0;

/// What a power module is told: the second argument of its setting command, of which the first is 1.
enum class PowerSetting : quint8 {
    None = 0x00,
    FixedVoltage = 0x10, ///< third argument: mV
    AutoVoltage = 0x11,  ///< third argument: mV
    FixedMode = 0x20,
    AutoMode = 0x21,
    ProtectionStandard = 0x30,
    ProtectionDerating = 0x31,
    ProtectionMissionCritical = 0x32,
};

/// The setting for an entry of the mode box; None for an index that the box does not offer.
PowerSetting modeSetting(int index);

/// The setting for an entry of the list of protections; standard for an index that is not in the list.
PowerSetting protectionSetting(int index);

/// The protections that the user can choose, in the order of the list.
QStringList protectionNames();

/// Name of a reported protection; the code as a decimal number if it has no name.
QString protectionName(quint8 code);

/// The third argument for an output voltage in volts: millivolts, rounded; 65 V at most,
/// and 0 for a negative value or one that is no number.
quint16 setpointMillivolts(double volts);
