#pragma once

#include <QDebug>
#include <QMetaType>
#include <QString>

/// Kind of link to the device. Agreed name and values.
enum class Comm_Type : int {
    None = 0,     ///< not chosen yet
    Ethernet = 1, ///< "TCP" of the settings file, "use Gateway" of the dialog
    Serial = 2,   ///< "Serial" of the settings file, "use COM Port" of the dialog
};

namespace model_Namespace {

/// How to reach the device: the connection record of the whole program. The default is an empty record of
/// no kind; each owner fills in defaults of its own, which differ on purpose.
struct Settings
{
    QString portName;     ///< "COM" and a number
    int dataBits = 0;     ///< 7 or 8
    int parity = 0;       ///< 0 none, 2 even, 3 odd, 4 space, 5 mark
    int baudRate = 0;     ///< bit/s
    int stopBits = 0;     ///< 1 or 2
    int flowControl = 0;  ///< always 0, none
    QString serialConfig; ///< the serial parameters as the user reads them, "115200,E,8,1"
    QString ipAddress;    ///< address of the gateway or main server
    QString tcpPort;      ///< decimal text
    Comm_Type commType = Comm_Type::None;
};

bool operator==(const Settings &a, const Settings &b);
QDebug operator<<(QDebug debug, const Settings &settings);

/// The serial parameters that every set of defaults starts from: 115200 baud, even parity, 8 data bits,
/// 1 stop bit, no flow control. Only these five fields are set.
void setDefaultSerialParameters(Settings &settings);

} // namespace model_Namespace

Q_DECLARE_METATYPE(Comm_Type)
Q_DECLARE_METATYPE(model_Namespace::Settings)
