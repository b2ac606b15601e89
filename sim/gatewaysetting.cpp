#include "sim/gatewaysetting.h"

#include "sim/chain.h"

#include <QStringList>

#include <algorithm>

namespace sim {

namespace {

constexpr int kCodeSize = 5; // "#NNN_"
constexpr int kGatewayPortMaximum = 65535;
constexpr int kSamplesMaximum = 65535;
constexpr double kSamplesPerKiloBit = 50;
constexpr int kClockDigits = 19; // of nanoseconds since 1970, for as long as this will be in use

const QString kDone = QStringLiteral("set");
const QString kNotObeyed = QStringLiteral("out of range: not obeyed");

/// A setting with a fixed list of values.
struct Choice
{
    const char *code;
    QString GatewayState::*member;
    QStringList values;
};

const QVector<Choice> &choices()
{
    static const QVector<Choice> list = {
        {"#006_", &GatewayState::simulation, {"0", "1", "2", "3", "4", "5", "6", "7", "8"}},
        {"#009_", &GatewayState::mode, gatewayModes()},
        {"#010_", &GatewayState::endian, {"L", "B"}},
        {"#011_", &GatewayState::dataLength, {"16", "18"}},
        {"#014_", &GatewayState::dataFormat, {"U", "2"}},
        {"#032_", &GatewayState::activeCom, {"0", "1", "2", "3"}},
        {"#034_", &GatewayState::ptpMode, {"0", "1", "2"}},
        {"#039_", &GatewayState::dataProtocol, {"ZRT-1", "IENA-1"}}};
    return list;
}

/// A whole number of digits alone, from 1 to `maximum`.
bool isCount(const QString &text, int maximum)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && value >= 1 && value <= maximum && text == QString::number(value);
}

bool setRate(const QString &value, GatewayState *state)
{
    const QStringList parts = value.split(QLatin1Char(':'));
    if (parts.size() != 2 || !canRun(*state, {parts.at(0), parts.at(1)}))
        return false;
    state->rate = {parts.at(0), parts.at(1)};
    return true;
}

bool setTarget(const QString &value, GatewayState *state)
{
    const int colon = value.lastIndexOf(QLatin1Char(':'));
    const QString address = value.left(qMax(0, colon));
    const QString port = value.mid(colon + 1);
    if (address.isEmpty() || !fitsStatusLine(address) || !isCount(port, kGatewayPortMaximum))
        return false;
    state->extAddress = address;
    state->extPort = port;
    return true;
}

bool hasDigitsAlone(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

/// A time in a coarser unit has fewer digits; it is refused.
bool setClock(const QString &value, Milliseconds now, GatewayState *state)
{
    bool isInRange = false;
    const qint64 ns = value.toLongLong(&isInRange);
    if (!isInRange || value.size() < kClockDigits || !hasDigitsAlone(value))
        return false;
    state->clockNs = ns;
    state->clockSetAt = now;
    return true;
}

bool setSamples(const QString &value, QString *text)
{
    if (!isCount(value, kSamplesMaximum))
        return false;
    *text = value;
    return true;
}

bool startDebugging(const QString &value, GatewayState *state)
{
    if (value != QLatin1String("1"))
        return false;
    state->debugging = true;
    return true;
}

} // namespace

const QStringList &gatewayModes()
{
    static const QStringList modes = {QStringLiteral("UDP-B"), QStringLiteral("UDP-M"),
                                      QStringLiteral("UDP-U"), QStringLiteral("TCP-S"),
                                      QStringLiteral("TCP-C"), QStringLiteral("OFF")};
    return modes;
}

bool fitsStatusLine(const QString &text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() > 0xff || c == QLatin1Char(';'))
            return false;
    }
    return true;
}

bool canRun(const GatewayState &state, const DataRate &rate)
{
    return bitRateNames().contains(rate.bitRate) && channelCountNames().contains(rate.channels) &&
           rate.bitRate.toDouble() * kSamplesPerKiloBit / rate.channels.toDouble() <= state.highestRate;
}

QString obeySetting(const QString &line, Milliseconds now, GatewayState *state)
{
    const QString code = line.left(kCodeSize);
    const QString value = line.mid(kCodeSize);
    for (const Choice &choice : choices()) {
        if (code != QLatin1String(choice.code))
            continue;
        if (!choice.values.contains(value))
            return kNotObeyed;
        state->*choice.member = value;
        return kDone;
    }
    bool isDone = false;
    if (code == QLatin1String("#000_"))
        isDone = startDebugging(value, state);
    else if (code == QLatin1String("#007_"))
        isDone = setRate(value, state);
    else if (code == QLatin1String("#012_"))
        isDone = setTarget(value, state);
    else if (code == QLatin1String("#030_"))
        isDone = setClock(value, now, state);
    else if (code == QLatin1String("#037_"))
        isDone = setSamples(value, &state->minimumSamples);
    else if (code == QLatin1String("#038_"))
        isDone = setSamples(value, &state->maximumSamples);
    else
        return QStringLiteral("unknown line");
    return isDone ? kDone : kNotObeyed;
}

} // namespace sim
