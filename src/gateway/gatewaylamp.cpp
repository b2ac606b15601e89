#include "gateway/gatewaylamp.h"

#include "base/gui/lampbase.h"

#include <QCoreApplication>
#include <QLineEdit>

namespace gateway {

namespace {

QColor baseOf(LampColour colour)
{
    switch (colour) {
    case LampColour::Gray:
        return Qt::gray;
    case LampColour::Red:
        return Qt::red;
    case LampColour::Green:
        return Qt::green;
    }
    return {};
}

} // namespace

void showLamp(QLineEdit &lamp, LampColour colour, const QString &meaning)
{
    const QColor base = baseOf(colour);
    if (lamp.palette().color(QPalette::Base) == base && lamp.toolTip() == meaning)
        return;
    setLampBase(lamp, base);
    lamp.setToolTip(meaning);
    lamp.setAccessibleDescription(meaning);
}

void showPcmSync(QLineEdit &lamp, PcmSync sync)
{
    switch (sync) {
    case PcmSync::Unknown:
        showLamp(lamp, LampColour::Gray,
                 QCoreApplication::translate("GatewayLamp", "PCM synchronization unknown"));
        return;
    case PcmSync::Missing:
        showLamp(lamp, LampColour::Red, QCoreApplication::translate("GatewayLamp", "PCM not synchronized"));
        return;
    case PcmSync::Present:
        showLamp(lamp, LampColour::Green, QCoreApplication::translate("GatewayLamp", "PCM synchronized"));
        return;
    }
}

} // namespace gateway
