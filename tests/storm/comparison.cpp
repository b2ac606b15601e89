#include "comparison.h"

#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"
#include "modules/channels/channel_view.h"
#include "modules/moduledevice_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "program.h"
#include "sim/catalogue.h"
#include "sim/gatewaysetting.h"
#include "system/modulesyssettings_ctrllr.h"
#include "system/modulesyssettings_view.h"
#include "system/rates/ratetable.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <algorithm>

namespace storm {

namespace {

using sim::Milliseconds;

// How old the values of the last polling may be, and how far the chain's clock may have gone on.
constexpr Milliseconds kOldest(1500);
constexpr Milliseconds kNewest(300);
constexpr Milliseconds kStep(20);

QString selftestText(quint8 code)
{
    const QString digits = QString::number(code, 16).toUpper().rightJustified(2, QLatin1Char('0'));
    return code == 0 ? QStringLiteral("O.K.") : QStringLiteral("0x") + digits;
}

/// The name that the program has for a function of a universal channel.
QString functionText(quint8 code)
{
    switch (code) {
    case sim::kStrainGauge:
        return QStringLiteral("Strain Gauge");
    case sim::kVoltage:
        return QStringLiteral("Voltage");
    case sim::kIepe:
        return QStringLiteral("IEPE/ICP®");
    case sim::kPotentiometer:
        return QStringLiteral("Potentiometer");
    default:
        return {};
    }
}

QString protectionText(quint8 code)
{
    const QStringList names{QStringLiteral("standard"), QStringLiteral("derating"),
                            QStringLiteral("mission critical")};
    return names.value(code, QString::number(code));
}

QString yesOrNo(bool yes)
{
    return yes ? QStringLiteral("yes") : QStringLiteral("no");
}

/// What a control shows, as text.
QString shown(const QWidget &widget)
{
    if (const auto *list = qobject_cast<const QComboBox *>(&widget))
        return list->currentText();
    if (const auto *box = qobject_cast<const QAbstractSpinBox *>(&widget))
        return box->text();
    return widget.property("text").toString();
}

bool hasStrip(const QWidget &row)
{
    const auto strips = row.findChildren<Channel_View *>();
    return std::any_of(strips.cbegin(), strips.cend(),
                       [&row](const Channel_View *strip) { return strip->isVisibleTo(&row); });
}

} // namespace

Comparison::Comparison(const Snapshot &snapshot, Reach reach)
    : m_snapshot(snapshot)
    , m_reach(reach)
{}

/// All texts that a wandering value may have been read as of late; `value` gives the text for a time.
template <typename Value>
QStringList Comparison::texts(Value value) const
{
    QStringList texts;
    Milliseconds time = m_snapshot.now > kOldest ? m_snapshot.now - kOldest : Milliseconds(0);
    for (; time < m_snapshot.now + kNewest; time += kStep) {
        const QString text = value(time);
        if (texts.isEmpty() || texts.constLast() != text)
            texts.append(text);
    }
    return texts;
}

void Comparison::checkOneOf(const QWidget &parent, const char *widget, const QStringList &wanted)
{
    ++m_valueCount;
    const auto *found = parent.findChild<QWidget *>(QString::fromLatin1(widget));
    const QString text = found ? shown(*found) : QStringLiteral("(not there)");
    if (!wanted.contains(text))
        m_differences.append(
            QStringLiteral("%1 %2: \"%3\", not \"%4\"")
                .arg(m_place, QString::fromLatin1(widget), text,
                     wanted.size() > 2 ? wanted.constFirst() + QStringLiteral("\"...\"") + wanted.constLast()
                                       : wanted.join(QStringLiteral("\" or \""))));
}

void Comparison::check(const QWidget &parent, const char *widget, const QString &wanted)
{
    checkOneOf(parent, widget, {wanted});
}

void Comparison::checkLive(const QWidget &parent, const QString &suffix, int address,
                           const sim::Health &health)
{
    const auto name = [&suffix](const char *label) { return (QLatin1String(label) + suffix).toLatin1(); };
    constexpr double kVoltsPerStep = 0.01;
    constexpr double kDegreesPerStep = 0.5;
    constexpr double kLowestDegrees = -55;
    checkOneOf(parent, name("label_Voltage"), texts([&](Milliseconds time) {
                   const int raw = m_snapshot.live.voltsRaw(address, health, time);
                   return QString::number(raw * kVoltsPerStep, 'f', 2) + QStringLiteral(" V");
               }));
    checkOneOf(parent, name("label_Temperature"), texts([&](Milliseconds time) {
                   const int raw = m_snapshot.live.celsiusRaw(address, health, time);
                   return QString::number(raw * kDegreesPerStep + kLowestDegrees, 'f', 1) +
                          QStringLiteral(" °C");
               }));
    check(parent, name("label_SelftestSt"), selftestText(health.selftest));
}

void Comparison::compareModule(const QWidget &row, int address)
{
    const sim::Module &module = m_snapshot.chain.module(address);
    m_place = QStringLiteral("row %1").arg(address);
    check(row, "pushButton_DeviceButton", QString::number(address));
    check(row, "label_SnVersion", module.identity.serial);
    check(row, "label_HwVersion", module.identity.hardware);
    check(row, "label_SwVersion", module.identity.firmware1);
    check(row, "label_FpgaVersn", module.identity.firmware2);
    checkLive(row, QString(), address, module.health);
    const bool isKnown = module.type >= sim::kStrainGauge && module.type <= sim::kUniversal;
    for (int index = 0; isKnown && index < sim::kChannelsPerModule; ++index)
        compareStrip(row, module, index);
    ++m_valueCount;
    if (!isKnown && hasStrip(row))
        m_differences.append(m_place + QStringLiteral(" has a strip, which no module of this type has"));
}

void Comparison::compareStrip(const QWidget &row, const sim::Module &module, int index)
{
    const sim::Channel &channel = module.channel(index);
    const QLatin1Char letter(index == 0 ? 'A' : 'B');
    const auto *place = row.findChild<QWidget *>(QStringLiteral("strip_") + letter);
    const QWidget *strip = place ? place->findChild<Channel_View *>() : nullptr;
    const QString rowPlace = m_place;
    m_place += QLatin1Char(' ') + QString(letter);
    if (!strip || !strip->isVisibleTo(&row)) {
        m_differences.append(m_place + QStringLiteral(" is missing"));
        m_place = rowPlace;
        return;
    }
    const bool isThermo = module.type == sim::kThermo;
    const bool hasBridge = module.type == sim::kStrainGauge || module.type == sim::kUniversal;
    check(*strip, isThermo ? "comboBox_ThermoDeviceType" : "comboBox_BridgeType",
          module.sensorsOf(index).value(channel.bridgeIndex));
    const char *range = hasBridge ? "comboBox_Gain" : "comboBox_RangeGain";
    check(*strip, isThermo ? "comboBox_TemperatureRange" : range,
          module.rangesOf(index).value(channel.gainIndex));
    check(*strip, "filterSpinBox", channel.filter);
    if (!isThermo)
        checkMark(*strip, module.type == sim::kStrainGauge ? "checkBox_RevPol_100" : "checkBox_RevPol",
                  channel.reversePolarity);
    if (hasBridge)
        compareBridge(*strip, channel);
    if (module.type == sim::kUniversal)
        check(row, index == 0 ? "ChDeviceLabel_A" : "ChDeviceLabel_B", functionText(channel.function));
    m_place = rowPlace;
}

void Comparison::checkMark(const QWidget &parent, const char *button, bool wanted)
{
    const auto *found = parent.findChild<QAbstractButton *>(QString::fromLatin1(button));
    ++m_valueCount;
    if (!found || found->isChecked() != wanted)
        m_differences.append(
            QStringLiteral("%1 %2: not %3").arg(m_place, QString::fromLatin1(button), yesOrNo(wanted)));
}

void Comparison::compareBridge(const QWidget &strip, const sim::Channel &channel)
{
    check(strip, "pushButton_ManualOffset", channel.offset);
    checkMark(strip, "checkBox_Shunt_Pos_Presel", channel.positivePreselected);
    checkMark(strip, "checkBox_Shunt_Neg_Presel", channel.negativePreselected);
}

void Comparison::compareController(const QWidget &row)
{
    const sim::Controller &controller = m_snapshot.chain.controller;
    m_place = QStringLiteral("controller");
    check(row, "label_SerialNumber", QStringLiteral("S/N ") + controller.identity.serial);
    check(row, "label_HwVersion", controller.identity.hardware);
    check(row, "label_SwVersion", controller.identity.firmware1);
    check(row, "label_FpgaVersn", controller.identity.firmware2);
    checkLive(row, QString(), sim::kControllerFastEntry, controller.health);
}

void Comparison::comparePower(const QWidget &row)
{
    const auto *part = row.findChild<QWidget *>(QStringLiteral("powerFrame"));
    m_place = QStringLiteral("power module");
    ++m_valueCount;
    if (!part || part->isHidden() == m_snapshot.chain.power.has_value())
        m_differences.append(m_place + QStringLiteral(" is shown, or is not"));
    if (!m_snapshot.chain.power || !part || part->isHidden())
        return;
    const sim::Power &power = *m_snapshot.chain.power;
    check(row, "label_SerialNumber_Pow", QStringLiteral("S/N ") + power.identity.serial);
    check(row, "label_HwVersion_Pow", power.identity.hardware);
    check(row, "label_SwVersion_Pow", power.identity.firmware1);
    checkLive(row, QStringLiteral("_Pow"), sim::kPowerAddress, power.health);
    check(row, "label_StatusFlag", power.tooHot ? QStringLiteral("!") : QString());
    checkOneOf(row, "label_InputVoltage", texts([&](Milliseconds time) {
                   const int raw = qRound(m_snapshot.live.inputVolts(power.inputVolts, time) * 100);
                   return QString::number(static_cast<double>(static_cast<float>(raw) / 100.0F), 'f', 1);
               }));
    checkOneOf(row, "label_LoadCurrent", texts([&](Milliseconds time) {
                   const double amperes = m_snapshot.live.loadAmperes(power.loadAmperes, time);
                   const int raw = qRound(amperes * power.loadShare() * 2000);
                   return QString::number(static_cast<double>(static_cast<float>(raw) / 2000.0F), 'f', 3);
               }));
    if (m_reach == Reach::Session)
        return;
    check(row, "comboBox_OutputVoltageMode",
          power.mode == sim::Power::Fixed ? QStringLiteral("fixed") : QStringLiteral("auto"));
    const auto *setpoint = row.findChild<QDoubleSpinBox *>(QStringLiteral("doubleSpinBox_OutputVoltage"));
    ++m_valueCount;
    if (!setpoint) {
        m_differences.append(m_place + QStringLiteral(" setpoint is missing"));
        return;
    }
    const double wanted = qBound(setpoint->minimum(), power.chosenMillivolts() / 1000.0, setpoint->maximum());
    ++m_valueCount;
    if (qAbs(setpoint->value() - wanted) > 0.051)
        m_differences.append(
            QStringLiteral("%1 setpoint: %2, not %3").arg(m_place).arg(setpoint->value()).arg(wanted));
    check(row, "label_Protection", protectionText(power.protection));
}

void Comparison::checkRateCell(const QWidget &panel)
{
    // The gateway's table, somewhere in the panel too, is another.
    const auto *dialog = panel.findChild<QWidget *>(QStringLiteral("samplingRatesDialog"));
    const auto *table = dialog ? dialog->findChild<RateTable *>(QStringLiteral("rateTable")) : nullptr;
    const sim::DataRate rate = m_snapshot.chain.system.dataRate();
    const QPushButton *cell = table ? table->button({rate.bitRate, rate.channels}) : nullptr;
    ++m_valueCount;
    if (!cell)
        m_differences.append(QStringLiteral("%1 has no cell for %2 kBit/s and %3 channels")
                                 .arg(m_place, rate.bitRate, rate.channels));
    else if (cell->isEnabled() && table->selected() != cell)
        m_differences.append(QStringLiteral("%1 marks rate \"%2\", not \"%3\"")
                                 .arg(m_place,
                                      table->selected() ? table->selected()->objectName() : QString(),
                                      cell->objectName()));
}

void Comparison::compareSystemPanel(const QWidget &panel)
{
    const sim::Chain &chain = m_snapshot.chain;
    m_place = QStringLiteral("system panel");
    check(panel, "label_ModulesNumber", QString::number(chain.modules.size()));
    check(panel, "label_ChannelsNumber", QString::number(sim::kChannelsPerModule * chain.modules.size()));
    check(panel, "lineEdit_BitRate", chain.system.bitRate());
    check(panel, "lineEdit_SamplingRate", chain.system.samplingRate());
    check(panel, "label_PoweringMode", chain.system.poweringMode);
    check(panel, "label_DataTransmission", chain.system.dataTransmission);
}

void Comparison::checkChoice(const QWidget &panel, const char *list, int wanted)
{
    const auto *box = panel.findChild<QComboBox *>(QString::fromLatin1(list));
    ++m_valueCount;
    if (!box || wanted < 0 || wanted >= box->count() || box->currentIndex() != wanted)
        m_differences.append(QStringLiteral("%1 %2: choice %3, not %4 of %5")
                                 .arg(m_place, QString::fromLatin1(list))
                                 .arg(box ? box->currentIndex() : -1)
                                 .arg(wanted)
                                 .arg(box ? box->count() : 0));
}

void Comparison::compareGateway(const QWidget &panel)
{
    const sim::GatewayState &state = m_snapshot.gateway;
    const QString off = QStringLiteral("0");
    constexpr int kSerialDigits = 6;
    m_place = QStringLiteral("gateway's panel");
    check(panel, "GtwVersion", state.version);
    check(panel, "SerialNo", state.serial.rightJustified(kSerialDigits, QLatin1Char('0')));
    check(panel, "extIpAddr", state.extAddress);
    check(panel, "extPort", state.extPort);
    check(panel, "minBox", state.minimumSamples);
    check(panel, "maxBox", state.maximumSamples);
    check(panel, "PTPStateLineEdit", state.ptpMode == off ? QStringLiteral("OFF") : state.ptpState);
    checkChoice(panel, "comboMode", sim::gatewayModes().indexOf(state.mode));
    checkChoice(panel, "comboSimultn", state.simulation.toInt());
    checkChoice(panel, "comboActivCOM", state.activeCom.toInt());
    checkChoice(panel, "comboPTP", state.ptpMode.toInt());
    checkChoice(panel, "comboBoxDataPtcl", state.dataProtocol == QLatin1String("ZRT-1") ? 0 : 1);
    checkMark(panel, "radioBigEndn", state.endian == QLatin1String("B"));
    checkMark(panel, "radioLitleEndn", state.endian == QLatin1String("L"));
    checkMark(panel, "radio16Bit", state.dataLength == QLatin1String("16"));
    checkMark(panel, "radio18Bit", state.dataLength == QLatin1String("18"));
    checkMark(panel, "unsignedInt", state.dataFormat == QLatin1String("U"));
    checkMark(panel, "twoComp", state.dataFormat == QLatin1String("2"));
}

QWidget *connectedPanel()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (!widget->inherits("GatewayZRT"))
            continue;
        const auto *button = widget->findChild<QPushButton *>(QStringLiteral("tcpConnect_Btn"));
        if (button && button->text() == QLatin1String("Disconnect"))
            return widget;
    }
    return nullptr;
}

