#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <chrono>

namespace sim {

using Milliseconds = std::chrono::milliseconds;

constexpr int kChannelsPerModule = 2;

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

} // namespace sim
