#pragma once

class QSerialPort;

/// False while the output buffer of the system is full, so that a write would be refused for the moment. True
/// for a port that is gone: writing to it finds that out.
bool hasOutputRoom(const QSerialPort &port);
