#pragma once

#include "link/settings.h"
#include "protocol/commperiods.h"
#include "protocol/modulewalk.h"
#include "protocol/pollingpattern.h"
#include "protocol/requestqueues.h"
#include "protocol/sessionstate.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVariant>
#include <memory>

class SerialComm;
class TcpSock;
class Timer;
class TimeSource;
struct CommLinks;
struct Fast_System_Status;
struct System_Status;

/// The session with the device, and the only sender on its link: opens the link, walks the system once to
/// learn what is there, then polls it on a fixed cycle and sends queued work, one request at a time.
///
/// Whatever goes wrong ends in Signal_CleanSlateProtocol() and a new start from the system status request.
/// A receiver of any signal may open or close the link inside the emission: the step that emitted then
/// belongs to a session that is over, and goes no further.
class Communication : public QObject
{
    Q_OBJECT

public:
    /// Nothing is sent. Both links must exist; the time source must outlive the object.
    Communication(TimeSource &time, CommLinks links, const CommPeriods &periods = {},
                  QObject *parent = nullptr);
    ~Communication() override;

    SessionState state() const { return m_state; }

    /// True if firmware commands were queued that have not been sent.
    bool firmwareCommandsWait() const { return m_queues.hasFirmwareCommands(); }

    /// True if the link of the kind last asked for is open.
    bool isCommunicationChannelOpen() const;

    /// Opens the link of settings.commType, leaves the other kind, and starts a new session. False if the
    /// link did not open or the kind is none of the two; the kind is remembered all the same.
    bool OpenCommunicationChannel(const model_Namespace::Settings &settings);

    /// Close one link. The session stays as it is: its timers find out that nobody answers.
    void closeSerialChannel();
    void closeTcpChannel();

    /// Logs a change of the state; sends nothing and touches no timer.
    void setState(SessionState state);

    /// Sends a static status request at once, whatever the state.
    void RequestModuleStatus(quint8 address);

    /// Has the static status of a module fetched by the cycle; emits statusBusy() before.
    void queueModuleStatus(quint8 address);

    /// Queues a DatagramT1, DatagramT2 or DatagramT3; emits statusBusy() before.
    void queueChannelRequest(const QVariant &request);

    /// Pauses the session for an EEPROM request; sends nothing itself. Agreed operation without a caller.
    void SendModuleEepromRequest(int module);

    /// Counts one turn for the module requests that wait; asks again or starts over for one that waits too
    /// long. False if none waits.
    bool CheckPendingModuleStatusRequests();

    /// Builds the frame around `payload`, of at most frame::kMaxPayload bytes, into `frame`; takes the next
    /// value of the transmit counter.
    void PackDatagram(quint8 addressee, const QByteArray &payload, QByteArray &frame);

    /// Hands a frame to the active link; without one it is dropped.
    void SendDatagram(const QByteArray &frame);

    /// Turns the payload of a reply into records, signals and the next step of the session.
    void ExtractReceivedPayLoadData(QByteArray &payload);

    /// Pack routines for the three channel records, by their agreed names; see command::packChannelData.
    void PackPayLoadDeviceT1Data(DataModuleDeviceT1 &data, quint8 channelOnWire, QByteArray &payload);
    void PackPayLoadDeviceT2Data(DataModuleDeviceT2 &data, quint8 channelOnWire, QByteArray &payload);
    void PackPayLoadDeviceT3Data(DataModuleDeviceT3 &data, quint8 channelOnWire, QByteArray &payload);

public slots:
    // Each of these emits statusBusy() before it appends to a queue; those that append nothing do not.
    /// kBit/s and number of channels, as texts of ratecodes.h. The answer is Signal_SamplingNBitRate().
    void Slot_SendSamplingRates(const QString &bitRate, const QString &channelCount);
    /// Sensor supply of a channel: its number in the chain, 1 or 0, and (volts - 3) x 10.
    void Slot_SendVoltageSupply(uchar channel, uchar on, uchar voltage);
    /// Function of a channel: its number in the chain, and a module type code. Name as agreed.
    void Slot_SendChannnelChangeReq(uchar channel, uchar type);
    /// For the power module: 1, what is set, and millivolts where that has a value. Reads its status
    /// afterwards.
    void Slot_SendPowerModuleSetting(uchar first, uchar setting, ushort value);
    void Slot_SendSystemReset();                        ///< goes out when nothing else waits
    void Slot_FirmwareCommands(const QVariant &cmdMsg); ///< an FPGAfwCommand; waits for the next slot
    void Slot_StartFPGAprocess();                       ///< sends what waits of them, reply by reply
    void Slot_ClearFirmwrCommands();                    ///< drops what waits of them; emits nothing

