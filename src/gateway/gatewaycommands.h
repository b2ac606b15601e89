#pragma once

#include "gateway/gatewaysettings.h"

#include <QByteArray>
#include <QDateTime>
#include <optional>

/// The lines that the gateway understands. A command is its text without the CR that ends the line.
namespace gateway {

/// How the operator sees a command in the dialogue.
enum class Echo {
    Line,     ///< with a line end; the view goes to its end
    SameLine, ///< without a line end; the view stays where it is
    Nothing
};

struct Command
{
    QString text;
    Echo echo = Echo::Line;
};

Command statusRequest();
Command emptyLine(); ///< wakes the prompt
Command debug();
Command reboot();
Command restart();
Command simulation(const GatewaySettings &settings);
Command dataRate(const GatewaySettings &settings); ///< the bit rate first
Command mode(const GatewaySettings &settings);
Command endian(const GatewaySettings &settings);
Command dataLength(const GatewaySettings &settings);
Command externalServer(const GatewaySettings &settings);
Command dataFormat(const GatewaySettings &settings);
Command epochTime(const GatewaySettings &settings);
Command activeCom(const GatewaySettings &settings);
Command ptpMode(const GatewaySettings &settings);
Command dataProtocol(const GatewaySettings &settings);
Command minimumSamples(const QString &value);
Command maximumSamples(const QString &value);
Command changeAddress(const GatewaySettings &settings);

/// The bytes of a command: Latin-1, closed by one CR. Line ends within the text are left out, so that one
/// command is one line.
QByteArray lineOf(const Command &command);

/// Milliseconds since the beginning of 1970, UTC, with "000000" behind them.
QString epochText(const QDateTime &now);

/// The text of an entry of the mode list; none for the last one, "OFF", and beyond the list.
std::optional<QString> modeText(int index);

} // namespace gateway
