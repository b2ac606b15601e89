#include "channelfixture.h"

#include "modules/channels/channel_view.h"
#include "modules/moduledevice_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "sim/catalogue.h"

#include <QApplication>
#include <QDialog>
#include <QtTest>

namespace {

constexpr char kChannels[] = {'A', 'B'};

int indexOf(char channel)
{
    return channel == 'A' ? 0 : 1;
}

QString place(int module, char channel)
{
    return QStringLiteral("%1%2 ").arg(module).arg(QLatin1Char(channel));
}

QString yesOrNo(bool yes)
{
    return yes ? QStringLiteral("yes") : QStringLiteral("no");
}

bool isStatusRequest(const QByteArray &payload)
{
    const char code = payload.isEmpty() ? '\0' : payload.at(0);
    return code == 0x01 || code == 0x08 || code == 0x10 || code == 0x12;
}

void compare(QStringList *mismatches, const QString &place, const QWidget *control, const QString &shown,
             const QString &wanted)
{
    if (shown != wanted)
        mismatches->append(
            QStringLiteral("%1%2: %3, not %4").arg(place, control->objectName(), shown, wanted));
}

} // namespace

ChannelFixture::ChannelFixture(LinkKind kind)
    : SystemFixture(kind)
{
    usePatientTimeouts();
    periods.cyclic = std::chrono::milliseconds(4);
    reconnect = std::chrono::milliseconds(20);
}

void ChannelFixture::startChain(const QString &description)
{
    plug(description);
    start();
    waitUntilRead();
    window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window()));
    time.hold();
    forgetChanges();
}

void ChannelFixture::waitUntilRead()
{
    const auto isRead = [this] {
        return isReady() && static_cast<int>(app->analogModules().size()) == device->chain().modules.size();
    };
    QVERIFY(waitUntil(isRead));
    WAIT_COMPARE(mismatches(), QStringList());
}

QWidget *ChannelFixture::row(int module) const
{
    return app->analogModules().at(static_cast<std::size_t>(module - 1))->GetView();
}

QWidget *ChannelFixture::strip(int module, char channel) const
{
    const auto *place = childByName<QWidget>(row(module), channel == 'A' ? "strip_A" : "strip_B");
    return place->findChild<Channel_View *>();
}

QComboBox *ChannelFixture::typeBox(int module, char channel) const
{
    const bool thermo = device->chain().module(module).type == sim::kThermo;
    return control<QComboBox>(module, channel, thermo ? "comboBox_ThermoDeviceType" : "comboBox_BridgeType");
}

QComboBox *ChannelFixture::rangeBox(int module, char channel) const
{
    const quint8 type = device->chain().module(module).type;
    if (type == sim::kThermo)
        return control<QComboBox>(module, channel, "comboBox_TemperatureRange");
    const bool bridge = type == sim::kStrainGauge || type == sim::kUniversal;
    return control<QComboBox>(module, channel, bridge ? "comboBox_Gain" : "comboBox_RangeGain");
}

QSpinBox *ChannelFixture::filterBox(int module, char channel) const
{
    return control<QSpinBox>(module, channel, "filterSpinBox");
}

QWidget *ChannelFixture::openDialog(const char *name) const
{
    QWidget *found = nullptr;
    for (QDialog *dialog : window()->findChildren<QDialog *>(QString::fromLatin1(name))) {
        if (!dialog->isVisible())
            continue;
        if (found)
            qFatal("more than one %s is open", name);
        found = dialog;
    }
    return found;
}

int ChannelFixture::openDialogCount()
{
    int count = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets())
        count += widget->isVisible() && qobject_cast<const QDialog *>(widget) ? 1 : 0;
    return count;
}

QStringList ChannelFixture::commands() const
{
    QStringList commands;
    for (const QByteArray &payload : device->receivedPayloads()) {
        if (!isStatusRequest(payload))
            commands.append(QString::fromLatin1(payload.toHex()));
    }
    return commands;
}

