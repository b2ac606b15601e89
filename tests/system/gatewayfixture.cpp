#include "gatewayfixture.h"

#include "sim/gatewaysetting.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLineEdit>
#include <QtTest>
#include <algorithm>

namespace {

const QString kMarked = QStringLiteral("border: 2px solid blue");
constexpr int kSerialDigits = 6;

QColor syncColour(const sim::DataRate &own, const sim::DataRate &chain)
{
    return own == chain ? QColor(Qt::green) : QColor(Qt::red);
}

} // namespace

GatewayFixture::GatewayFixture() = default;

void GatewayFixture::plugGateway(const sim::GatewayState &state)
{
    QString error;
    gateway = std::make_unique<sim::GatewayServer>(time, state);
    QVERIFY2(gateway->listen(m_gatewayPort, &error), qPrintable(error));
    m_gatewayPort = gateway->port();
    gateway->setChainRate([this] { return device->chain().system.dataRate(); });
}

void GatewayFixture::addGatewayFaults(const QString &rules)
{
    QString error;
    QVERIFY2(gateway->faults().parse(rules, &error), qPrintable(error));
}

void GatewayFixture::startWithGateway(const QString &chain)
{
    if (m_gatewayPort == 0)
        plugGateway();
    gatewayAddress = QStringLiteral("127.0.0.1:%1").arg(m_gatewayPort);
    startChain(chain);
}

void GatewayFixture::openPanel()
{
    QTest::mouseClick(childByName<QPushButton>(window(), "tvxGateway"), Qt::LeftButton);
    WAIT_VERIFY(panel());
    QVERIFY(QTest::qWaitForWindowActive(panel()));
}

void GatewayFixture::openConnectedPanel()
{
    openPanel();
    WAIT_VERIFY(isConnected());
    WAIT_COMPARE(differences(), QStringList());
}

QWidget *GatewayFixture::panelOrHidden() const
{
    return childByName<QDialog>(window(), "gateway");
}

QWidget *GatewayFixture::findPart(const char *name, const QMetaObject *type) const
{
    QWidget *found = nullptr;
    for (QWidget *widget : panelOrHidden()->findChildren<QWidget *>(QString::fromLatin1(name))) {
        if (widget->window() != panelOrHidden() || !widget->metaObject()->inherits(type))
            continue;
        if (found)
            qFatal("more than one part of the panel is named %s", name);
        found = widget;
    }
    if (!found)
        qFatal("no part of the panel is named %s", name);
    return found;
}

QString GatewayFixture::partText(const char *name) const
{
    return part<QWidget>(name)->property("text").toString();
}

void GatewayFixture::clickPart(const char *name) const
{
    QTest::mouseClick(part<QWidget>(name), Qt::LeftButton);
}

void GatewayFixture::answerDialog(const char *dialog, const QString &button) const
{
    WAIT_VERIFY(openDialog(dialog));
    for (auto *candidate : openDialog(dialog)->findChildren<QPushButton *>()) {
        if (candidate->isVisible() && candidate->text().remove(QLatin1Char('&')) == button) {
            QTest::mouseClick(candidate, Qt::LeftButton);
            WAIT_VERIFY(!openDialog(dialog));
            return;
        }
    }
    QFAIL(qPrintable(button + QStringLiteral(" is missing")));
}

void GatewayFixture::typeInto(const char *dialog, const char *edit, const QString &text) const
{
    WAIT_VERIFY(openDialog(dialog));
    auto *field = childByName<QLineEdit>(openDialog(dialog), edit);
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

QColor GatewayFixture::lampColour(const char *name) const
{
    return part<QLineEdit>(name)->palette().color(QPalette::Active, QPalette::Base);
}

QString GatewayFixture::markedCell() const
{
    QStringList marked;
    for (const auto *button : part<QWidget>("rateTable")->findChildren<QPushButton *>()) {
        if (button->styleSheet().contains(kMarked))
            marked.append(button->objectName());
    }
    return marked.join(QLatin1Char(' '));
}

QStringList GatewayFixture::differences() const
{
    const sim::GatewayState &state = gateway->state();
    QStringList found;
    const auto check = [&found](const char *name, const QString &shown, const QString &wanted) {
        if (shown != wanted)
            found.append(QStringLiteral("%1: %2, not %3").arg(QLatin1String(name), shown, wanted));
    };
    const auto checkText = [&](const char *name, const QString &wanted) {
        check(name, partText(name), wanted);
    };
    const auto checkIndex = [&](const char *name, int wanted) {
        check(name, QString::number(part<QComboBox>(name)->currentIndex()), QString::number(wanted));
    };
    const auto checkChoice = [&](const char *yes, const char *no, bool wanted) {
        const char *checked = wanted ? yes : no;
        check(checked, part<QAbstractButton>(checked)->isChecked() ? "on" : "off", "on");
    };
    checkText("GtwVersion", state.version);
    checkText("SerialNo", state.serial.rightJustified(kSerialDigits, QLatin1Char('0')));
    checkText("extIpAddr", state.extAddress);
    checkText("extPort", state.extPort);
    checkText("minBox", state.minimumSamples);
    checkText("maxBox", state.maximumSamples);
    checkText("PTPStateLineEdit",
              state.ptpMode == QLatin1String("0") ? QStringLiteral("OFF") : state.ptpState);
    checkIndex("comboMode", sim::gatewayModes().indexOf(state.mode));
    checkIndex("comboSimultn", state.simulation.toInt());
    checkIndex("comboActivCOM", state.activeCom.toInt());
    checkIndex("comboPTP", state.ptpMode.toInt());
    checkIndex("comboBoxDataPtcl", state.dataProtocol == QLatin1String("ZRT-1") ? 0 : 1);
    checkChoice("radioBigEndn", "radioLitleEndn", state.endian == QLatin1String("B"));
    checkChoice("radio16Bit", "radio18Bit", state.dataLength == QLatin1String("16"));
    checkChoice("unsignedInt", "twoComp", state.dataFormat == QLatin1String("U"));
    check("marked cell", markedCell(), state.rate.channels + QLatin1Char(',') + state.rate.bitRate);
    check("PCM_Led", lampColour("PCM_Led").name(),
          syncColour(state.rate, device->chain().system.dataRate()).name());
    return found;
}

QStringList GatewayFixture::lines() const
{
    QStringList lines;
    for (const QByteArray &line : gateway->receivedLines()) {
        if (line != "#?" && !line.startsWith("#030_"))
            lines.append(QString::fromLatin1(line));
    }
    return lines;
}

int GatewayFixture::clockSettings() const
{
    const auto &all = gateway->receivedLines();
    return static_cast<int>(std::count_if(all.cbegin(), all.cend(),
                                          [](const QByteArray &line) { return line.startsWith("#030_"); }));
}

QString GatewayFixture::dialogue() const
{
    return part<QWidget>("RxBox")->property("plainText").toString();
}

void GatewayFixture::waitUntilPolled(int clockSettings)
{
    WAIT_COMPARE(this->clockSettings(), clockSettings);
    WAIT_COMPARE(gateway->receivedLines().last(), QByteArray("#?"));
    WAIT_VERIFY(dialogue().lastIndexOf(QStringLiteral("#S;")) > dialogue().lastIndexOf(QStringLiteral("#?")));
}

void GatewayFixture::nextPoll(std::chrono::milliseconds by)
{
    const int requests = statusRequests();
    const int shown = dialogue().count(QStringLiteral("#S;"));
    time.skip(by);
    WAIT_COMPARE(statusRequests(), requests + 1);
    WAIT_VERIFY(dialogue().count(QStringLiteral("#S;")) > shown);
}
