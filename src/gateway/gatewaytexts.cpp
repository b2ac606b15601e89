#include "gateway/gatewaytexts.h"

namespace gateway {

const QStringList &modeTexts()
{
    static const QStringList texts{QStringLiteral("UDP-B"), QStringLiteral("UDP-M"), QStringLiteral("UDP-U"),
                                   QStringLiteral("TCP-S"), QStringLiteral("TCP-C"), QStringLiteral("OFF")};
    return texts;
}

const QStringList &dataProtocolTexts()
{
    static const QStringList texts{QStringLiteral("ZRT-1"), QStringLiteral("IENA-1")};
    return texts;
}

} // namespace gateway
