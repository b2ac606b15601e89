#include "modules/channels/channeltype4_view.h"

#include "modules/widgets/qcomboboxnowheel.h"
#include "protocol/records/moduletypes.h"

#include <QDebug>
#include <QPushButton>

namespace {

/// Functions that need no bridge. The current loop is none of a universal channel.
bool isVoltageLike(quint8 code)
{
    return code == wireCode(ModuleType::Voltage) || code == wireCode(ModuleType::Iepe) ||
           code == wireCode(ModuleType::Xvdt) || code == wireCode(ModuleType::Potentiometer) ||
           code == wireCode(ModuleType::Auxiliary);
}

} // namespace

ChannelType4_View::ChannelType4_View(TimeSource &time, QWidget *parent)
    : BridgeChannel_View(time, parent)
{
    setObjectName(QStringLiteral("ChannelType4_View"));
    m_typeBox->setAccessibleName(QStringLiteral("Bridge or input type")); // as its function goes
    polarityButton().setObjectName(QStringLiteral("checkBox_RevPol"));
    connect(&polarityButton(), &QPushButton::clicked, this, &ChannelType4_View::on_checkBox_RevPol_clicked);
}

void ChannelType4_View::setFunction(quint8 code)
{
    m_channelFunction = code;
    const bool bridge = code == wireCode(ModuleType::StrainGauge);
    if (!bridge && !isVoltageLike(code))
        qDebug() << "!Error unknown channel module Type";
    setBridgeControlsVisible(!isVoltageLike(code));
}

void ChannelType4_View::noteShuntClick(bool positive)
{
    if (positive)
        qDebug() << "Positiv Check box clicked value";
    else
        qDebug() << "Negative Check box clicked value";
}

void ChannelType4_View::on_checkBox_RevPol_clicked(bool checked)
{
    polarityClicked(checked);
}
