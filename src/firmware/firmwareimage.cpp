#include "firmware/firmwareimage.h"

#include "firmware/firmwarename.h"

namespace firmwareimage {

QString chipOfName(const QString &)
{
    return {};
}
QString chipInContents(const QByteArray &)
{
    return {};
}
Target targetOf(const FirmwareName &)
{
    return {};
}
FPGAfwCommand plainCommand(Target, FpgaCommandCode)
{
    return {};
}
FPGAfwCommand blockCommand(Target, quint16, const QByteArray &)
{
    return {};
}
int commandCount(qint64)
{
    return 0;
}
QVector<FPGAfwCommand> commands(Target, const QByteArray &)
{
    return {};
}

} // namespace firmwareimage
