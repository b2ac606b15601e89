#include "protocol/ratecodes.h"

namespace rates {

namespace {

quint8 codeOf(const QStringList &texts, const QString &text)
{
    return static_cast<quint8>(qMax(0, texts.indexOf(text)));
}

} // namespace

QStringList bitRateTexts()
{
    return {QStringLiteral("40000"), QStringLiteral("20000"), QStringLiteral("10000"), QStringLiteral("5000"),
            QStringLiteral("2500"),  QStringLiteral("1250"),  QStringLiteral("625"),   QStringLiteral("312")};
}

QStringList channelCountTexts()
{
    return {QStringLiteral("2"),  QStringLiteral("4"),  QStringLiteral("8"),   QStringLiteral("16"),
            QStringLiteral("32"), QStringLiteral("64"), QStringLiteral("128"), QStringLiteral("256")};
}

quint8 bitRateCode(const QString &text)
{
    return codeOf(bitRateTexts(), text);
}

quint8 channelCountCode(const QString &text)
{
    return codeOf(channelCountTexts(), text);
}

} // namespace rates
