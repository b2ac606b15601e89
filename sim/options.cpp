#include "sim/options.h"

#include "sim/chainfile.h"

#include <QCommandLineParser>

#include <limits>

namespace sim {

namespace {

constexpr quint32 kPortMaximum = 65535;
constexpr quint32 kPaceMaximum = 100000000;
constexpr double kLongestRun = 1e7;
constexpr double kMillisecondsPerSecond = 1000;

void addOptions(QCommandLineParser *parser)
{
    const auto add = [parser](const char *name, const char *help, const char *value) {
        parser->addOption({QString::fromLatin1(name), QString::fromLatin1(help), QString::fromLatin1(value)});
    };
    parser->setApplicationDescription(QStringLiteral(
        "Plays a measuring chain on a TCP port and on a pseudo terminal, and a gateway beside it."));
    add("chain", "Description of the chain; without it a chain without modules.", "file");
    add("tcp", "Listen on this port of the loopback interface; 0 takes any free one.", "port");
    add("pty", "Make a pseudo terminal that is found under this name.", "name");
    add("fault", "Fault script; may be given more than once.", "file");
    add("fault-rule", "One rule of a fault script; may be given more than once.", "rule");
    add("gateway", "Play the gateway on this port of the loopback interface; 0 takes any free one.", "port");
    add("gateway-fault", "Fault script of the gateway; may be given more than once.", "file");
    add("gateway-rule", "One rule of such a script; may be given more than once.", "rule");
    add("pace", "Bytes per second in each direction, as on a serial line; 0 is no limit.", "bytes");
    add("images", "Write each FPGA image that is flashed to a file in this folder, as analog-fpga2.bin.",
        "folder");
    add("log", "Write the frames in clear text to this file; - is the standard output.", "file");
    add("seed", "Seed of the simulated values and of the fault script.", "number");
    add("run-for", "End after so many seconds.", "seconds");
    parser->addOption({QStringLiteral("help"), QStringLiteral("Show this text.")});
}

class Reader
{
public:
    explicit Reader(const QCommandLineParser &parser)
        : m_parser(parser)
    {}

    QString text(const char *name) const { return m_parser.value(QString::fromLatin1(name)); }
    QStringList texts(const char *name) const { return m_parser.values(QString::fromLatin1(name)); }
    bool has(const char *name) const { return m_parser.isSet(QString::fromLatin1(name)); }

    /// 0 with an error if the text is no number of the range.
    quint32 whole(const char *name, quint32 maximum)
    {
        bool isNumber = false;
        const quint32 value = text(name).toUInt(&isNumber);
        return checked(name, value, isNumber && value <= maximum, maximum);
    }
    double real(const char *name, double maximum)
    {
        bool isNumber = false;
        const double value = text(name).toDouble(&isNumber);
        // Asked so that "nan" is outside.
        return checked(name, value, isNumber && value >= 0 && value <= maximum, maximum);
    }

    QString error() const { return m_error; }

private:
    template <typename Number>
    Number checked(const char *name, Number value, bool isRight, double maximum)
    {
        if (isRight)
            return value;
        m_error = QStringLiteral("--%1: \"%2\" is no number from 0 to %3")
                      .arg(QLatin1String(name), text(name))
                      .arg(maximum, 0, 'f', 0);
        return 0;
    }

    const QCommandLineParser &m_parser;
    QString m_error;
};

/// Adds the rules of the files and rules that two options name to a fault script.
template <typename Script>
bool readFaults(const Reader &reader, const char *fileOption, const char *ruleOption, Script *faults,
                QString *error)
{
    for (const QString &name : reader.texts(fileOption)) {
        QString text;
        if (!readTextFile(name, &text, error))
            return false;
        if (!faults->parse(text, error)) {
            *error = QStringLiteral("%1: %2").arg(name, *error);
            return false;
        }
    }
    for (const QString &rule : reader.texts(ruleOption)) {
        if (!faults->parse(rule, error)) {
            *error = QStringLiteral("--%1 \"%2\": %3").arg(QLatin1String(ruleOption), rule, *error);
            return false;
        }
    }
    return true;
}

/// The port that an option asks for, if it is there.
std::optional<quint16> readPort(Reader *reader, const char *option)
{
    if (!reader->has(option))
        return std::nullopt;
    return static_cast<quint16>(reader->whole(option, kPortMaximum));
}

} // namespace

bool readOptions(const QStringList &arguments, Options *options, QString *error)
{
    QCommandLineParser parser;
    addOptions(&parser);
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return false;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("\"%1\" is no option").arg(parser.positionalArguments().first());
        return false;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        options->message = parser.helpText();
        return true;
    }
    Reader reader(parser);
    options->tcpPort = readPort(&reader, "tcp");
    options->gatewayPort = readPort(&reader, "gateway");
    if (reader.has("pace"))
        options->bytesPerSecond = static_cast<int>(reader.whole("pace", kPaceMaximum));
    if (reader.has("seed"))
        options->seed = reader.whole("seed", std::numeric_limits<quint32>::max());
    if (reader.has("run-for"))
        options->runFor =
            Milliseconds(qRound64(reader.real("run-for", kLongestRun) * kMillisecondsPerSecond));
    options->terminalName = reader.text("pty");
    options->imageFolder = reader.text("images");
    options->logName = reader.text("log");
    *error = reader.error();
    if (error->isEmpty() && !options->hasChain() && !options->gatewayPort)
        *error = QStringLiteral("neither --tcp nor --pty nor --gateway: nobody could reach the device");
    if (!error->isEmpty())
        return false;
    if (reader.has("chain") && !readChainFile(reader.text("chain"), &options->chain, error))
        return false;
    options->faults = FaultScript(options->seed);
    options->gatewayFaults = GatewayFaults(options->seed);
    return readFaults(reader, "fault", "fault-rule", &options->faults, error) &&
           readFaults(reader, "gateway-fault", "gateway-rule", &options->gatewayFaults, error);
}

} // namespace sim
