#pragma once

#include <QString>

/// Module type codes as they stand on the wire.
enum class ModuleType : quint8 {
    Unknown = 0,
    StrainGauge = 1,
    Voltage = 2,
    Iepe = 3,
    Thermo = 4,
    Xvdt = 5,
    Potentiometer = 6,
    CurrentLoop = 7,
    Auxiliary = 8,
    Universal = 9,
    Controller = 100,
    Power = 120,
};

/// The four families of analog modules; the number is that of the family's classes.
enum class ModuleFamily { Unknown = 0, Type1 = 1, Type2 = 2, Type3 = 3, Type4 = 4 };

/// Which column headers a row has. The values are those of the module identification record.
enum class HeaderForm { Controller = 1, Power = 2, StrainGauge = 3, Voltage = 4, Thermo = 5, Universal = 6 };

constexpr quint8 wireCode(ModuleType type)
{
    return static_cast<quint8>(type);
}

/// Family of a type code; every code that is no analog module is Unknown.
ModuleFamily moduleFamily(quint8 typeCode);

/// Header form of an analog module; that of the universal module for unknown codes.
HeaderForm headerForm(quint8 typeCode);

/// Name that a row shows for a type code: "Analog" for the universal module, "Unknown" for unknown codes.
QString moduleTypeName(quint8 typeCode);