bool isShownAlike(const sim::GatewayState &a, const sim::GatewayState &b)
{
    const auto texts = [](const sim::GatewayState &state) {
        return QStringList{state.version,    state.serial,       state.extAddress, state.extPort,
                           state.mode,       state.simulation,   state.activeCom,  state.minimumSamples,
                           state.ptpMode,    state.ptpState,     state.endian,     state.maximumSamples,
                           state.dataLength, state.dataProtocol, state.dataFormat};
    };
    return texts(a) == texts(b);
}

void Comparison::compare(const Program &program)
{
    const auto &modules = program.app().analogModules();
    ++m_valueCount;
    if (!m_snapshot.hasDevice || static_cast<int>(modules.size()) != m_snapshot.chain.modules.size() ||
        !program.app().controllerModule()) {
        m_differences.append(
            QStringLiteral("%1 rows, not %2").arg(modules.size()).arg(m_snapshot.chain.modules.size()));
        return;
    }
    for (int address = 1; address <= m_snapshot.chain.modules.size(); ++address)
        compareModule(*modules.at(static_cast<std::size_t>(address - 1))->GetView(), address);
    const QWidget &top = *program.app().controllerModule()->GetView();
    compareController(top);
    comparePower(top);
    QWidget &panel = *program.app().sysSettings()->GetView();
    compareSystemPanel(panel);
    checkRateCell(panel);
}

} // namespace storm
