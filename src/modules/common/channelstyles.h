#pragma once

#include <QString>

/// The style sheets by which a control tells its state: those of the channels, and the fields of other panels
/// that show what was sent and what a status confirmed. The literal texts stand here only.
namespace channelstyles {

// Boxes and buttons with a text.
QString sent();            ///< by the operator, not confirmed yet; Auto Zero button: also, it is running
QString confirmed();       ///< by a status
QString offsetSent();      ///< the same two for the offset button, which has a picture
QString offsetConfirmed(); ///< a number
QString offsetAuto();      ///< the module chooses the offset

// Checkable buttons, which show a picture only.
QString switchedOn();  ///< by the operator, not confirmed yet
QString on();          ///< confirmed; a preselection: on
QString off();         ///< whoever switched it off
QString shuntActive(); ///< a shunt is assumed to be active

} // namespace channelstyles