    // What the timers and the links told.
    void Slot_FPGAcmdsSend();
    void Slot_CyclicCommTrigger();
    void Slot_CommTimeout();
    void Slot_InitializationTimeout();
    void Slot_EepromRequestTimeout();
    void Slot_RcvDatagram(Comm_Type commType, QByteArray &frame);

signals:
    void Signal_SystemStatus(QVariant data);       ///< System_Status that starts a walk
    void Signal_FastSystemStatus(QVariant data);   ///< Fast_System_Status, before the record of its reply
    void Signal_FastModuleStatus(QVariant data);   ///< QVector<Fast_Module_Status> of 130 elements
    void Signal_StaticModuleStatus(QVariant data); ///< Module_Status
    void Signal_StaticPowerStatus(QVariant data);  ///< Power_Status
    void Signal_ModuleEepromStatus(QString data, int moduleAddress); ///< agreed signal; nothing emits it
    void Signal_SamplingNBitRate(QVariant data); ///< System_Status that answers a change of the rates
    void passRetryPort();                        ///< a link could not be opened, or is lost
    void statusBusy();                           ///< work is about to be queued
    void statusAvailbl();                        ///< a turn of the cycle had nothing but polling to do
    void packetRecvd();                          ///< a valid frame came in
    void packetSent();                           ///< a frame was written
    void stateInitialized();                     ///< the walk is over, the cycle is about to start
    void Signal_DebugMsg(QString text);          ///< a line for the user's debug display
    void ModuleRead(ushort index);               ///< the walk asked for this module
    void Signal_CleanSlateProtocol();            ///< all that is known of the system is void
    void Signal_RcvPayload(QByteArray &payload); ///< a reply was dealt with to its end
    void firmwareCommandsDropped();              ///< a clean slate took firmware commands that waited

private:
    void createTimers(TimeSource &time);
    void connectLinks();
    bool openSerial(const model_Namespace::Settings &settings);
    bool openTcp(const model_Namespace::Settings &settings);
    void cleanSlate();
    bool resetCommChannels();
    bool announceCleanSlate();
    bool startOver();
    void sendInitRequest(SessionState request);
    void sendPayload(const QByteArray &payload);
    void queueSystemCommand(const SystemCommand &command);
    bool sendQueuedRequest();
    void sendRequest(const QueuedRequest &request);
    void giveUpPendingModules();
    void raiseSemaphore();

    // Each takes one kind of reply; true if the common end of a reply is to follow.
    bool takeReply(const QByteArray &payload, const Fast_System_Status &head);
    bool takeFastSystemStatus(const Fast_System_Status &head);
    bool takeFastModuleStatus(const QByteArray &payload, const Fast_System_Status &head);
    bool takeSystemStatus(const QByteArray &payload, const Fast_System_Status &head);
    bool takeRefreshedStatus(const System_Status &status);
    bool takeStaticStatus(const QByteArray &payload, const Fast_System_Status &head);
    bool endStaticStatus(quint8 address, quint8 moduleType);
    void continueWalk();
    void finishWalk(quint8 moduleType);

    std::unique_ptr<SerialComm> m_serial;
    std::unique_ptr<TcpSock> m_tcp;
    CommPeriods m_periods;
    Timer *m_fpgaTimer = nullptr; // the timers are children
    Timer *m_initSequenceTimer = nullptr;
    Timer *m_cyclicCommTimer = nullptr;
    Timer *m_commTimer = nullptr;
    Timer *m_eepromRequestTimeoutTimer = nullptr;

    bool m_semaphore = false; ///< up: a new request may go out. Raised by replies, never by a reset
    bool m_fpgaRests = false; ///< the firmware timer is to go on once the semaphore is up
    Comm_Type m_commType = Comm_Type::None;
    SessionState m_state = SessionState::SystemStatusAwaited;
    bool m_systemStatusReceived = false;
    quint32 m_session = 0; ///< grows with each clean slate; tells a step that its session is over
    quint8 m_txCounter = 0;
    quint16 m_eepromModule = 0; ///< agreed member: the module asked for last; nothing reads it
    quint16 m_eepromBlock = 0;
    ModuleWalk m_walk;
    RequestQueues m_queues;
    PollingPattern m_polling;
};
