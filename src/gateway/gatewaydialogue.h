#pragma once

#include "gateway/gatewaycommands.h"
#include "gateway/gatewaysettings.h"
#include "gateway/gatewaystatus.h"

#include <QObject>
#include <chrono>

class Timer;
class TimeSource;

/// The dialogue with the gateway, without a window and without a socket: keeps the settings, makes the lines,
/// asks for the status once a second and reads what comes back.
class GatewayDialogue : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds kPollPeriod{1000};

    /// `time` must outlive the object.
    explicit GatewayDialogue(TimeSource &time, QObject *parent = nullptr,
                             std::chrono::milliseconds pollPeriod = kPollPeriod);

    const GatewaySettings &settings() const { return m_settings; }

    /// Sends a command that changes no setting.
    void send(const gateway::Command &command);

    // Each of these keeps the new value and sends its command at once.
    void setSimulation(int index);
    void setDataRate(const QString &bitRate, const QString &channelCount);
    void setMode(int index); ///< an index without a mode text sends the last mode again
    void setEndian(gateway::ByteOrder order);
    void setDataLength(gateway::SampleWidth width);
    void setDataFormat(gateway::SampleFormat format);
    void setExternalServer(const QString &address, const QString &port);
    void setActiveCom(int index);
    void setPtpMode(int index);
    void setDataProtocol(int index);            ///< an index beyond the list sends the last protocol again
    void changeAddress(const QString &address); ///< the gateway's answer is followed once

    /// Sets the gateway's clock to the present time.
    void setClock();

    /// Takes a received piece: shows it, and starts the polling if it is not a status line.
    void takePiece(const QByteArray &piece);
    void requestStatus();
    void stopPolling();

signals:
    void lineReady(const QByteArray &line); ///< to be written to the link

    /// To be added to the end of the dialogue that the operator sees. `follow`: the view goes to its end.
    void textToShow(const QString &text, bool follow);
    void statusRead(const gateway::Status &status);

    /// The gateway took the address that it was told to take; its first answer to that command.
    void addressChanged(const QString &address);

private:
    GatewaySettings m_settings;
    bool m_awaitsNewAddress = false;
    TimeSource &m_time;
    const std::chrono::milliseconds m_pollPeriod;
    Timer *m_pollTimer; ///< child
};
