#include "sim/chain.h"

#include "sim/catalogue.h"

namespace sim {

int Power::outputMillivolts() const
{
    if (tooHot && protection == SwitchOff)
        return 0;
    if (tooHot && protection == Derate)
        return qMin(chosenMillivolts(), qMax(kDeratedMillivolts, minimumMillivolts));
    return chosenMillivolts();
}

DataRate SystemTexts::dataRate() const
{
    return {bitRateNames().value(bitRateCode), channelCountNames().value(channelCountCode)};
}

void PlayedPower::applyTo(Power *power) const
{
    power->inputVolts = inputVolts.value_or(power->inputVolts);
    power->loadAmperes = loadAmperes.value_or(power->loadAmperes);
    power->tooHot = power->tooHot || tooHot;
    if (noSerial)
        power->identity.serial.clear();
}

QString SystemTexts::bitRate() const
{
    return QStringLiteral("%1 (%2ch)")
        .arg(bitRateNames().value(bitRateCode), channelCountNames().value(channelCountCode));
}

QString SystemTexts::samplingRate() const
{
    // Twice the channels or half the bit rate halve the samples; the first entry is 40000 kBit/s, 2 channels.
    static const QStringList rates = {
        QStringLiteral("384000"), QStringLiteral("192000"), QStringLiteral("96000"), QStringLiteral("48000"),
        QStringLiteral("24000"),  QStringLiteral("12000"),  QStringLiteral("6000"),  QStringLiteral("3000"),
        QStringLiteral("1500"),   QStringLiteral("750"),    QStringLiteral("375"),   QStringLiteral("188"),
        QStringLiteral("94"),     QStringLiteral("47"),     QStringLiteral("23")};
    return rates.value(bitRateCode + channelCountCode);
}

Channel *Chain::wireChannel(int number)
{
    const int address = (number + 1) / kChannelsPerModule;
    if (number < 1 || !hasModule(address))
        return nullptr;
    return &module(address).channel(number % kChannelsPerModule == 1 ? 0 : 1);
}

QByteArray Chain::fixedModuleCodes() const
{
    QByteArray codes = fixedModules.value_or(QByteArray());
    if (!fixedModules) {
        codes.append(static_cast<char>(kControllerType));
        if (power)
            codes.append(static_cast<char>(kPowerType));
    }
    codes.resize(qMin(codes.size(), kFixedModuleSlots));
    return codes.leftJustified(kFixedModuleSlots, '\0');
}

const QStringList &bitRateNames()
{
    static const QStringList names = {
        QStringLiteral("40000"), QStringLiteral("20000"), QStringLiteral("10000"), QStringLiteral("5000"),
        QStringLiteral("2500"),  QStringLiteral("1250"),  QStringLiteral("625"),   QStringLiteral("312")};
    return names;
}

const QStringList &channelCountNames()
{
    static const QStringList names = {QStringLiteral("2"),   QStringLiteral("4"),  QStringLiteral("8"),
                                      QStringLiteral("16"),  QStringLiteral("32"), QStringLiteral("64"),
                                      QStringLiteral("128"), QStringLiteral("256")};
    return names;
}

} // namespace sim
