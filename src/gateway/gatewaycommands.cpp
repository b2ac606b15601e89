#include "gateway/gatewaycommands.h"

#include "gateway/gatewaytexts.h"

namespace gateway {

namespace {

/// Such as "#006_1".
Command setting(const char *number, const QString &value)
{
    return {QStringLiteral("#%1_").arg(QLatin1String(number)) + value};
}

} // namespace

Command statusRequest()
{
    return {QStringLiteral("#?"), Echo::SameLine};
}

Command emptyLine()
{
    return {};
}

Command debug()
{
    return setting("000", QStringLiteral("1"));
}

Command reboot()
{
    return {QStringLiteral("reboot"), Echo::Nothing};
}

Command restart()
{
    return {QStringLiteral("restart"), Echo::Nothing};
}

Command simulation(const GatewaySettings &settings)
{
    return setting("006", settings.simulation);
}

Command dataRate(const GatewaySettings &settings)
{
    return setting("007", settings.bitRate + QLatin1Char(':') + settings.channelCount);
}

Command mode(const GatewaySettings &settings)
{
    return setting("009", settings.gatewayMode);
}

Command endian(const GatewaySettings &settings)
{
    return setting("010", settings.endian);
}

Command dataLength(const GatewaySettings &settings)
{
    return setting("011", settings.dataLength);
}

Command externalServer(const GatewaySettings &settings)
{
    return setting("012", settings.extAddress + QLatin1Char(':') + settings.extPort);
}

Command dataFormat(const GatewaySettings &settings)
{
    return setting("014", settings.dataFormat);
}

Command epochTime(const GatewaySettings &settings)
{
    return setting("030", settings.epochTime);
}

Command activeCom(const GatewaySettings &settings)
{
    return setting("032", settings.activeCom);
}

Command ptpMode(const GatewaySettings &settings)
{
    return setting("034", settings.ptpMode);
}

Command dataProtocol(const GatewaySettings &settings)
{
    return setting("039", settings.dataProtocol);
}

Command minimumSamples(const QString &value)
{
    return setting("037", value);
}

Command maximumSamples(const QString &value)
{
    return setting("038", value);
}

Command changeAddress(const GatewaySettings &settings)
{
    return {QStringLiteral("gateway.addr=") + settings.pendingAddress, Echo::Nothing};
}

QByteArray lineOf(const Command &command)
{
    constexpr char kLineEnd = '\r';
    QByteArray line = command.text.toLatin1();
    line.replace('\r', "").replace('\n', "");
    return line + kLineEnd;
}

QString epochText(const QDateTime &now)
{
    return QString::number(now.toMSecsSinceEpoch()) + QStringLiteral("000000");
}

std::optional<QString> modeText(int index)
{
    const int commanded = modeTexts().size() - 1; // the last one, "OFF", cannot be asked for
    if (index < 0 || index >= commanded)
        return {};
    return modeTexts().at(index);
}

} // namespace gateway
