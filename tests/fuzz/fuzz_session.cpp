// A live session between scripted links: whatever the device sends and the operator asks for, each reply has
// the effect that was agreed, the link is not flooded, and a sound device is followed again in the end.

#include "fuzzinput.h"
#include "fuzztarget.h"
#include "protocol/commlinks.h"
#include "protocol/communication.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/fpgafwcommand.h"
#include "replymodel.h"
#include "sessioninput.h"
#include "sim/framecodec.h"
#include "support/fakelinks.h"
#include "support/virtualtime.h"

#include <QCoreApplication>
#include <functional>
#include <utility>

using fuzz::require;
using replymodel::Event;

namespace {

constexpr int kStep = 500;              ///< ms: a period of the polling
constexpr int kPolls = 3;               ///< in a row: the device is followed again
constexpr int kRecovery = 6000;         ///< ms: a time-out, a walk and the polls
constexpr int kLongestRecovery = 12000; ///< ms: the same of a session that also waits for its rates

device::Script soundDevice()
{
    return device::chain(QByteArray("\x01\x02\x04\x09"), true);
}

model_Namespace::Settings settingsOf(Comm_Type kind)
{
    model_Namespace::Settings settings;
    settings.commType = kind;
    settings.portName = QStringLiteral("COM1");
    settings.ipAddress = QStringLiteral("10.0.0.1");
    settings.tcpPort = QStringLiteral("10001");
    return settings;
}

DataModuleDeviceT1 channelData(fuzz::Input &input)
{
    DataModuleDeviceT1 data;
    data.selector = input.u8();
    data.bridgeTypeIndex = static_cast<qint16>(input.u16());
    data.gainIndex = static_cast<qint16>(input.u16());
    data.filterValue = static_cast<qint32>(quint32(input.u16()) << 16 | input.u16());
    data.reversePolarity = input.flag();
    data.shuntState = input.u8();
    data.manualOffset = input.longBlock().toStdString();
    return data;
}

template <typename Datagram>
QVariant request(quint32 module, quint8 channel, const decltype(Datagram::data) &data)
{
    Datagram datagram;
    datagram.module = module;
    datagram.channel = channel;
    datagram.data = data;
    return QVariant::fromValue(datagram);
}

QVariant channelRequest(fuzz::Input &input)
{
    const int kind = input.u8() % 4;
    const quint16 module = input.u16();
    const quint8 channel = input.u8();
    const DataModuleDeviceT1 full = channelData(input);
    DataModuleDeviceT2 voltage;
    voltage.selector = full.selector;
    voltage.bridgeTypeIndex = full.bridgeTypeIndex;
    voltage.gainIndex = full.gainIndex;
    voltage.filterValue = full.filterValue;
    voltage.reversePolarity = full.reversePolarity;
    DataModuleDeviceT3 thermo;
    thermo.selector = full.selector;
    thermo.thermoDeviceTypeIndex = full.bridgeTypeIndex;
    thermo.temperatureRangeIndex = full.gainIndex;
    thermo.filterValue = full.filterValue;
    switch (kind) {
    case 0:
        return request<DatagramT1>(module, channel, full);
    case 1:
        return request<DatagramT2>(module, channel, voltage);
    case 2:
        return request<DatagramT3>(module, channel, thermo);
    default:
        return QVariant(module); // no request at all
    }
}

class Session
{
public:
    Session()
        : m_comm(m_time, makeLinks())
    {
        connectEvents();
    }

    void take(fuzz::Input &input);

    /// A sound device is followed again, whatever happened.
    void finish()
    {
        m_reaction = nullptr;
        for (FakeWire *link : links())
            link->script = soundDevice();
        m_serial->opens = true;
        m_serial->lost = false;
        m_tcp->connects = true;
        if (!m_comm.isCommunicationChannelOpen() || m_isOddlyLed)
            m_comm.OpenCommunicationChannel(settingsOf(Comm_Type::Serial));
        const int limit = m_ratesWereAsked ? kLongestRecovery : kRecovery;
        int polls = 0;
        for (int passed = 0; polls < kPolls; passed += kStep) {
            require(passed <= limit, "a sound device is followed and polled again");
            takeSent();
            passStep();
            const bool isPolled = takeSent() > 0 && m_comm.state() == SessionState::Cyclic;
            polls = isPolled ? polls + 1 : 0;
        }
    }

private:
    /// One period of the polling, with time for answers: each takes a turn of the event loop.
    void passStep()
    {
        constexpr int kTurns = 8;
        m_time.advance(kStep);
        for (int turn = 0; turn < kTurns; ++turn)
            m_time.turn();
    }

