#pragma once

#include <QStringList>

/// The texts that stand for the entries of a list, in the order of that list.
namespace gateway {

/// The gateway reports all of them; the last one, "OFF", it is never told.
const QStringList &modeTexts();

const QStringList &dataProtocolTexts();

} // namespace gateway
