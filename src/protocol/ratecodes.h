#pragma once

#include <QString>
#include <QStringList>

/// Codes of bit rate and channel count in the sampling rate command: the place of the text in its list.
namespace rates {

QStringList bitRateTexts();      ///< kBit/s
QStringList channelCountTexts(); ///< number of channels

/// 0 to 7; an unknown text gives 0, as the first one does.
quint8 bitRateCode(const QString &text);
quint8 channelCountCode(const QString &text);

} // namespace rates