QStringList ChannelFixture::state() const
{
    QStringList lines;
    const sim::Milliseconds now = device->elapsed();
    for (int address = 1; address <= device->chain().modules.size(); ++address) {
        for (const char side : kChannels) {
            const sim::Channel &channel = device->chain().module(address).channel(indexOf(side));
            const QString start = place(address, side);
            const auto add = [&lines, &start](const char *name, const QString &value) {
                lines.append(start + QLatin1String(name) + QLatin1Char('=') + value);
            };
            add("function", QString::number(channel.function));
            add("type", QString::number(channel.bridgeIndex));
            add("range", QString::number(channel.gainIndex));
            add("offset", channel.offset);
            add("filter", channel.filter);
            add("reversed", yesOrNo(channel.reversePolarity));
            add("zeroed", yesOrNo(channel.zeroed));
            add("shunt+", yesOrNo(channel.positiveShuntOn(now)));
            add("shunt-", yesOrNo(channel.negativeShuntOn(now)));
            add("preselect+", yesOrNo(channel.positivePreselected));
            add("preselect-", yesOrNo(channel.negativePreselected));
        }
    }
    return lines;
}

void ChannelFixture::forgetChanges()
{
    m_before = state();
}

QStringList ChannelFixture::changes() const
{
    QStringList changed;
    for (const QString &line : state()) {
        if (!m_before.contains(line))
            changed.append(line);
    }
    return changed;
}

QStringList ChannelFixture::activeShunts(const char *name) const
{
    QStringList active;
    for (int module = 1; module <= device->chain().modules.size(); ++module) {
        for (const char channel : kChannels) {
            const auto *shunt = strip(module, channel)->findChild<QPushButton *>(QString::fromLatin1(name));
            if (shunt && shunt->styleSheet() == styles::kShuntActive)
                active.append(QString::number(module) + QLatin1Char(channel));
        }
    }
    return active;
}

void ChannelFixture::addFaults(const QString &rules)
{
    QString error;
    QVERIFY2(device->faults().parse(rules, &error), qPrintable(error));
}

void ChannelFixture::waitForPolls()
{
    const int polls = device->requestCount(0x08);
    WAIT_VERIFY(device->requestCount(0x08) > polls + 3);
}

QStringList ChannelFixture::unconfirmed() const
{
    QStringList found;
    for (int module = 1; module <= device->chain().modules.size(); ++module) {
        for (const char channel : kChannels) {
            for (const QWidget *control : strip(module, channel)->findChildren<QWidget *>()) {
                const QString style = control->styleSheet();
                if (style == styles::kSent || style == styles::kOffsetSent || style == styles::kSwitchedOn)
                    found.append(place(module, channel) + control->objectName());
            }
        }
    }
    return found;
}

QStringList ChannelFixture::mismatches() const
{
    QStringList found;
    for (int address = 1; address <= device->chain().modules.size(); ++address) {
        const sim::Module &module = device->chain().module(address);
        for (const char side : kChannels) {
            const int index = indexOf(side);
            const sim::Channel &channel = module.channel(index);
            const QString start = place(address, side);
            const auto check = [&](const QWidget *control, const QString &shown, const QString &wanted) {
                compare(&found, start, control, shown, wanted);
            };
            const QComboBox *type = typeBox(address, side);
            check(type, type->currentText(), module.sensorsOf(index).value(channel.bridgeIndex));
            const QComboBox *range = rangeBox(address, side);
            check(range, range->currentText(), module.rangesOf(index).value(channel.gainIndex));
            const QSpinBox *filter = filterBox(address, side);
            check(filter, filter->text(), channel.filter);
            const QWidget *controls = strip(address, side);
            for (const auto *polarity : controls->findChildren<QPushButton *>()) {
                if (polarity->objectName().startsWith(QStringLiteral("checkBox_RevPol")))
                    check(polarity, yesOrNo(polarity->isChecked()), yesOrNo(channel.reversePolarity));
            }
            if (module.type != sim::kStrainGauge && module.type != sim::kUniversal)
                continue;
            const QPushButton *offset = button(address, side, "pushButton_ManualOffset");
            check(offset, offset->text(), channel.offset);
            const QPushButton *positive = button(address, side, "checkBox_Shunt_Pos_Presel");
            check(positive, yesOrNo(positive->isChecked()), yesOrNo(channel.positivePreselected));
            const QPushButton *negative = button(address, side, "checkBox_Shunt_Neg_Presel");
            check(negative, yesOrNo(negative->isChecked()), yesOrNo(channel.negativePreselected));
        }
    }
    return found;
}
