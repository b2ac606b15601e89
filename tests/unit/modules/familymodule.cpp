#include "familymodule.h"

#include "modules/channels/channel_view.h"
#include "modules/moduledevicetype1_ctrllr.h"
#include "modules/moduledevicetype2_ctrllr.h"
#include "modules/moduledevicetype3_ctrllr.h"
#include "modules/moduledevicetype4_ctrllr.h"
#include "requesttext.h"

namespace {

const char *const kOffsets[] = {"Auto", "1.5", "-2.25"};
const int kFrequencies[] = {1000, 1200, 1300};
const int kThermoFilters[] = {4, 8, 16};

/// The colour of a style sheet by its name here; an unknown style sheet stands for itself.
QString colourOf(const QWidget *widget)
{
    static const QHash<QString, QString> names{
        {"color:#C00000", "red"},
        {"color:black", "black"},
        {"border-image: url(:/pictures/editline.png);\ncolor:#C00000;", "red"},
        {"border-image: url(:/pictures/editline.png);\ncolor:black;", "black"},
        {"border-image: url(:/pictures/editline.png);\ncolor: rgb(235, 220, 0);", "yellow"},
        {"QPushButton {border-image: url(:/pictures/checkbox_blue.png);}QToolTip {}", "blue"},
        {"QPushButton {border-image: url(:/pictures/checkbox_black.png);}QToolTip {}", "black"},
        {"QPushButton {border-image: url(:/pictures/checkbox_unchecked.png);}QToolTip {}", "unchecked"},
        {"QPushButton {border-image: url(:/pictures/shunt_aux_fake.bmp);}QToolTip {}", "active"},
    };
    const QString sheet = widget->styleSheet();
    return names.value(sheet, QLatin1Char('<') + sheet + QLatin1Char('>'));
}

QString pictureOf(const QPushButton *button)
{
    return (button->isChecked() ? QStringLiteral("on ") : QStringLiteral("off ")) + colourOf(button);
}

} // namespace

const char *nameOf(ChannelParameter parameter)
{
    switch (parameter) {
    case ChannelParameter::TypeIndex:
        return "type";
    case ChannelParameter::RangeIndex:
        return "range";
    case ChannelParameter::Autozero:
        return "autozero";
    case ChannelParameter::ManualOffset:
        return "offset";
    case ChannelParameter::Filter:
        return "filter";
    case ChannelParameter::ReversePolarity:
        return "polarity";
    case ChannelParameter::Shunt:
        return "shunt";
    }
    return "?";
}

FamilyModule::FamilyModule(int typeCode, int number)
    : Module(typeCode, number, 2 * number - 1)
    , m_typeCode(typeCode)
    , m_number(number)
{
    watch();
}

FamilyModule::FamilyModule(VirtualTime &sharedTime, int typeCode, int number)
    : Module(sharedTime, typeCode, number, 2 * number - 1)
    , m_typeCode(typeCode)
    , m_number(number)
{
    watch();
}

