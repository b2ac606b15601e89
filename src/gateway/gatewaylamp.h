#pragma once

#include "gateway/gatewaystatus.h"

class QLineEdit;
class QString;

namespace gateway {

enum class LampColour { Gray, Red, Green };

/// Lets a lamp of the panel show this colour. `meaning` says in words what it tells: as the lamp's tool tip,
/// and for those who do not see it. Nothing is touched while both are shown already.
void showLamp(QLineEdit &lamp, LampColour colour, const QString &meaning);

void showPcmSync(QLineEdit &lamp, PcmSync sync);

} // namespace gateway
