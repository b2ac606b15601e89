#include "system/rates/ratepairs.h"

namespace rates {

const QVector<RatePair> &ratePairs()
{
    static const QVector<RatePair> pairs{
        {QStringLiteral("96000"), QStringLiteral("250000")},
        {QStringLiteral("48000"), QStringLiteral("125000")},
        {QStringLiteral("24000"), QStringLiteral("62500")},
        {QStringLiteral("12000"), QStringLiteral("31250")},
        {QStringLiteral("6000"), QStringLiteral("15625")},
        {QStringLiteral("3000"), QStringLiteral("7812.5")},
        {QStringLiteral("1500"), QStringLiteral("3906.25")},
        {QStringLiteral("750"), QStringLiteral("1953.125")},
        {QStringLiteral("375"), QStringLiteral("976.5625")},
        {QStringLiteral("188"), QStringLiteral("488.28125")},
        {QStringLiteral("94"), QStringLiteral("244.140625")},
        {QStringLiteral("47"), QStringLiteral("122.070313")},
        {QStringLiteral("23"), QStringLiteral("61.0351563")},
    };
    return pairs;
}

const QVector<int> &tableBitRates()
{
    static const QVector<int> bitRates{10000, 5000, 2500, 1250, 625, 312};
    return bitRates;
}

const QVector<int> &tableChannelCounts()
{
    static const QVector<int> channelCounts{2, 4, 8, 16, 32, 64, 128, 256};
    return channelCounts;
}

} // namespace rates
