#include "modules/common/headertexts.h"

namespace infoheaders {

QString bridgeType()
{
    return QStringLiteral("BridgeType  [Ohm]");
}

QString bridgeRange()
{
    return QStringLiteral("Range  [±mV/V]");
}

QString input()
{
    return QStringLiteral("Input");
}

QString voltageRange()
{
    return QStringLiteral("Range  [±V]   ");
}

QString xvdtRange()
{
    return QStringLiteral("Range  ");
}

} // namespace infoheaders

namespace {

QString channelHeader()
{
    return QStringLiteral("Channel");
}

QString filterHeader()
{
    return QStringLiteral("Filter [Hz]");
}

HeaderTexts strainGaugeTexts()
{
    return {channelHeader(),           infoheaders::bridgeType(),      infoheaders::bridgeRange(),
            QStringLiteral("Offset "), QStringLiteral(" Shunt  sel."), filterHeader(),
            QStringLiteral("Invert"),  QStringLiteral("Level  [%]")};
}

HeaderTexts voltageTexts()
{
    return {channelHeader(),
            infoheaders::input(),
            infoheaders::voltageRange(),
            QString(),
            QStringLiteral("  "),
            filterHeader(),
            QStringLiteral("Invert"),
            QStringLiteral("Level  [%]")};
}

HeaderTexts thermoTexts(const QString &deviceName)
{
    const bool named = deviceName == moduleTypeName(wireCode(ModuleType::Thermo));
    return {channelHeader(),
            named ? QStringLiteral("Sensor Type         ") : QStringLiteral("Sensor Type      "),
            QStringLiteral("Temp.Range  [°C]"),
            QString(),
            QStringLiteral("  "),
            filterHeader(),
            QStringLiteral("         "),
            QStringLiteral("       ")};
}

} // namespace

HeaderTexts headerTexts(HeaderForm form, const QString &deviceName)
{
    switch (form) {
    case HeaderForm::Voltage:
        return voltageTexts();
    case HeaderForm::Thermo:
        return thermoTexts(deviceName);
    case HeaderForm::Controller: // has a row of its own kind, without columns
    case HeaderForm::Power:
    case HeaderForm::StrainGauge:
    case HeaderForm::Universal:
        break;
    }
    return strainGaugeTexts();
}

HeaderTraits headerTraits(HeaderForm form)
{
    HeaderTraits traits;
    traits.separators = form != HeaderForm::Thermo;
    traits.channelsHaveFunctions = form == HeaderForm::Universal;
    return traits;
}
