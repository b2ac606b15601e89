#pragma once

#include <QString>
#include <QStringList>

/// What a channel offers and between which limits it is set.
struct ChannelSetup
{
    QStringList bridgeTypeList; ///< bridge, input or sensor types
    QStringList gainList;       ///< gains or ranges
    double offsetMin = 0;
    double offsetMax = 0;
    double offsetStep = 0;
    qint32 filterMin = 0; ///< Hz, but for temperature modules
    qint32 filterMax = 0;
    qint32 filterStep = 0;
};

/// All that the program knows of one channel. Each family of modules uses the part that it has.
struct ChannelRecord
{
    int channelNumber = 0;
    QStringList bridgeTypeList; ///< bridge, input or sensor types
    qint32 bridgeTypeIndex = 0;
    QStringList gainList; ///< gains or ranges
    qint32 gainIndex = 0;
    quint8 autozero = 0;
    QString manualOffset;
    double offsetMin = 0;
    double offsetMax = 0;
    double offsetStep = 0;
    qint32 filterMin = 0; ///< Hz, but for temperature modules
    qint32 filterMax = 0;
    qint32 filterStep = 0;
    qint32 filterValue = 0;
    quint8 reversePolarity = 0;
    quint8 shuntState = 0;
    double level = 0;
};
