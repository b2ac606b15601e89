#include "controller/barstyles.h"

namespace barstyles {

namespace {

QString withColour(const QString &colour)
{
    return QStringLiteral("QProgressBar::chunk {background:%1;} "
                          "QProgressBar {border: 1px solid grey;border-radius: 3px;}")
        .arg(colour);
}

} // namespace

QString good()
{
    return withColour(QStringLiteral("#00dd00"));
}

QString fault()
{
    return withColour(QStringLiteral("red"));
}

QString limits()
{
    return withColour(QStringLiteral("#0000ff"));
}

} // namespace barstyles
