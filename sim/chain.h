#pragma once

#include "sim/gatewaystate.h"
#include "sim/module.h"
#include "sim/payloadlayout.h"

#include <QByteArray>
#include <QVector>

#include <optional>

namespace sim {

constexpr int kMaximumModules = kModuleSlots;
constexpr quint8 kControllerAddress = 0;
constexpr quint8 kControllerFastEntry = 128;
constexpr quint8 kPowerAddress = 129;
constexpr int kMillivoltsMaximum = 65535;
constexpr double kInputVoltsMaximum = 600;
constexpr double kLoadAmperesMaximum = 32;

struct Controller
{
    Identity identity;
    Health health;
};

struct Power
{
    enum Mode : quint8 { Fixed = 0, Auto = 1 };
    /// What the module does when it is too hot; with any other code it leaves the output alone.
    enum Protection : quint8 { SwitchOff = 0, Derate = 1 };

    static constexpr int kUsualMillivolts = 12000;
    static constexpr int kDeratedMillivolts = 5000; ///< or the minimum where that is larger

    Identity identity;
    Health health;
    quint8 mode = Fixed;
    quint8 protection = SwitchOff;
    int fixedMillivolts = kUsualMillivolts;
    int autoMillivolts = kUsualMillivolts;
    int minimumMillivolts = 0; ///< a setpoint below is not taken
    int maximumMillivolts = kMillivoltsMaximum;
    double inputVolts = 24.0;
    double loadAmperes = 1.25;
    int loadMillivolts = kUsualMillivolts; ///< output voltage at which `loadAmperes` flow; not 0
    bool tooHot = false;                   ///< bit 0 of the status flags of every reply

    /// The setpoint of the present mode.
    int chosenMillivolts() const { return mode == Fixed ? fixedMillivolts : autoMillivolts; }
    /// What is left of it when the module protects itself.
    int outputMillivolts() const;
    /// Part of `loadAmperes` that flows at the present output voltage: the load is a resistor.
    double loadShare() const { return static_cast<double>(outputMillivolts()) / loadMillivolts; }
};

/// What a script makes a power module show for a while in place of its own state.
struct PlayedPower
{
    std::optional<double> inputVolts;
    std::optional<double> loadAmperes; ///< at the same output voltage as those of the module
    bool tooHot = false;
    bool noSerial = false;

    void applyTo(Power *power) const;
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
    DataRate dataRate() const;
};

/// A whole chain: what a description file says at first, and what the device's state is later.
class Chain
{
public:
    SystemTexts system;
    Controller controller;
    std::optional<Power> power;
    QVector<Module> modules;
    GatewayState gateway; ///< of the box that takes the chain's data to the network

    /// The number of modules that the system status claims, where it is not the true one.
    std::optional<int> claimedModules;
    /// The codes of the fixed modules where they are not "controller, and power if there is one".
    std::optional<QByteArray> fixedModules;
    /// After a reset the next reply asks for a new start of the session.
    bool flagsReset = true;
    /// Payload code of the head that acknowledges a command.
    quint8 commandReplyCode = FastSystemStatusCode;
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
