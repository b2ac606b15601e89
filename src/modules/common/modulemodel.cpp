#include "modules/common/modulemodel.h"

#include <QDebug>

QString moduleAddress(HeaderForm form, int moduleNumber)
{
    const QString number = QString::number(moduleNumber);
    switch (form) {
    case HeaderForm::Controller:
        return QLatin1Char('C') + number;
    case HeaderForm::Power:
        return QLatin1Char('P') + number;
    case HeaderForm::StrainGauge:
    case HeaderForm::Voltage:
    case HeaderForm::Thermo:
        return number;
    case HeaderForm::Universal:
        break;
    }
    return QStringLiteral("unknown");
}

ModuleModel::ModuleModel(ModuleFamily family, const ModuleIdentification &identification, int number,
                         int firstChannel)
    : name(identification.name)
    , address(moduleAddress(identification.headerForm, number))
    , serialNumber(identification.serialNumber)
    , firmware1(identification.firmware1)
    , firmware2(identification.firmware2)
    , hardware(identification.hardware)
    , headerForm(identification.headerForm)
    , moduleNumber(number)
{
    qDebug("Model Type %d created...", static_cast<int>(family));
    channel(Channel::A).channelNumber = firstChannel;
    channel(Channel::B).channelNumber = firstChannel + 1;
}

ChannelRecord ModuleModel::channel(int number) const
{
    if (number == kChannelA)
        return m_channels[0];
    if (number == kChannelB)
        return m_channels[1];
    ChannelRecord none;
    none.manualOffset = m_further;
    return none;
}
