#pragma once

#include <QDebug>
#include <QMetaType>
#include <QString>
#include <array>

/// What one module is and how its two channels are set: the reply to the static status request of a
/// module that is not the power module.
struct Module_Status
{
    quint8 moduleAddress = 0;  ///< 0 the controller, 1 to 128 an analog module
    quint8 identification = 0; ///< carried, not interpreted
    quint8 moduleType = 0;     ///< module type code
    quint8 bridgeIndexA = 0;   ///< index into the sensor list
    quint8 bridgeIndexB = 0;
    quint8 rangeIndexA = 0; ///< index into the range list
    quint8 rangeIndexB = 0;
    quint8 functionCodeA = 0; ///< function of the channel, a module type code
    quint8 functionCodeB = 0;
    quint8 revPolBits = 0; ///< bit 0 reverse polarity of channel A, bit 1 of channel B
    std::array<quint8, 4> reserved1{};
    quint8 shuntPreselect = 0; ///< bits 0 and 1: positive and negative of A; bits 2 and 3: of B
    std::array<quint8, 4> reserved2{};
    quint8 reserved3 = 0;
    QString serialNumber;
    QString hardwareVersion;
    QString firmware1Version; ///< main firmware
    QString firmware2Version; ///< FPGA firmware
    QString offsetA;
    QString offsetB;
    QString filterA; ///< decimal text, Hz
    QString filterB;
    QString sensorList; ///< items each followed by "$"
    QString rangeList;  ///< items each followed by "$"
};

bool operator==(const Module_Status &a, const Module_Status &b);
QDebug operator<<(QDebug debug, const Module_Status &status);

/// Decodes a whole reply, common head included. What is missing reads as zero or as an empty text.
Module_Status decodeModuleStatus(const QByteArray &payload);

Q_DECLARE_METATYPE(Module_Status)
