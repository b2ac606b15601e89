#pragma once

#include "sim/gatewaystate.h"

namespace sim {

/// Carries out a line "#NNN_value" on the state of a gateway. Returns what was done or why nothing was, for
/// the log. A code that the gateway does not know and a value out of range change nothing.
QString obeySetting(const QString &line, Milliseconds now, GatewayState *state);

/// The bytes of a status line separate fields by ";" and end at a line end; a text with one of these, or
/// beyond Latin-1, has no place in it.
bool fitsStatusLine(const QString &text);

const QStringList &gatewayModes();
/// Whether the gateway has both parts and its highest rate is not exceeded: bit rate x 50 / channels.
bool canRun(const GatewayState &state, const DataRate &rate);

} // namespace sim
