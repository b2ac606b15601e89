#include "sim/chainfile.h"

#include "sim/bytes.h"
#include "sim/catalogue.h"
#include "sim/framecodec.h"
#include "sim/gatewaysetting.h"
#include "sim/script.h"

#include <QFile>
#include <QSet>

namespace sim {

namespace {

// What the two texts that the device writes itself may become, as in "384000" and "40000 (256ch)".
constexpr int kLongestRateTexts = 6 + 13;
constexpr int kSystemTextBytes = kMaximumPayload - TextsAt - kSystemTexts - kLongestRateTexts;
constexpr int kSelftestMaximum = 31;
constexpr double kVoltsMaximum = 20.47;
constexpr double kCelsiusMinimum = -55;
constexpr double kCelsiusMaximum = 200.5;
constexpr double kHighestRateMaximum = 1e9;
constexpr int kLongestMs = 3600000;
constexpr int kSerialDigits = 4;

QString limitedText(ScriptLine &line, const QString &key, const QString &current, int bytes)
{
    const QString text = line.text(key, current);
    if (text.toUtf8().size() > bytes)
        line.fail(QStringLiteral("%1 is longer than %2 bytes").arg(key).arg(bytes));
    return text;
}

QString shortText(ScriptLine &line, const char *key, const QString &current)
{
    return limitedText(line, QString::fromLatin1(key), current, kShortTextSize);
}

QString listText(ScriptLine &line, const char *key)
{
    const QString name = QString::fromLatin1(key);
    const QString text = limitedText(line, name, {}, kListTextSize);
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('$')))
        line.fail(QStringLiteral("%1 does not end in \"$\"").arg(name));
    return text;
}

void readIdentity(ScriptLine &line, Identity *identity)
{
    identity->serial = shortText(line, "serial", identity->serial);
    identity->hardware = shortText(line, "hw", identity->hardware);
    identity->firmware1 = shortText(line, "fw1", identity->firmware1);
    identity->firmware2 = shortText(line, "fw2", identity->firmware2);
}

void readHealth(ScriptLine &line, Health *health)
{
    health->volts = line.real(QStringLiteral("voltage"), health->volts, 0, kVoltsMaximum);
    health->celsius =
        line.real(QStringLiteral("temperature"), health->celsius, kCelsiusMinimum, kCelsiusMaximum);
    health->selftest = static_cast<quint8>(line.integer(QStringLiteral("selftest"), 0, 0, kSelftestMaximum));
    health->voltsInvalid = !line.flag(QStringLiteral("voltage-valid"), true);
    health->celsiusInvalid = !line.flag(QStringLiteral("temperature-valid"), true);
}

Milliseconds duration(ScriptLine &line, const char *key, Milliseconds current)
{
    return Milliseconds(
        line.integer(QString::fromLatin1(key), static_cast<int>(current.count()), 0, kLongestMs));
}

void readSystem(ScriptLine &line, Chain *chain)
{
    SystemTexts &system = chain->system;
    system.poweringMode = line.text(QStringLiteral("powering"), system.poweringMode);
    system.dataTransmission = line.text(QStringLiteral("transmission"), system.dataTransmission);
    system.fifth = line.text(QStringLiteral("fifth"), system.fifth);
    system.transmissionMode = line.text(QStringLiteral("mode"), system.transmissionMode);
    int textBytes = 0;
    for (const QString &text :
         {system.poweringMode, system.dataTransmission, system.fifth, system.transmissionMode})
        textBytes += text.toUtf8().size();
    if (textBytes > kSystemTextBytes)
        line.fail(QStringLiteral("the texts are longer than %1 bytes together").arg(kSystemTextBytes));
    system.bitRateCode =
        static_cast<quint8>(line.word(QStringLiteral("bitrate"), system.bitRateCode, bitRateNames()));
    system.channelCountCode = static_cast<quint8>(
        line.word(QStringLiteral("channels"), system.channelCountCode, channelCountNames()));
    if (line.has(QStringLiteral("claim")))
        chain->claimedModules = line.integer(QStringLiteral("claim"), 0, 0, kWordMaximum);
    if (line.has(QStringLiteral("fixed"))) {
        QByteArray codes;
        const QString text = line.text(QStringLiteral("fixed"), {});
        for (const QString &part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            bool isNumber = false;
            const int code = part.trimmed().toInt(&isNumber);
            if (!isNumber || code < 0 || code > kByteMaximum)
                line.fail(QStringLiteral("fixed: \"%1\" is no code").arg(part));
            codes.append(static_cast<char>(code));
        }
        if (codes.size() > kFixedModuleSlots)
            line.fail(QStringLiteral("fixed: more than %1 codes").arg(kFixedModuleSlots));
        chain->fixedModules = codes;
    }
}

