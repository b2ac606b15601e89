#pragma once

#include "protocol/records/moduletypes.h"

#include <QString>

/// The column headers of a row; the same over channel A and channel B.
struct HeaderTexts
{
    QString channel;
    QString firstInfo;
    QString secondInfo;
    QString manualOffset;
    QString shunt;
    QString filter;
    QString revPol;
    QString level;
};

/// Headers of a row. In the thermo form the first one depends on the name that the row shows.
HeaderTexts headerTexts(HeaderForm form, const QString &deviceName);

/// What differs between the forms besides the texts.
struct HeaderTraits
{
    bool separators = true;             ///< lines before each channel
    bool channelsHaveFunctions = false; ///< each channel has a name of its own, and its button changes it
};

HeaderTraits headerTraits(HeaderForm form);

/// Headers of the first two columns that follow what a channel measures.
namespace infoheaders {

QString bridgeType(); ///< over the bridge types of a strain gauge
QString bridgeRange();
QString input();
QString voltageRange();
QString xvdtRange();

} // namespace infoheaders
