#pragma once

#include <QDebug>
#include <QMetaType>
#include <QString>
#include <array>

/// The reply to the static status request of the power module.
struct Power_Status
{
    quint8 moduleAddress = 0;
    quint8 identification = 0; ///< carried, not interpreted
    quint8 moduleType = 0;     ///< 120 for the power module
    quint8 powerMode = 0;      ///< 0 fixed output voltage, else automatic
    quint8 powerProtection = 0;
    std::array<quint8, 4> reserved1{};
    quint8 reserved2 = 0;
    quint8 reserved3 = 0;
    quint16 fixedVoltage = 0; ///< set output voltage in fixed mode, mV
    quint16 autoVoltage = 0;  ///< set output voltage in automatic mode, mV
    quint16 reserved4 = 0;
    std::array<quint8, 2> reserved5{};
    quint8 reserved6 = 0;
    QString serialNumber; ///< empty: no power module answers
    QString hardwareVersion;
    QString firmware1Version;
    QString firmware2Version;
};

bool operator==(const Power_Status &a, const Power_Status &b);
QDebug operator<<(QDebug debug, const Power_Status &status);

/// Decodes a whole reply, common head included. What is missing reads as zero or as an empty text.
Power_Status decodePowerStatus(const QByteArray &payload);

Q_DECLARE_METATYPE(Power_Status)
