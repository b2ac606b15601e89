// Writes the first inputs of all targets below the folder that is named: what the simulated device and
// gateway send, and files as they should be, in the form that each target reads. What lay there goes.

#include "decoderinput.h"
#include "fuzzinput.h"
#include "gatewayinput.h"
#include "listsinput.h"
#include "sessioninput.h"
#include "sim/catalogue.h"
#include "sim/device.h"
#include "sim/framecodec.h"
#include "sim/gateway.h"
#include "sim/replies.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>

using fuzz::Output;

namespace {

/// The folder of one target; its inputs are numbered.
class Folder
{
public:
    Folder(const QDir &root, const char *target)
        : m_folder(root.filePath(QLatin1String(target)))
    {
        m_isWritten = m_folder.removeRecursively() && QDir().mkpath(m_folder.path());
    }

    void add(const QByteArray &input)
    {
        QFile file(m_folder.filePath(QStringLiteral("seed%1").arg(m_count++)));
        m_isWritten = m_isWritten && file.open(QIODevice::WriteOnly) && file.write(input) == input.size();
    }

    void add(const Output &input) { add(input.taken()); }
    bool isWritten() const { return m_isWritten; }

private:
    QDir m_folder;
    int m_count = 0;
    bool m_isWritten = false;
};

/// A module of each type, and a power module.
sim::Chain chain()
{
    sim::Chain chain;
    chain.controller.identity.serial = QStringLiteral("CT-1");
    chain.power = sim::Power();
    chain.power->identity.serial = QStringLiteral("PW-1");
    for (quint8 type = sim::kStrainGauge; type <= sim::kUniversal; ++type)
        chain.modules.append(sim::Module::ofType(type));
    return chain;
}

/// The replies in the order of a session's begin.
QList<QByteArray> replies(const sim::Chain &chain)
{
    const sim::LiveValues live(1);
    const sim::Replies replies(chain, live, sim::Milliseconds(0));
    QList<QByteArray> all{replies.systemStatus()};
    for (int address = 0; address <= chain.modules.size(); ++address)
        all.append(replies.staticStatus(static_cast<quint8>(address)));
    all.append(replies.staticStatus(sim::kPowerAddress));
    all.append(replies.head(sim::FastSystemStatusCode));
    all.append(replies.fastModuleStatus());
    return all;
}

bool writeDecoder(const QDir &root, const QList<QByteArray> &replies)
{
    using namespace decoderinput;
    Folder folder(root, "decoder");
    quint8 counter = 0;
    for (const QByteArray &payload : replies) {
        sim::FrameHeader header;
        header.counter = ++counter;
        const QByteArray frame = sim::FrameCodec::encode(header, payload);
        Output whole;
        whole.u8(0);
        for (int at = 0; at < frame.size(); at += 200)
            whole.choice(Step::Read).shortBlock(frame.mid(at, 200));
        folder.add(whole.choice(Step::Pause).u16(900).choice(Step::Bytes).shortBlock(frame.left(30)));
        const auto addFrame = [&](Damage damage) {
            Output made;
            made.u8(0).choice(Step::Frame).u8(counter).u16(payload.size()).shortBlock(payload.left(40));
            made.choice(damage).u16(25).u16(21).choice(Step::Pause).u16(1001);
            folder.add(made.choice(Step::Abandon).u8(1).choice(Step::Read).shortBlock(frame.left(250)));
        };
        for (int damage = 0; damage < int(Damage::Count); ++damage)
            addFrame(static_cast<Damage>(damage));
    }
    Output beyond;
    beyond.u8(200).choice(Step::Frame).u8(1).u16(1301).shortBlock("x").choice(Damage::None).u16(0).u16(9);
    folder.add(beyond.choice(Step::Frame).u8(2).u16(300).shortBlock("y").choice(Damage::None).u16(0).u16(1));
    return folder.isWritten();
}

void addCommands(Output &session)
{
    using sessioninput::Step;
    for (int kind = 0; kind < 3; ++kind) {
        session.choice(Step::ChannelRequest).u8(kind).u16(1).u8(1).u8(4).u16(1).u16(2);
        session.u16(0).u16(2500).u8(1).u8(131).longBlock("12.5");
        session.choice(Step::Wait).u16(500).choice(Step::Answer);
    }
    for (int kind = 0; kind < 6; ++kind) {
        session.choice(Step::SystemCommand).u8(kind).u8(16).u8(1).u8(2).u16(2500);
        session.choice(Step::Wait).u16(1000).choice(Step::Answer);
    }
    session.choice(Step::Firmware).u8(1).u8(1).u8(1).u8(0xE1).u8(3).u8(1).u16(256);
    session.choice(Step::Turn).choice(Step::Answer).choice(Step::ModuleStatus).u8(2);
    session.choice(Step::Wait).u16(600).choice(Step::Answer);
}

bool writeSession(const QDir &root, const QList<QByteArray> &replies)
{
    using sessioninput::Step;
    Folder folder(root, "session");
    for (const Step link : {Step::OpenSerial, Step::OpenTcp}) {
        Output walk;
        walk.choice(link).u8(1);
        for (const QByteArray &payload : replies)
            walk.choice(Step::Reply).longBlock(payload);
        folder.add(walk);
        Output commands;
        commands.choice(link).u8(1);
        for (int step = 0; step < 7; ++step)
            commands.choice(Step::Answer);
        addCommands(commands);
        folder.add(commands);
        for (int event = 0; event < 11; ++event) {
            Output reaction;
            reaction.choice(link).u8(1).choice(Step::Answer).choice(Step::React).u8(event).u8(event);
            folder.add(reaction.choice(Step::Answer).choice(Step::Answer).choice(Step::Lose));
        }
    }
    for (const QByteArray &payload : replies) {
        Output alone;
        alone.choice(Step::OpenSerial).u8(1).choice(Step::Answer).choice(Step::Answer);
        folder.add(alone.choice(Step::Reply).longBlock(payload).choice(Step::Wait).u16(4000));
        Output foreign;
        folder.add(foreign.choice(Step::ForeignFrame).longBlock(sim::FrameCodec::encode({}, payload)));
    }
    return folder.isWritten();
}

bool writeGateway(const QDir &root)
{
    using gatewayinput::Step;
    Folder folder(root, "gateway");
    sim::Gateway gateway;
    const QByteArray status = gateway.statusLine(sim::Milliseconds(0));
    const QByteArray moved = gateway.take("gateway.addr=10.0.0.9", sim::Milliseconds(0)).text;
    for (const QByteArray &piece : {sim::Gateway::prompt(), status, moved, sim::Gateway::prompt() + status}) {
        Output input;
        input.choice(Step::Connect).u8(1).choice(Step::Piece).longBlock(piece);
        folder.add(input.choice(Step::Wait).u16(3000).choice(Step::Drop).choice(Step::Wait).u16(5001));
    }
    for (int number = 0; number < gatewayinput::kFields; ++number) {
        Output input;
        input.choice(Step::Connect).u8(1).choice(Step::Fields).u8(1).u8(number).shortBlock("1");
        folder.add(input);
    }
    for (int what = 0; what < 11; ++what) {
        Output input;
        input.choice(Step::Connect).u8(1).choice(Step::Operate).u8(what).shortBlock("2500").shortBlock("16");
        folder.add(input.choice(Step::Piece).longBlock(moved).choice(Step::Piece).longBlock(status));
    }
    return folder.isWritten();
}

bool writeSettings(const QDir &root)
{
    Folder folder(root, "settings");
    for (const char *mode : {"Serial", "TCP", ""}) {
        folder.add(
            QByteArray("\r\n======[Torvex Configurator ]=========\r\n[ACCESS]\r\nLastCommand=/opt/vx\r\n"
                       "[Save Location]\r\nFILE_DIR=C:/Berichte/\xC3\x84\r\n\r\n[TCP/IP]\r\n"
                       "ZrtGateway=192.168.0.9:23\r\nMainServer=192.168.0.9:10001\r\n[RS232]\r\n"
                       "PORT1=COM12:115200,E,8,1\r\n[Active Mode]\r\nMode=") +
            mode +
            "\r\n[Firmware File Location]\r\nFIRMWR_FILEPATH=/images/VX_ANA_FPGA5_1.bin\r\n\r\n\r\n"
            "--------------EOF------------------");
    }
    folder.add("PORT1=COM1:9600,N,7,2\nPORT1=COM1\nMode=Serial\n");
    folder.add("FILE_DIR=C:/Pr\xFC"
               "fung\nZrtGateway=:\nMainServer=::\nMode==\n\xEF\xBB\xBFMode=TCP\n");
    return folder.isWritten();
}

bool writeVersions(const QDir &root)
{
    Folder folder(root, "versions");
    folder.add("Current versions\r\nvxconfig v1.1.63\r\n");
    folder.add("vxconfig v1.1.62");
    folder.add("01.02.26  1.4.3  *\r\n28.02.25  1.4.1  \r\nno date  1  *\n30.02.26  9.9.9  *\n");
    folder.add("01.02.26  2.0  * mandatory  more\n\n\n\n\n\n\n\n\n\n01.02.26  3.0  *\n");
    return folder.isWritten();
}

bool writeLists(const QDir &root, const QList<QByteArray> &replies)
{
    using listsinput::Step;
    Folder folder(root, "lists");
    constexpr int kBehindType = sim::TypeAt + 1;
    const QByteArray live = replies.last().mid(sim::kHeadSize, sim::kFastEntrySize);
    for (int row = 0; row < int(std::size(listsinput::kRowTypes)); ++row) {
        for (const QByteArray &payload : replies) {
            if (payload.size() != sim::kModuleStatusSize)
                continue;
            Output input;
            input.u8(row).choice(Step::Status).u8(0).u8(0).longBlock(payload.mid(kBehindType));
            input.choice(Step::Live).bytes(live).choice(Step::Change).u8(row).u8(1);
            folder.add(input.choice(Step::Wait).u16(1500));
        }
        for (const char *list : {"120$350$1000$#V$", "1$2$#3$#4$", "#", "$$", "1$2", "a b  $<i>&amp;$"}) {
            Output lists;
            lists.u8(row).choice(Step::Lists).u8(1).u8(2).u8(0).u8(9).u8(1).u8(3).u8(2);
            lists.shortBlock(list).shortBlock(list).shortBlock("2500").shortBlock("12x");
            lists.shortBlock("Auto").shortBlock("-1.5");
            folder.add(lists.choice(Step::Status).u8(1).u8(9).longBlock(QByteArray(545, 'x')));
        }
        const QByteArray markup("<b>&lt;\"$"); // in each text
        folder.add(Output().u8(row).choice(Step::Status).u8(0).u8(0).longBlock(markup.repeated(60)));
    }
    return folder.isWritten();
}

bool writeFirmware(const QDir &root)
{
    Folder folder(root, "firmware");
    constexpr int kFilling = 260; // bytes: repeated as often as they can be, they reach a second page
    for (const char *module : {"CON", "ANA", "GTW", "XXX"}) {
        for (const char *chip : {"FPGA4", "FPGA5", "FPGA6"}) {
            const QByteArray name = QByteArray("VX_") + module + '_' + chip + "_V1_2_3_4.bin";
            const bool isFirst = qstrcmp(chip, "FPGA4") == 0;
            const QByteArray contents =
                QByteArray("\xFF\0Lattice\0", 10) + (isFirst ? "iCE5LP4K-SG48" : "iCE40UP5K-SG48");
            for (const int repetitions : {0, 240, 255}) {
                Output input;
                folder.add(
                    input.u8(repetitions).shortBlock(name).bytes(contents + QByteArray(kFilling, '\x5A')));
            }
        }
    }
    return folder.isWritten();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 2) {
        QTextStream(stderr) << "usage: fuzz_seeds <folder>\n";
        return 2;
    }
    const QDir root(arguments.last());
    const QList<QByteArray> all = replies(chain());
    const bool isWritten = writeDecoder(root, all) && writeSession(root, all) && writeGateway(root) &&
                           writeSettings(root) && writeVersions(root) && writeLists(root, all) &&
                           writeFirmware(root);
    if (!isWritten)
        QTextStream(stderr) << "The inputs could not be written below " << root.path() << '\n';
    return isWritten ? 0 : 1;
}
