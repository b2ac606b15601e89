#include "operatorview.h"

#include "app/framework_view.h"
#include "app/initmodulenotfound_view.h"
#include "reports/moduleconfigurationmanager.h"
#include "reports/sensormodel.h"
#include "reports/systemreport.h"
#include "support/childbyname.h"
#include "systemfixture.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <cmath>

namespace {

constexpr double kVoltsSwing = 0.5; ///< more than simulated values wander
constexpr double kCelsiusSwing = 4;

QString colourName(const QColor &colour)
{
    if (colour == QColor(154, 237, 191))
        return QStringLiteral("pale green");
    if (colour == QColor(Qt::green))
        return QStringLiteral("green");
    if (colour == QColor(Qt::yellow))
        return QStringLiteral("yellow");
    if (colour == QColor(Qt::gray))
        return QStringLiteral("gray");
    return colour.name();
}

QString lamp(const SystemFixture &fixture, const char *name)
{
    const auto *edit = childByName<QLineEdit>(fixture.window(), name);
    return colourName(edit->palette().color(QPalette::Active, QPalette::Base));
}

QString label(const SystemFixture &fixture, const char *name)
{
    return childByName<QLabel>(fixture.window(), name)->text();
}

QString edit(const SystemFixture &fixture, const char *name)
{
    return childByName<QLineEdit>(fixture.window(), name)->text();
}

/// The texts of the system panel that come from the chain's system status.
QStringList systemTexts(const SystemFixture &fixture)
{
    return {edit(fixture, "lineEdit_BitRate"), edit(fixture, "lineEdit_SamplingRate"),
            label(fixture, "label_PoweringMode"), label(fixture, "label_DataTransmission")};
}

bool canChooseRates(const SystemFixture &fixture)
{
    const auto *dialog = childByName<QDialog>(fixture.window(), "samplingRatesDialog");
    for (const auto *cell : dialog->findChildren<QPushButton *>()) {
        if (cell->isEnabledTo(dialog))
            return true;
    }
    return false;
}

QStringList placeholders(const SystemFixture &fixture)
{
    QStringList texts;
    for (const auto *placeholder : fixture.window()->findChildren<InitModuleNotFound_View *>()) {
        if (placeholder->isVisible())
            texts.append(placeholder->accessibleName());
    }
    texts.sort();
    return texts;
}

QString shownOfTheChain(const SystemFixture &fixture)
{
    QStringList pieces;
    if (fixture.app->controllerModule())
        pieces.append(QStringLiteral("controller"));
    if (fixture.rowCount() > 0)
        pieces.append(QStringLiteral("%1 rows").arg(fixture.rowCount()));
    for (const QString &text : systemTexts(fixture)) {
        if (!text.isEmpty())
            pieces.append(text);
    }
    if (canChooseRates(fixture))
        pieces.append(QStringLiteral("rates"));
    const QStringList empty{QStringLiteral("No Controller connected or detected."),
                            QStringLiteral("No Device connected or detected.")};
    const QStringList shown = placeholders(fixture);
    if (pieces.isEmpty() && shown == empty)
        return operatorview::kNothing;
    return (pieces + shown).join(QStringLiteral(", "));
}

QString windowText(const QWidget &window)
{
    QString text = window.windowTitle();
    if (text.isEmpty())
        text = QString::fromLatin1(window.metaObject()->className());
    if (const auto *box = qobject_cast<const QMessageBox *>(&window))
        text += QStringLiteral(": ") + box->text();
    return window.isModal() ? text + QStringLiteral(" (modal)") : text;
}

class Comparison
{
public:
    void check(const QString &place, const QString &shown, const QString &wanted)
    {
        if (shown != wanted)
            m_found.append(QStringLiteral("%1: \"%2\", not \"%3\"").arg(place, shown, wanted));
    }

    /// A text that begins with a number, as in "12.03 V".
    void checkNear(const QString &place, const QString &shown, double wanted, double swing)
    {
        const double number = shown.section(QLatin1Char(' '), 0, 0).toDouble();
        if (shown.isEmpty() || std::abs(number - wanted) > swing)
            m_found.append(QStringLiteral("%1: \"%2\", not about %3").arg(place, shown).arg(wanted));
    }

    QStringList found() const { return m_found; }

private:
    QStringList m_found;
};

} // namespace

const QString operatorview::kNothing = QStringLiteral("nothing of the chain");
const QString operatorview::kSeparator = QStringLiteral(" | ");

QString operatorview::sight(const SystemFixture &fixture)
{
    // What was just put into the window comes on the screen by a posted call.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    const QStringList pieces{lamp(fixture, "connectionLamp"),
                             fixture.statusBox().trimmed() + QLatin1Char(' ') + lamp(fixture, "statusBox"),
                             fixture.statusText(), shownOfTheChain(fixture)};
    return (pieces + windows(fixture)).join(operatorview::kSeparator);
}

QStringList operatorview::windows(const SystemFixture &fixture)
{
    QStringList texts;
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget != fixture.window())
            texts.append(windowText(*widget));
    }
    texts.sort();
    return texts;
}

QStringList operatorview::deadButtons(const SystemFixture &fixture)
{
    QStringList dead;
    for (const char *name : {"configButton", "systemReportButton", "helpButton", "bitrateConfigBtn",
                             "tvxGateway", "loadPreselBtn", "loadPreselBtn_off"}) {
        const auto *button = childByName<QPushButton>(fixture.window(), name);
        if (!button->isEnabled() || !button->isVisible())
            dead.append(QString::fromLatin1(name));
    }
    return dead;
}

int operatorview::reportedModules(const SystemFixture &fixture)
{
    return fixture.app->moduleConfig()->reportDialog()->findChild<SensorModel *>()->rowCount();
}

QStringList operatorview::differences(const SystemFixture &fixture)
{
    Comparison comparison;
    const sim::Chain &chain = fixture.device->chain();
    comparison.check(QStringLiteral("controller"), fixture.controllerText("label_SerialNumber"),
                     QStringLiteral("S/N ") + chain.controller.identity.serial);
    comparison.check(QStringLiteral("rows"), QString::number(fixture.rowCount()),
                     QString::number(chain.modules.size()));
    for (int index = 0; index < qMin(fixture.rowCount(), int(chain.modules.size())); ++index) {
        const sim::Module &module = chain.module(index + 1);
        const QString place = QStringLiteral("row %1 ").arg(index + 1);
        const auto text = [&](const char *name) { return fixture.rowText(index, name); };
        comparison.check(place + "serial number", text("label_SnVersion"), module.identity.serial);
        comparison.checkNear(place + "voltage", text("label_Voltage"), module.health.volts, kVoltsSwing);
        comparison.checkNear(place + "temperature", text("label_Temperature"), module.health.celsius,
                             kCelsiusSwing);
        comparison.check(place + "self-test", text("label_SelftestSt"),
                         module.health.selftest == 0
                             ? QStringLiteral("O.K.")
                             : QString::asprintf("0x%02X", unsigned(module.health.selftest)));
    }
    comparison.check(QStringLiteral("system"), systemTexts(fixture).join(QLatin1Char(' ')),
                     QStringList{chain.system.bitRate(), chain.system.samplingRate(),
                                 chain.system.poweringMode, chain.system.dataTransmission}
                         .join(QLatin1Char(' ')));
    comparison.check(QStringLiteral("modules"), label(fixture, "label_ModulesNumber"),
                     QString::number(chain.modules.size()));
    comparison.check(QStringLiteral("channels"), label(fixture, "label_ChannelsNumber"),
                     QString::number(2 * chain.modules.size()));
    return comparison.found();
}