    CommLinks makeLinks()
    {
        CommLinks links;
        auto serial = std::make_unique<FakeSerialComm>(m_time, PortDirectory(QString()));
        auto tcp = std::make_unique<FakeTcpSock>(m_time);
        m_serial = serial.get();
        m_tcp = tcp.get();
        links.serial = std::move(serial);
        links.tcp = std::move(tcp);
        return links;
    }

    std::array<FakeWire *, 2> links() const { return {m_serial, m_tcp}; }

    void connectEvents();
    void noteRecord(Event event, const QVariant &record);
    void note(Event event);
    void open(Comm_Type kind);
    void takeReply(const QByteArray &payload);
    void takeForeignFrame(QByteArray frame);
    void checkReply(const QByteArray &payload, const std::function<void()> &deliver);
    void answerLast();
    void wait(int ms);
    void sendSystemCommand(fuzz::Input &input);
    void queueFirmware(fuzz::Input &input);
    void setReaction(fuzz::Input &input);
    int takeSent();

    VirtualTime m_time;
    FakeSerialComm *m_serial = nullptr; // of the session
    FakeTcpSock *m_tcp = nullptr;
    Communication m_comm;
    replymodel::Session m_model;
    replymodel::Events m_events; ///< of the present reply
    QByteArray m_payload;        ///< of the present reply
    bool m_takesReply = false;   ///< it is being taken
    bool m_hasReacted = false;   ///< a receiver acted in this step
    bool m_isFollowed = true; ///< the model knows where the session stands: no receiver acted since its start
    bool m_isOddlyLed = false; ///< by the operations that the program never uses
    bool m_ratesWereAsked = false;
    int m_cleanSlates = 0;    ///< told so far
    QByteArray m_lastRequest; ///< payload
    Event m_reactsTo = Event::Count;
    std::function<void()> m_reaction; ///< what a receiver of that does, once
};

void Session::connectEvents()
{
    const auto connectRecord = [this](void (Communication::*signal)(QVariant), Event event) {
        QObject::connect(&m_comm, signal, &m_comm,
                         [this, event](const QVariant &record) { noteRecord(event, record); });
    };
    connectRecord(&Communication::Signal_SystemStatus, Event::SystemStatus);
    connectRecord(&Communication::Signal_FastSystemStatus, Event::FastSystemStatus);
    connectRecord(&Communication::Signal_FastModuleStatus, Event::FastModuleStatus);
    connectRecord(&Communication::Signal_StaticModuleStatus, Event::StaticModuleStatus);
    connectRecord(&Communication::Signal_StaticPowerStatus, Event::StaticPowerStatus);
    connectRecord(&Communication::Signal_SamplingNBitRate, Event::SamplingNBitRate);
    const auto connectPlain = [this](auto signal, Event event) {
        QObject::connect(&m_comm, signal, &m_comm, [this, event] { note(event); });
    };
    connectPlain(&Communication::Signal_DebugMsg, Event::DebugMsg);
    connectPlain(&Communication::ModuleRead, Event::ModuleRead);
    connectPlain(&Communication::stateInitialized, Event::StateInitialized);
    connectPlain(&Communication::Signal_RcvPayload, Event::RcvPayload);
    QObject::connect(&m_comm, &Communication::Signal_CleanSlateProtocol, &m_comm, [this] {
        ++m_cleanSlates;
        m_model.cleanSlate();
        // Rates that were asked for survive a new start, and the model cannot know whether they were sent.
        if (!m_hasReacted && !m_model.wantsRates())
            m_isFollowed = true;
        note(Event::CleanSlate);
    });
}

void Session::noteRecord(Event event, const QVariant &record)
{
    if (m_takesReply)
        require(replymodel::isRead(event, record, m_payload), "a record says what the payload holds");
    note(event);
}

void Session::note(Event event)
{
    m_events.append(event);
    if (!m_reaction || event != m_reactsTo)
        return;
    m_hasReacted = true;
    m_isFollowed = false;
    m_takesReply = false;
    std::exchange(m_reaction, nullptr)();
}

void Session::open(Comm_Type kind)
{
    if (kind == Comm_Type::Ethernet)
        m_model.cleanSlate(); // that of a connect that fails is not told
    const bool isOpen = m_comm.OpenCommunicationChannel(settingsOf(kind));
    require(m_hasReacted || isOpen == m_comm.isCommunicationChannelOpen(),
            "the result of opening tells what came of it");
}

void Session::takeReply(const QByteArray &payload)
{
    const QByteArray held = payload.left(sim::kMaximumPayload);
    const bool overTcp = m_tcp->IsConnected();
    checkReply(held, [this, &held, overTcp] {
        if (overTcp)
            m_tcp->reply(held);
        else
            m_serial->reply(held);
    });
}

void Session::takeForeignFrame(QByteArray frame)
{
    const auto at = [&frame](int place) { return static_cast<quint8>(frame.at(place)); };
    const int length = frame.size() > 17 ? at(16) | at(17) << 8 : 0;
    const auto deliver = [this, &frame] {
        emit m_serial->Signal_RcvSerialDatagram(Comm_Type::Serial, frame);
    };
    if (frame.size() >= sim::kHeaderSize + length + sim::kTrailerSize) {
        checkReply(frame.mid(sim::kHeaderSize, length), deliver);
        return;
    }
    m_events.clear();
    deliver();
    require(m_events.isEmpty(), "a frame that ends too soon is dropped");
}

void Session::checkReply(const QByteArray &payload, const std::function<void()> &deliver)
{
    m_events.clear();
    m_payload = payload;
    m_takesReply = true;
    const bool wasFollowed = m_isFollowed;
    const replymodel::Session before = m_model;
    const SessionState state = m_comm.state();
    deliver();
    m_takesReply = false;
    if (m_hasReacted || !wasFollowed)
        return;
    replymodel::Session model = before;
    require(m_events == model.take(payload, state), "a reply is told as agreed");
    require(m_comm.state() == model.state(), "a reply leads to its state");
    m_model = model;
}

void Session::answerLast()
{
    if (m_lastRequest.isEmpty())
        return;
    const QList<QByteArray> answers = soundDevice()(m_lastRequest);
    for (const QByteArray &answer : answers)
        takeReply(answer);
}

void Session::wait(int ms)
{
    takeSent();
    const int cleanSlates = m_cleanSlates;
    m_time.advance(ms);
    require(m_hasReacted || takeSent() <= 1 + m_cleanSlates - cleanSlates,
            "without a reply one request goes out, and one more for each new start");
}

/// Looks at all that was sent since the last call, and counts it.
int Session::takeSent()
{
    int count = 0;
    for (FakeWire *link : links()) {
        for (const QByteArray &frame : qAsConst(link->frames)) {
            sim::FrameHeader header;
            header.counter = static_cast<quint8>(frame.at(5));
            header.addressee = sim::kDeviceAddressee;
            header.originator = sim::kProgramOriginator;
            m_lastRequest = frame.mid(sim::kHeaderSize).chopped(sim::kTrailerSize);
            require(m_lastRequest.size() <= sim::kMaximumPayload, "a request fits into a frame");
            require(frame == sim::FrameCodec::encode(header, m_lastRequest), "a request has a right frame");
        }
        count += link->frames.size();
        link->frames.clear();
        link->calls.clear();
    }
    return count;
}

void Session::sendSystemCommand(fuzz::Input &input)
{
    const int kind = input.u8() % 6;
    const quint8 first = input.u8();
    const quint8 second = input.u8();
    const quint8 third = input.u8();
    const quint16 value = input.u16();
    switch (kind) {
    case 0:
        m_comm.Slot_SendSamplingRates(QString::number(value), QString::number(first));
        m_model.wantRates();
        m_ratesWereAsked = true;
        break;
    case 1:
        m_comm.Slot_SendVoltageSupply(first, second, third);
        break;
    case 2:
        m_comm.Slot_SendChannnelChangeReq(first, second);
        break;
    case 3:
        m_comm.Slot_SendPowerModuleSetting(first, second, value);
        break;
    case 4:
        m_comm.Slot_SendSystemReset();
        break;
    default:
        m_comm.Slot_ClearFirmwrCommands();
        break;
    }
}

void Session::queueFirmware(fuzz::Input &input)
{
    FPGAfwCommand command;
    command.b0 = input.u8();
    command.b1 = input.u8();
    command.b2 = input.u8();
    command.b3 = input.u8();
    command.w1 = input.u8();
    command.w2 = command.w1;
    const bool starts = input.flag();
    command.data = QByteArray(input.u16() % 1400, '\x5A');
    m_comm.Slot_FirmwareCommands(QVariant::fromValue(command));
    if (starts)
        m_comm.Slot_StartFPGAprocess();
}

void Session::setReaction(fuzz::Input &input)
{
    m_reactsTo = input.choice<Event>();
    switch (input.u8() % 6) {
    case 0:
        m_reaction = [this] { m_comm.OpenCommunicationChannel(settingsOf(Comm_Type::Serial)); };
        break;
    case 1:
        m_reaction = [this] { m_comm.OpenCommunicationChannel(settingsOf(Comm_Type::Ethernet)); };
        break;
    case 2:
        m_reaction = [this] {
            m_comm.closeSerialChannel();
            m_comm.closeTcpChannel();
        };
        break;
    case 3:
        m_reaction = [this] { m_comm.Slot_SendPowerModuleSetting(1, 0, 12000); };
        break;
    case 4:
        m_reaction = [this] { m_comm.Slot_CommTimeout(); };
        break;
    default:
        m_reaction = [this] { m_tcp->drop(); };
        break;
    }
}

void Session::take(fuzz::Input &input)
{
    using sessioninput::Step;
    m_hasReacted = false;
    switch (input.choice<Step>()) {
    case Step::OpenSerial:
        m_serial->opens = input.flag();
        m_serial->lost = false;
        open(Comm_Type::Serial);
        break;
    case Step::OpenTcp:
        m_tcp->connects = input.flag();
        open(Comm_Type::Ethernet);
        break;
    case Step::Close:
        m_comm.closeSerialChannel();
        m_comm.closeTcpChannel();
        break;
    case Step::Lose:
        m_serial->lost = true;
        m_tcp->drop();
        break;
    case Step::Reply:
        takeReply(input.longBlock());
        break;
    case Step::ForeignFrame:
        takeForeignFrame(input.longBlock());
        break;
    case Step::Answer:
        answerLast();
        break;
    case Step::Wait:
        wait(input.u16() % (sessioninput::kLongestWait + 1));
        break;
    case Step::Turn:
        m_time.turn();
        break;
    case Step::ChannelRequest:
        m_comm.queueChannelRequest(channelRequest(input));
        break;
    case Step::SystemCommand:
        sendSystemCommand(input);
        break;
    case Step::Firmware:
        queueFirmware(input);
        break;
    case Step::ModuleStatus:
        m_comm.queueModuleStatus(input.u8());
        break;
    case Step::Eeprom:
        m_isOddlyLed = true;
        m_comm.SendModuleEepromRequest(input.u8());
        break;
    case Step::SetState:
        m_isOddlyLed = true;
        m_comm.setState(static_cast<SessionState>(1 + input.u8() % 4));
        break;
    case Step::React:
        setReaction(input);
        break;
    case Step::Count:
        break;
    }
    takeSent();
}

} // namespace

void fuzz::begin(int &argc, char **argv)
{
    new QCoreApplication(argc, argv);
}

void fuzz::tryInput(const QByteArray &bytes)
{
    Input input(bytes);
    Session session;
    while (!input.atEnd())
        session.take(input);
    session.finish();
}