void readDevice(ScriptLine &line, Chain *chain)
{
    chain->flagsReset = line.flag(QStringLiteral("reset-flag"), chain->flagsReset);
    chain->commandReplyCode = static_cast<quint8>(
        line.integer(QStringLiteral("command-reply"), chain->commandReplyCode, 0, kByteMaximum));
    chain->autozeroTime = duration(line, "autozero", chain->autozeroTime);
    chain->shuntTime = duration(line, "shunt", chain->shuntTime);
}

/// The limits of the output voltage and the setpoints within them.
void readOutputVoltage(ScriptLine &line, Power *power)
{
    const auto limit = [&line](const char *key, int current) {
        return line.integer(QString::fromLatin1(key), current, 0, kMillivoltsMaximum);
    };
    const int minimum = power->minimumMillivolts = limit("minimum", power->minimumMillivolts);
    const int maximum = power->maximumMillivolts = limit("maximum", power->maximumMillivolts);
    if (minimum > maximum)
        line.fail(QStringLiteral("minimum is above maximum"));
    const auto setpoint = [&line, minimum, maximum](const char *key, int usual) {
        return line.integer(QString::fromLatin1(key), qBound(minimum, usual, maximum), minimum, maximum);
    };
    power->fixedMillivolts = setpoint("fixed", power->fixedMillivolts);
    power->autoMillivolts = setpoint("auto", power->autoMillivolts);
}

void readPower(ScriptLine &line, Chain *chain)
{
    Power power;
    power.identity.serial = QStringLiteral("PW-0001");
    readIdentity(line, &power.identity);
    readHealth(line, &power.health);
    power.mode = static_cast<quint8>(
        line.word(QStringLiteral("mode"), power.mode, {QStringLiteral("fixed"), QStringLiteral("auto")}));
    readOutputVoltage(line, &power);
    power.protection = static_cast<quint8>(line.integer(QStringLiteral("protection"), 0, 0, kByteMaximum));
    power.inputVolts = line.real(QStringLiteral("input"), power.inputVolts, 0, kInputVoltsMaximum);
    power.loadAmperes = line.real(QStringLiteral("load"), power.loadAmperes, 0, kLoadAmperesMaximum);
    if (power.chosenMillivolts() > 0)
        power.loadMillivolts = power.chosenMillivolts();
    power.tooHot = line.flag(QStringLiteral("hot"), power.tooHot);
    chain->power = power;
}

/// Reads the functions of a universal module. A function brings its usual filter along, so this comes before
/// all other keys of the channels.
void readFunctions(ScriptLine &line, Module *module)
{
    const auto function = [&line](const char *key, quint8 current) {
        return static_cast<quint8>(line.integer(QString::fromLatin1(key), current, 0, kByteMaximum));
    };
    const quint8 both = function("function", kStrainGauge);
    module->channels = {Channel::withFunction(function("functionA", both)),
                        Channel::withFunction(function("functionB", both))};
}

/// Reads the keys of one channel: those with the given ending ("" for both channels, "A", "B").
void readChannel(ScriptLine &line, const QString &ending, Channel *channel)
{
    const auto key = [&ending](const char *name) { return QString::fromLatin1(name) + ending; };
    channel->bridgeIndex = line.integer(key("bridge"), channel->bridgeIndex, 0, kByteMaximum);
    channel->gainIndex = line.integer(key("range"), channel->gainIndex, 0, kByteMaximum);
    channel->offset = limitedText(line, key("offset"), channel->offset, kShortTextSize);
    channel->filter = limitedText(line, key("filter"), channel->filter, kShortTextSize);
    channel->reversePolarity = line.flag(key("polarity"), channel->reversePolarity);
    const int current = (channel->positivePreselected ? 1 : 0) | (channel->negativePreselected ? 2 : 0);
    const int preselect = line.word(key("preselect"), current,
                                    {QStringLiteral("none"), QStringLiteral("positive"),
                                     QStringLiteral("negative"), QStringLiteral("both")});
    channel->positivePreselected = (preselect & 1) != 0;
    channel->negativePreselected = (preselect & 2) != 0;
}

void readChannels(ScriptLine &line, Module *module)
{
    if (module->type == kUniversal)
        readFunctions(line, module);
    ScriptLine again = line; // a value can be taken once, and both channels get the common ones
    readChannel(again, QString(), &module->channel(0));
    readChannel(line, QString(), &module->channel(1));
    readChannel(line, QStringLiteral("A"), &module->channel(0));
    readChannel(line, QStringLiteral("B"), &module->channel(1));
}

