#pragma once

#include <QDebug>
#include <QMetaType>
#include <QString>
#include <array>

/// What the system consists of and how it runs: the reply to the system status request. The common head
/// of the reply is a record of its own, Fast_System_Status.
struct System_Status
{
    quint16 nModules = 0; ///< analog modules present; the device may claim more than the 128 that fit
    std::array<quint8, 128> analogModuleTypes{}; ///< module type code of each analog slot, in order
    std::array<quint8, 10> sModules{};           ///< type codes of controller and power module, anywhere
    QString poweringMode;
    QString dataTransmission;
    QString samplingRate;
    QString bitRate;
    QString reservedText; ///< nothing reads it
    QString transmissionMode;

    bool hasFixedModule(quint8 typeCode) const;

    /// Type code of the analog module at `index`, counted from 0; 0 beyond the array.
    quint8 analogModuleType(int index) const;
};

bool operator==(const System_Status &a, const System_Status &b);
QDebug operator<<(QDebug debug, const System_Status &status);

/// Decodes a whole reply, common head included. What is missing reads as zero or as an empty text.
System_Status decodeSystemStatus(const QByteArray &payload);

Q_DECLARE_METATYPE(System_Status)
