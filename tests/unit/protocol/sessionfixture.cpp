#include "sessionfixture.h"

#include "protocol/commlinks.h"
#include "protocol/records/fpgafwcommand.h"

#include <QtTest>

SessionFixture::SessionFixture()
{
    CommLinks links;
    auto fakeSerial = std::make_unique<FakeSerialComm>(time, PortDirectory(QString()));
    auto fakeTcp = std::make_unique<FakeTcpSock>(time);
    serial = fakeSerial.get();
    tcp = fakeTcp.get();
    links.serial = std::move(fakeSerial);
    links.tcp = std::move(fakeTcp);
    comm = std::make_unique<Communication>(time, std::move(links));
    noteEvents();
}

void SessionFixture::noteEvents()
{
    Communication *c = comm.get();
    const auto note = [this](const char *name) {
        return [this, name] { events << QString::fromLatin1(name); };
    };
    connect(c, &Communication::Signal_SystemStatus, this, note("SystemStatus"));
    connect(c, &Communication::Signal_FastSystemStatus, this, note("FastSystemStatus"));
    connect(c, &Communication::Signal_FastModuleStatus, this, note("FastModuleStatus"));
    connect(c, &Communication::Signal_StaticModuleStatus, this, note("StaticModuleStatus"));
    connect(c, &Communication::Signal_StaticPowerStatus, this, note("StaticPowerStatus"));
    connect(c, &Communication::Signal_ModuleEepromStatus, this, note("ModuleEepromStatus"));
    connect(c, &Communication::Signal_SamplingNBitRate, this, note("SamplingNBitRate"));
    connect(c, &Communication::passRetryPort, this, note("passRetryPort"));
    connect(c, &Communication::statusBusy, this, note("statusBusy"));
    connect(c, &Communication::statusAvailbl, this, note("statusAvailbl"));
    connect(c, &Communication::packetRecvd, this, note("packetRecvd"));
    connect(c, &Communication::packetSent, this, note("packetSent"));
    connect(c, &Communication::stateInitialized, this, note("stateInitialized"));
    connect(c, &Communication::Signal_CleanSlateProtocol, this, note("CleanSlate"));
    connect(c, &Communication::Signal_RcvPayload, this, note("RcvPayload"));
    connect(c, &Communication::Signal_DebugMsg, this,
            [this](const QString &text) { events << QStringLiteral("DebugMsg(%1)").arg(text); });
    connect(c, &Communication::ModuleRead, this,
            [this](ushort index) { events << QStringLiteral("ModuleRead(%1)").arg(index); });
}

model_Namespace::Settings SessionFixture::serialSettings()
{
    model_Namespace::Settings settings;
    settings.portName = QStringLiteral("COM20");
    settings.commType = Comm_Type::Serial;
    model_Namespace::setDefaultSerialParameters(settings);
    return settings;
}

model_Namespace::Settings SessionFixture::tcpSettings()
{
    model_Namespace::Settings settings;
    settings.ipAddress = QStringLiteral("192.168.0.62");
    settings.tcpPort = QStringLiteral("7777");
    settings.commType = Comm_Type::Ethernet;
    return settings;
}

void SessionFixture::bringTo(SessionState state, const QByteArray &types)
{
    comm->OpenCommunicationChannel(serialSettings());
    if (state == SessionState::ModuleWalk || state == SessionState::Cyclic)
        reply(device::systemStatus(types, true));
    if (state == SessionState::Cyclic) {
        reply(device::moduleStatus(0, 100));
        for (int i = 0; i < types.size(); ++i)
            reply(device::moduleStatus(static_cast<quint8>(i + 1), static_cast<quint8>(types.at(i))));
        reply(device::powerStatus());
    }
    forget();
}

void SessionFixture::answerUntilCyclic()
{
    constexpr int kLongWalk = 200;
    for (int turn = 0; turn < kLongWalk && comm->state() != SessionState::Cyclic; ++turn)
        time.turn();
}

QList<QByteArray> SessionFixture::nextTurn()
{
    endTurn();
    time.advance(500);
    return sent();
}

void SessionFixture::expectDropped(int bytes)
{
    const QString line =
        QStringLiteral("Request dropped, its payload is too long for a frame: %1 bytes").arg(bytes);
    QTest::ignoreMessage(QtCriticalMsg, qPrintable(line));
}

QVariant SessionFixture::firmware(quint8 code, const QByteArray &data)
{
    return QVariant::fromValue(FPGAfwCommand{1, 2, 1, code, 3, quint16(data.size()), data});
}

QList<QByteArray> SessionFixture::sent()
{
    QList<QByteArray> payloads;
    const auto taken = serial->takePayloads() + tcp->takePayloads();
    for (const QByteArray &payload : taken)
        payloads.append(payload.toHex());
    return payloads;
}

QStringList SessionFixture::takeEvents()
{
    QStringList taken;
    taken.swap(events);
    return taken;
}

void SessionFixture::forget()
{
    sent();
    events.clear();
    serial->calls.clear();
    tcp->calls.clear();
    log.clear();
}