void FamilyModule::watch()
{
    device = status(m_typeCode, m_number);
    device.sensorList = QStringLiteral("120$350$1000$");
    device.rangeList = QStringLiteral("1$2$5$");
    device.functionCodeA = device.functionCodeB = m_typeCode == 9 ? 1 : 0;
    for (const Channel channel : kBothChannels) {
        set(ChannelParameter::ManualOffset, channel, 0);
        set(ChannelParameter::Filter, channel, 0);
    }

    const auto request = [this](const QVariant &variant) { sent << requestText(variant); };
    if (auto *type1 = qobject_cast<ModuleDeviceType1_Ctrllr *>(controller.get()))
        QObject::connect(type1, &ModuleDeviceType1_Ctrllr::Signal_SendChannelT1Data, &m_context, request);
    if (auto *type2 = qobject_cast<ModuleDeviceType2_Ctrllr *>(controller.get()))
        QObject::connect(type2, &ModuleDeviceType2_Ctrllr::Signal_SendChannelT2Data, &m_context, request);
    if (auto *type3 = qobject_cast<ModuleDeviceType3_Ctrllr *>(controller.get()))
        QObject::connect(type3, &ModuleDeviceType3_Ctrllr::Signal_SendChannelT3Data, &m_context, request);
    if (auto *type4 = qobject_cast<ModuleDeviceType4_Ctrllr *>(controller.get())) {
        QObject::connect(type4, &ModuleDeviceType4_Ctrllr::Signal_SendChannelT4Data, &m_context, request);
        QObject::connect(type4, &ModuleDeviceType4_Ctrllr::Signal_SendChannelChange, &m_context,
                         [this](int channel, int type) {
                             sent << QStringLiteral("change channel %1 to %2").arg(channel).arg(type);
                         });
        QObject::connect(
            type4, &ModuleDeviceType4_Ctrllr::Signal_SendVoltageSupply, &m_context,
            [this](int channel, int on, int voltage) {
                sent << QStringLiteral("supply channel %1: %2 %3").arg(channel).arg(on).arg(voltage);
            });
    }
    QObject::connect(controller.get(), &AnalogModule_Ctrllr::Signal_GetChannelData, &m_context,
                     [this](uint module) { sent << QStringLiteral("get %1").arg(module); });
    QObject::connect(controller.get(), &AnalogModule_Ctrllr::Signal_ShiftClickCommand, &m_context,
                     [this](const GroupCommand &command) { sent << groupText(command); });
    QObject::connect(controller.get(), &AnalogModule_Ctrllr::ModuleButtonPressed, &m_context,
                     [this] { sent << QStringLiteral("module button"); });
    QObject::connect(controller.get(), &AnalogModule_Ctrllr::Signal_HwResponseDelay, &m_context,
                     [this] { sent << QStringLiteral("delay"); });
    row().show();
}

bool FamilyModule::isThermo() const
{
    return m_typeCode == 4;
}

bool FamilyModule::isBridge() const
{
    const ModuleFamily family = moduleFamily(static_cast<quint8>(m_typeCode));
    return family != ModuleFamily::Type2 && family != ModuleFamily::Type3; // unknown ones have universal rows
}

std::vector<ChannelParameter> FamilyModule::parameters() const
{
    using P = ChannelParameter;
    if (isThermo())
        return {P::TypeIndex, P::RangeIndex, P::Filter};
    if (isBridge())
        return {P::TypeIndex, P::RangeIndex,      P::Autozero, P::ManualOffset,
                P::Filter,    P::ReversePolarity, P::Shunt};
    return {P::TypeIndex, P::RangeIndex, P::Autozero, P::Filter, P::ReversePolarity};
}

bool FamilyModule::has(ChannelParameter parameter) const
{
    for (const ChannelParameter own : parameters()) {
        if (own == parameter)
            return true;
    }
    return false;
}

ChannelModule_View &FamilyModule::row() const
{
    auto *row = qobject_cast<ChannelModule_View *>(controller->GetView());
    if (!row)
        qFatal("The module has no row with channels");
    return *row;
}

QWidget &FamilyModule::strip(Channel channel) const
{
    return row().channelView(channel);
}

QComboBox *FamilyModule::typeBox(Channel channel) const
{
    return childByName<QComboBox>(&strip(channel),
                                  isThermo() ? "comboBox_ThermoDeviceType" : "comboBox_BridgeType");
}

QComboBox *FamilyModule::rangeBox(Channel channel) const
{
    if (isThermo())
        return childByName<QComboBox>(&strip(channel), "comboBox_TemperatureRange");
    return childByName<QComboBox>(&strip(channel), isBridge() ? "comboBox_Gain" : "comboBox_RangeGain");
}

QComboBox *FamilyModule::box(ChannelParameter typeOrRange, Channel channel) const
{
    return typeOrRange == ChannelParameter::TypeIndex ? typeBox(channel) : rangeBox(channel);
}

QSpinBox *FamilyModule::filterBox(Channel channel) const
{
    const auto boxes = strip(channel).findChildren<QSpinBox *>();
    if (boxes.size() != 1)
        qFatal("A channel has %d spin boxes", static_cast<int>(boxes.size()));
    return boxes.first();
}

