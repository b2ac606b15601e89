#pragma once

#include "link/settings.h"

class QSerialPort;

/// Sets baud rate (both directions), data bits, parity and stop bits of an open port, and no flow control.
/// A setting that the port refuses, as a pseudo terminal does with parity, is told in the log and leaves the
/// port usable.
void applyLineSettings(QSerialPort &port, const model_Namespace::Settings &settings);
