#pragma once

#include "link/portdirectory.h"
#include "link/settings.h"

#include <QByteArray>
#include <QObject>

class Communication_Aux;
class QSerialPort;
class TimeSource;

/// Carries frames over a COM port. Owns the port, which exists from open to close, and the decoder.
/// The operations are virtual so that tests can put a scripted link in its place.
class SerialComm : public QObject
{
    Q_OBJECT

public:
    /// `time` must outlive the object; the directory is copied.
    SerialComm(TimeSource &time, const PortDirectory &ports, QObject *parent = nullptr);
    ~SerialComm() override;

    /// True from a successful Open() to the next Close() or Open(), also while the port is lost.
    virtual bool IsOpen() const;

    /// True if the port named in the settings is there now.
    bool IsPortAvailable() const;

    /// The next Open() takes them. IsPortAvailable() and Write() look for their port from now on.
    virtual void SetSettings(const model_Namespace::Settings &settings);

    /// Opens the port named in the settings. On failure logs, emits retryPort() and returns false.
    virtual bool Open();

    /// Harmless if nothing was opened.
    virtual void Close();

    /// Writes a whole frame and emits dataWritten(), or emits retryPort() if the port is lost. Does nothing
    /// while neither the link is open nor its port there. Bytes that the port does not take at once wait, up
    /// to 64 KiB; a frame beyond that is dropped and logged, and the time-outs of the session do the rest.
    virtual void Write(const QByteArray &frame);

public slots:
    void Slot_DataReady();                      ///< the port has bytes: gives them to the decoder
    void Slot_ResetReceivedData();              ///< agreed name; touches the agreed members only
    void Slot_RcvDatagramOK(QByteArray &frame); ///< the decoder has a frame: passes it on

signals:
    /// A valid frame came in; the kind is always serial.
    void Signal_RcvSerialDatagram(Comm_Type commType, QByteArray &frame);

    void Signal_ResetState(); ///< agreed name; nothing emits it

    /// The port could not be opened, or is lost.
    void retryPort();
    void dataWritten(); ///< the port took a frame, or keeps it to be sent later

private:
    enum class State {
        Closed,
        Open,
        Lost, ///< the device is gone; reading has stopped, and the link waits to be opened again
    };

    void discardPort();
    void watchForLoss();
    void loseLink();

    PortDirectory m_ports;
    model_Namespace::Settings m_settings;
    Communication_Aux *m_decoder;  ///< child
    QSerialPort *m_port = nullptr; ///< child
    State m_state = State::Closed;
    QByteArray m_received; ///< with its length; agreed members that stay empty here
    int m_receivedLength = 0;
};