QPushButton *FamilyModule::button(Channel channel, const char *name) const
{
    return childByName<QPushButton>(&strip(channel), name);
}

QPushButton *FamilyModule::polarityButton(Channel channel) const
{
    return button(channel, m_typeCode == 1 ? "checkBox_RevPol_100" : "checkBox_RevPol");
}

QList<QDialog *> FamilyModule::openDialogs() const
{
    QList<QDialog *> open;
    const auto dialogs = row().findChildren<QDialog *>();
    for (QDialog *dialog : dialogs) {
        if (dialog->isVisible())
            open << dialog;
    }
    return open;
}

QString FamilyModule::shown(ChannelParameter parameter, Channel channel) const
{
    const QLatin1Char gap(' ');
    switch (parameter) {
    case ChannelParameter::TypeIndex:
    case ChannelParameter::RangeIndex: {
        const QComboBox *shownBox = box(parameter, channel);
        return QString::number(shownBox->currentIndex()) + gap + colourOf(shownBox);
    }
    case ChannelParameter::Filter:
        return QString::number(filterBox(channel)->value()) + gap + colourOf(filterBox(channel));
    case ChannelParameter::ManualOffset: {
        const QPushButton *offset = button(channel, "pushButton_ManualOffset");
        return offset->text() + gap + colourOf(offset);
    }
    case ChannelParameter::Autozero:
        return colourOf(autozeroButton(channel));
    case ChannelParameter::ReversePolarity:
        return pictureOf(polarityButton(channel));
    case ChannelParameter::Shunt:
        return QLatin1Char('+') + pictureOf(button(channel, "checkBox_Shunt_Pos")) + QStringLiteral(" -") +
               pictureOf(button(channel, "checkBox_Shunt_Neg"));
    }
    return {};
}

QString FamilyModule::confirmed(ChannelParameter parameter, int value) const
{
    switch (parameter) {
    case ChannelParameter::TypeIndex:
    case ChannelParameter::RangeIndex:
        return QStringLiteral("%1 black").arg(value);
    case ChannelParameter::Filter:
        return filterText(value) + QStringLiteral(" black");
    case ChannelParameter::ManualOffset:
        return offsetText(value) + QLatin1String(value == 0 ? " yellow" : " black");
    case ChannelParameter::Autozero:
        return QLatin1String(value == 0 ? "black" : "red");
    case ChannelParameter::ReversePolarity:
        return QLatin1String(value == 0 ? "off unchecked" : "on black");
    case ChannelParameter::Shunt:
        // No status changes what the operator's click shows.
        return asSent(parameter, 1);
    }
    return {};
}

QString FamilyModule::asSent(ChannelParameter parameter, int value) const
{
    switch (parameter) {
    case ChannelParameter::TypeIndex:
    case ChannelParameter::RangeIndex:
        return QStringLiteral("%1 red").arg(value);
    case ChannelParameter::Filter:
        return filterText(value) + QStringLiteral(" red");
    case ChannelParameter::ManualOffset:
        return offsetText(value) + QStringLiteral(" red");
    case ChannelParameter::Autozero:
        return QStringLiteral("red");
    case ChannelParameter::ReversePolarity:
        return QLatin1String(value == 0 ? "off unchecked" : "on blue");
    case ChannelParameter::Shunt:
        return QStringLiteral("+on active -off unchecked");
    }
    return {};
}

QStringList FamilyModule::shownAll() const
{
    QStringList all;
    for (const Channel channel : kBothChannels) {
        for (const ChannelParameter parameter : parameters())
            all << QStringLiteral("%1 %2: %3")
                       .arg(nameOf(channel), nameOf(parameter), shown(parameter, channel));
    }
    return all;
}

QString FamilyModule::offsetText(int value)
{
    return QLatin1String(kOffsets[value]);
}

QString FamilyModule::filterText(int value) const
{
    return QString::number(isThermo() ? kThermoFilters[value] : kFrequencies[value]);
}

