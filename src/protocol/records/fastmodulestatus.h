#pragma once

#include <QDebug>
#include <QMetaType>
#include <QVector>

class ByteReader;

/// Live values of one module, unpacked from its 9 bytes in the fast module status reply.
struct Fast_Module_Status
{
    quint16 supplyVoltage = 0; ///< 11 bits, 10 mV
    quint8 supplyVoltageInvalid = 0;
    quint16 temperature = 0; ///< 9 bits, 0.5 degrees Celsius, offset -55
    quint8 temperatureInvalid = 0;
    quint8 flag1 = 0;
    quint8 flag2 = 0;
    quint32 valueA = 0; ///< channel A, raw, 18 bits
    quint8 flag3 = 0;
    quint8 autozeroA = 0;
    quint8 autozeroB = 0;
    quint8 shuntA = 0;
    quint8 shuntB = 0;
    quint8 flag4 = 0;
    quint32 valueB = 0; ///< channel B, raw, 18 bits
    quint8 flag5 = 0;
    quint8 moduleState = 0; ///< self-test result, 5 bits; 0 means no failure
};

bool operator==(const Fast_Module_Status &a, const Fast_Module_Status &b);
QDebug operator<<(QDebug debug, const Fast_Module_Status &status);

constexpr int kFastModuleStatusCount = 130; ///< entries of one reply; entry k belongs to the module k
constexpr int kControllerEntry = 128;
constexpr int kPowerEntry = 129;

/// Reads the next 9 bytes; missing ones read as zero.
Fast_Module_Status readFastModuleStatus(ByteReader &reader);

/// The 130 entries of a whole reply, common head included.
QVector<Fast_Module_Status> decodeFastModuleStatus(const QByteArray &payload);

Q_DECLARE_METATYPE(Fast_Module_Status)
