#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <chrono>
#include <optional>

namespace sim {

using Milliseconds = std::chrono::milliseconds;

constexpr int kMaximumModules = 128;
constexpr quint8 kControllerAddress = 0;
constexpr quint8 kControllerFastEntry = 128;
constexpr quint8 kPowerAddress = 129;

struct Identity
{
    QString serial;
    QString hardware = QStringLiteral("2.1");
    QString firmware1 = QStringLiteral("1.4.2");
    QString firmware2 = QStringLiteral("1.07");
};

/// Operating values around which the simulated ones wander.
struct Health
{
    double volts = 12.0;
    double celsius = 35.0;
    quint8 selftest = 0;
    bool voltsInvalid = false;
    bool celsiusInvalid = false;
};

/// State of one measuring channel. Times are simulated time since the start; a thing lasts until its time.
struct Channel
{
    quint8 function = 0;
    int bridgeIndex = 0;
    int gainIndex = 0;
    QString offset = QStringLiteral("Auto");
    QString filter;
    bool reversePolarity = false;
    bool positivePreselected = false;
    bool negativePreselected = false;
    bool supplyOn = false;
    quint8 supplyCode = 0; ///< (volts - 3) x 10
    bool zeroed = false;   ///< an autozero took the constant part away
    Milliseconds positiveShuntUntil{0};
    Milliseconds negativeShuntUntil{0};
    Milliseconds autozeroUntil{0};

    bool positiveShuntOn(Milliseconds now) const { return now < positiveShuntUntil; }
    bool negativeShuntOn(Milliseconds now) const { return now < negativeShuntUntil; }
    bool shuntOn(Milliseconds now) const { return positiveShuntOn(now) || negativeShuntOn(now); }
    bool autozeroRunning(Milliseconds now) const { return now < autozeroUntil; }
    double supplyVolts() const { return supplyOn ? supplyCode / 10.0 + 3.0 : 0.0; }

    /// A fresh channel with the function: first list entries, usual filter, offset "Auto", all else off.
    static Channel withFunction(quint8 function);
};

struct Module
{
    quint8 type = kDefaultType;
    Identity identity;
    Health health;
    QString sensorText; ///< replaces the usual list, both channels of a universal module joined by "#"
    QString rangeText;  ///< the same for the ranges
    std::array<Channel, 2> channels;

    Channel &channel(int index) { return channels.at(static_cast<size_t>(index)); }
    const Channel &channel(int index) const { return channels.at(static_cast<size_t>(index)); }

    QString sensorList() const;
    QString rangeList() const;
    /// The items of one channel (0 is A, 1 is B) of the lists above.
    QStringList sensorsOf(int channelIndex) const;
    QStringList rangesOf(int channelIndex) const;

    /// A fresh module; both channels of a universal module start as strain gauge.
    static Module ofType(quint8 type);

private:
    static constexpr quint8 kDefaultType = 1;
    QString usualList(bool ranges) const;
};

struct Controller
{
    Identity identity;
    Health health;
};

struct Power
{
    enum Mode : quint8 { Fixed = 0, Auto = 1 };

    Identity identity;
    Health health;
    quint8 mode = Fixed;
    quint8 protection = 0;
    int fixedMillivolts = 12000;
    int autoMillivolts = 12000;
    double inputVolts = 24.0;
    double loadAmperes = 1.25;
    bool tooHot = false; ///< bit 0 of the status flags of every reply

    int outputMillivolts() const { return mode == Fixed ? fixedMillivolts : autoMillivolts; }
};

/// The texts of the system status and what the device does at a reset.
struct SystemTexts
{
    QString poweringMode = QStringLiteral("inductive");
    QString dataTransmission = QStringLiteral("inductive");
    QString fifth = QStringLiteral("-");
    QString transmissionMode = QStringLiteral("PCM");
    quint8 bitRateCode = 4;      ///< 2500 kBit/s
    quint8 channelCountCode = 3; ///< 16 channels

    /// As in "2500 (16ch)".
    QString bitRate() const;
    /// Samples per second that the bit rate leaves for each channel, as in "3000".
    QString samplingRate() const;
};

/// A whole chain: what a description file says at first, and what the device's state is later.
class Chain
{
public:
    SystemTexts system;
    Controller controller;
    std::optional<Power> power;
    QVector<Module> modules;

    /// The number of modules that the system status claims, where it is not the true one.
    std::optional<int> claimedModules;
    /// The codes of the fixed modules where they are not "controller, and power if there is one".
    std::optional<QByteArray> fixedModules;
    /// After a reset the next reply asks for a new start of the session.
    bool flagsReset = true;
    /// Payload code of the reply to an FPGA command.
    quint8 fpgaReplyCode = 0x16;
    Milliseconds autozeroTime{3000};
    Milliseconds shuntTime{20000};

    /// The module with an address from 1 to the number of modules.
    Module &module(int address) { return modules[address - 1]; }
    const Module &module(int address) const { return modules.at(address - 1); }
    bool hasModule(int address) const { return address >= 1 && address <= modules.size(); }

    /// The channel behind a wire channel (2m - 1 is A and 2m is B of module m), null if there is none.
    Channel *wireChannel(int number);

    int moduleCount() const { return claimedModules.value_or(modules.size()); }
    QByteArray fixedModuleCodes() const;
};

const QStringList &bitRateNames();
const QStringList &channelCountNames();

} // namespace sim
