#pragma once

#include <QByteArray>
#include <QString>

/// A serial port for tests: what is written here is read from the device, and the other way round.
class PseudoTerminal
{
public:
    PseudoTerminal();
    ~PseudoTerminal();

    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    /// Path to open as a serial port.
    QString device() const { return m_device; }

    bool write(const QByteArray &bytes);

    /// What came so far; never waits.
    QByteArray readAll();

    /// The adapter is pulled out: device and connection vanish.
    void vanish();

private:
    int m_master = -1;
    QString m_device;
};