void readModules(ScriptLine &line, Chain *chain)
{
    if (!line.has(QStringLiteral("type")))
        line.fail(QStringLiteral("a module needs type="));
    const auto type =
        static_cast<quint8>(line.integer(QStringLiteral("type"), kStrainGauge, 0, kByteMaximum));
    if (type == kControllerType || type == kPowerType)
        line.fail(QStringLiteral("type %1 is no analog module").arg(type));
    const int count = line.integer(QStringLiteral("count"), 1, 1, kMaximumModules);
    if (chain->modules.size() + count > kMaximumModules)
        line.fail(QStringLiteral("more than %1 modules").arg(kMaximumModules));

    Module module = Module::ofType(type);
    module.identity.serial = QStringLiteral("VX-");
    readIdentity(line, &module.identity);
    readHealth(line, &module.health);
    module.sensorText = listText(line, "sensors");
    module.rangeText = listText(line, "ranges");
    readChannels(line, &module);

    for (int i = 0; i < count && !line.failed(); ++i) {
        Module next = module;
        if (next.identity.serial.endsWith(QLatin1Char('-')))
            next.identity.serial +=
                QString::number(chain->modules.size() + 1).rightJustified(kSerialDigits, QLatin1Char('0'));
        if (next.identity.serial.toUtf8().size() > kShortTextSize)
            line.fail(QStringLiteral("serial is longer than %1 bytes").arg(kShortTextSize));
        chain->modules.append(next);
    }
}

void readController(ScriptLine &line, Chain *chain)
{
    readIdentity(line, &chain->controller.identity);
    readHealth(line, &chain->controller.health);
}

void readGateway(ScriptLine &line, Chain *chain)
{
    GatewayState &gateway = chain->gateway;
    const auto text = [&line](const char *key, const QString &current) {
        const QString name = QString::fromLatin1(key);
        const QString value = line.text(name, current);
        if (!fitsStatusLine(value))
            line.fail(QStringLiteral("%1 has a \";\" or what is not Latin-1").arg(name));
        return value;
    };
    const auto celsius = [&line](const char *key, double current) {
        return line.real(QString::fromLatin1(key), current, kCelsiusMinimum, kCelsiusMaximum);
    };
    const auto choice = [&line](const char *key, const QString &current, const QStringList &words) {
        return words.at(line.word(QString::fromLatin1(key), words.indexOf(current), words));
    };
    gateway.version = text("version", gateway.version);
    gateway.serial = text("serial", gateway.serial);
    gateway.ptpState = text("ptp-state", gateway.ptpState);
    gateway.highestRate = line.real(QStringLiteral("limit"), gateway.highestRate, 0, kHighestRateMaximum);
    gateway.coreCelsius = celsius("core", gateway.coreCelsius);
    gateway.pcbCelsius = celsius("pcb", gateway.pcbCelsius);
    gateway.rate.bitRate = choice("bitrate", gateway.rate.bitRate, bitRateNames());
    gateway.rate.channels = choice("channels", gateway.rate.channels, channelCountNames());
    gateway.mode = choice("mode", gateway.mode, gatewayModes());
    gateway.restartTime = duration(line, "restart", gateway.restartTime);
    gateway.rebootTime = duration(line, "reboot", gateway.rebootTime);
    gateway.moveTime = duration(line, "move", gateway.moveTime);
}

/// False if nobody knows the keyword.
bool readLine(ScriptLine &line, Chain *chain)
{
    if (line.keyword == QLatin1String("module"))
        readModules(line, chain);
    else if (line.keyword == QLatin1String("system"))
        readSystem(line, chain);
    else if (line.keyword == QLatin1String("device"))
        readDevice(line, chain);
    else if (line.keyword == QLatin1String("controller"))
        readController(line, chain);
    else if (line.keyword == QLatin1String("power"))
        readPower(line, chain);
    else if (line.keyword == QLatin1String("gateway"))
        readGateway(line, chain);
    else
        return false;
    return true;
}

} // namespace

bool parseChain(const QString &text, Chain *chain, QString *error)
{
    QVector<ScriptLine> lines;
    if (!cutScript(text, &lines, error))
        return false;
    Chain result;
    result.controller.identity.serial = QStringLiteral("CT-0001");
    QSet<QString> keywords;
    for (ScriptLine &line : lines) {
        if (line.keyword != QLatin1String("module") && keywords.contains(line.keyword))
            line.fail(QStringLiteral("a second \"%1\"").arg(line.keyword));
        keywords.insert(line.keyword);
        if (!readLine(line, &result)) {
            *error = QStringLiteral("line %1: there is no \"%2\"").arg(line.number).arg(line.keyword);
            return false;
        }
        *error = line.finish();
        if (!error->isEmpty())
            return false;
    }
    *chain = result;
    return true;
}

bool readTextFile(const QString &fileName, QString *text, QString *error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    *text = QString::fromUtf8(file.readAll());
    return true;
}

bool readChainFile(const QString &fileName, Chain *chain, QString *error)
{
    QString text;
    if (!readTextFile(fileName, &text, error))
        return false;
    if (parseChain(text, chain, error))
        return true;
    *error = QStringLiteral("%1: %2").arg(fileName, *error);
    return false;
}

} // namespace sim