void FamilyModule::set(ChannelParameter parameter, Channel channel, int value)
{
    const bool isA = channel == Channel::A;
    const auto byte = static_cast<quint8>(value);
    switch (parameter) {
    case ChannelParameter::TypeIndex:
        (isA ? device.bridgeIndexA : device.bridgeIndexB) = byte;
        return;
    case ChannelParameter::RangeIndex:
        (isA ? device.rangeIndexA : device.rangeIndexB) = byte;
        return;
    case ChannelParameter::ManualOffset:
        (isA ? device.offsetA : device.offsetB) = offsetText(value);
        return;
    case ChannelParameter::Filter:
        (isA ? device.filterA : device.filterB) = filterText(value);
        return;
    case ChannelParameter::ReversePolarity: {
        const int bit = isA ? 1 : 2;
        const int others = device.revPolBits & ~bit;
        device.revPolBits = static_cast<quint8>(value == 0 ? others : others | bit);
        return;
    }
    case ChannelParameter::Autozero:
        (isA ? values.autozeroA : values.autozeroB) = byte;
        return;
    case ChannelParameter::Shunt:
        (isA ? values.shuntA : values.shuntB) = byte;
        return;
    }
}

void FamilyModule::reportStatic()
{
    take(device);
}

void FamilyModule::reportFast()
{
    take(values, m_number);
}

void FamilyModule::report(ChannelParameter parameter, Channel channel, int value)
{
    set(parameter, channel, value);
    if (parameter == ChannelParameter::Autozero || parameter == ChannelParameter::Shunt)
        reportFast();
    else
        reportStatic();
}

void FamilyModule::begin()
{
    reportStatic();
    reportFast();
}

void FamilyModule::beginWithDifferentChannels()
{
    using P = ChannelParameter;
    for (const auto &[parameter, a, b] :
         {std::tuple(P::TypeIndex, 1, 2), std::tuple(P::RangeIndex, 2, 1), std::tuple(P::ManualOffset, 1, 0),
          std::tuple(P::Filter, 0, 2), std::tuple(P::ReversePolarity, 0, 1), std::tuple(P::Autozero, 1, 0),
          std::tuple(P::Shunt, 0, 1)}) {
        set(parameter, Channel::A, a);
        set(parameter, Channel::B, b);
    }
    begin();
}

QStringList FamilyModule::takeSent()
{
    const QStringList taken = sent;
    sent.clear();
    return taken;
}

void FamilyModule::callSlot(ChannelParameter parameter, int channel)
{
    auto *thermo = qobject_cast<ModuleDeviceType3_Ctrllr *>(controller.get());
    auto *voltage = qobject_cast<ModuleDeviceType2_Ctrllr *>(controller.get());
    auto *bridge = qobject_cast<BridgeModule_Ctrllr *>(controller.get());
    auto *amplifier = qobject_cast<AmplifierModule_Ctrllr *>(controller.get());
    std::string offset = "7";
    switch (parameter) {
    case ChannelParameter::TypeIndex:
        thermo ? thermo->SendThermoDeviceTypeIndex(channel, 2)
               : amplifier->Slot_SendBridgeTypeIndex(channel, 2);
        return;
    case ChannelParameter::RangeIndex:
        if (thermo)
            thermo->SendTemperatureRangeIndex(channel, 1);
        else if (voltage)
            voltage->Slot_SendRangeGainIndex(channel, 1);
        else
            bridge->Slot_SendGainIndex(channel, 1);
        return;
    case ChannelParameter::Filter:
        thermo ? thermo->SendFilterValue(channel, 300) : amplifier->Slot_SendFilterValue(channel, 300);
        return;
    case ChannelParameter::Autozero:
        thermo ? thermo->Slot_SendAutozero(channel, true) : amplifier->Slot_SendAutozero(channel, true, 5);
        return;
    case ChannelParameter::ManualOffset:
        bridge->Slot_SendManualOffset(channel, offset);
        return;
    case ChannelParameter::ReversePolarity:
        amplifier->Slot_SendRevPolState(channel, true);
        return;
    case ChannelParameter::Shunt:
        bridge->Slot_SendShuntState(channel, 131);
        return;
    }
}
