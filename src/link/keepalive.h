#pragma once

#include <QtGlobal>

/// Switches on TCP keep-alive on a connected socket: first probe after 1000 ms of silence, then one each
/// 600 ms (a whole second where the platform counts in seconds). Where sent bytes hold the probes back, those
/// that a peer does not acknowledge, or does not take, end the connection after the time that the probes
/// would take. A failure is logged; the connection stays.
void enableKeepAlive(qintptr socketDescriptor);
