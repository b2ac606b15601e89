#include "modules/common/channelstyles.h"

namespace channelstyles {

namespace {

QString offsetStyle(const QString &colour)
{
    return QStringLiteral("border-image: url(:/pictures/editline.png);\n") + colour + QLatin1Char(';');
}

} // namespace

QString sent()
{
    return QStringLiteral("color:#C00000");
}

QString confirmed()
{
    return QStringLiteral("color:black");
}

QString offsetSent()
{
    return offsetStyle(sent());
}

QString offsetConfirmed()
{
    return offsetStyle(confirmed());
}

QString offsetAuto()
{
    return offsetStyle(QStringLiteral("color: rgb(235, 220, 0)"));
}

QString switchedOn()
{
    return QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_blue.png);}QToolTip {}");
}

QString on()
{
    return QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_black.png);}QToolTip {}");
}

QString off()
{
    return QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_unchecked.png);}QToolTip {}");
}

QString shuntActive()
{
    return QStringLiteral("QPushButton {border-image: url(:/pictures/shunt_aux_fake.bmp);}QToolTip {}");
}

} // namespace channelstyles
