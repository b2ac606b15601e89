#pragma once

#include <QByteArray>
#include <QDebug>
#include <QMetaType>

/// One step of writing an FPGA image, or of the service panel.
struct FPGAfwCommand
{
    quint8 b0 = 0;  ///< target module: 0 controller, 1 analog, 2 gateway
    quint8 b1 = 0;  ///< target FPGA: 1 or 2
    quint8 b2 = 0;  ///< always 1
    quint8 b3 = 0;  ///< an FpgaCommandCode
    quint16 w1 = 0; ///< number of the page or block
    quint16 w2 = 0; ///< number of data bytes
    QByteArray data;
};

/// Fourth byte of an FPGAfwCommand.
enum class FpgaCommandCode : quint8 {
    Stop = 0,
    Start = 1,
    Reset = 0x2B, ///< not an FPGA command on the wire: the session sends the system reset in its place
    ErasePage = 0xE0,
    ProgramBlock = 0xE1,
};

bool operator==(const FPGAfwCommand &a, const FPGAfwCommand &b);
QDebug operator<<(QDebug debug, const FPGAfwCommand &command);

Q_DECLARE_METATYPE(FPGAfwCommand)
