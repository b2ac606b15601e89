#include "settings/portlister.h"

#include "portfolder.h"
#include "settings/comconfigbox.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <memory>

using model_Namespace::Settings;

namespace {

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char('|'));
}

/// The dialog's own record after construction.
Settings freshRecord()
{
    Settings settings;
    settings.dataBits = 8;
    settings.parity = 2;
    settings.baudRate = 115200;
    settings.stopBits = 1;
    settings.serialConfig = QStringLiteral("115200,E,8,1");
    return settings;
}

} // namespace

class TstPortLister : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void windowIsAsAgreed();
    void textsAreAsAgreed_data();
    void textsAreAsAgreed();
    void fieldsBeginAsAgreed();
    void boxesAreExclusive();
    void controlsAreNamed();
    void tabOrderFollowsReadingOrder();

    void surveyComesEveryTwoAndAHalfSeconds();
    void surveyRunsWhileTheDialogIsHidden();
    void unpluggedPortDisappears();
    void portBeyondTheTableIsLoggedAtEachSurvey();
    void colourOfThePortsStays();

    void numberFieldLetsThrough_data();
    void numberFieldLetsThrough();

    void emptyNumberSelectsCom4();
    void emptyNumberSelectsCom4AndNotTheLastPort();
    void typedNumberIsSelected();
    void number999IsSelected();
    void blanksAroundTheNumberAreDropped();
    void serialParametersComeFromTheBox();
    void emptyParametersAreReplacedByTheDefaults();
    void emptyAddressSelectsTheDefault();
    void typedAddressIsSelected();
    void portIsAlways7777();
    void signalComesBeforeTheDialogHides_data();
    void signalComesBeforeTheDialogHides();
    void saveBoxHasNoInfluence();
    void cancelHidesAndSelectsNothing();
    void escapeHidesFromEveryControl();

    void returnInTheNumberFieldSelectsOnce_data();
    void returnInTheNumberFieldSelectsOnce();
    void returnElsewhereSelectsOnce_data();
    void returnElsewhereSelectsOnce();
    void returnOnCancelSelectsNothing();

    void clickOnABoxEnablesItsControls();
    void portFieldIsNeverEnabled();
    void focusGoesToTheNumber();

    void pressOnTheParametersOpensTheBox_data();
    void pressOnTheParametersOpensTheBox();
    void pressOnDisabledParametersOpensNothing();
    void abandonedBoxChangesNothing();
    void openedBoxIsModal();

    void parametersOfTheFileAreShown();
    void portWithoutNumberIsNotShown_data();
    void portWithoutNumberIsNotShown();
    void rejectedParametersChangeNothing_data();
    void rejectedParametersChangeNothing();
    void confirmedBoxIsTakenOver();
    void flowControlAndServerSurviveTheBox();

    void modeOfTheFileIsActivated_data();
    void modeOfTheFileIsActivated();
    void modeIsToldBeforeTheControlsFollow();
    void activationClicksTheGroup();
    void unknownModeKeepsTheChoiceOfTheUser();
    void serverOfTheFileIsShown();
    void versionIsKept();

private:
    template <typename T>
    T *child(const char *name) const
    {
        return m_lister->findChild<T *>(QString::fromLatin1(name));
    }
    QLineEdit *edit(const char *name) const { return child<QLineEdit>(name); }
    QAbstractButton *button(const char *name) const { return child<QAbstractButton>(name); }
    QString number(int n) const
    {
        return child<QLabel>(qPrintable(QStringLiteral("portNumber%1").arg(n)))->text();
    }

    void show();
    void click(const char *name) { QTest::mouseClick(button(name), Qt::LeftButton, {}, QPoint(8, 8)); }

    /// Does this while the box of the parameters runs.
    void whenBoxRuns(const std::function<void(ComConfigBox &)> &action);
    void resetSignals();

    PortFolder m_ports;
    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<PortLister> m_lister;
    QList<Settings> m_serial;
    QList<Settings> m_network;
    QList<Settings> m_activated;
};

void TstPortLister::init()
{
    m_time = std::make_unique<VirtualTime>();
    m_lister = std::make_unique<PortLister>(*m_time, m_ports.directory());
    resetSignals();
    connect(m_lister.get(), &PortLister::setSerialPortConfig, this,
            [this](const Settings &settings) { m_serial.append(settings); });
    connect(m_lister.get(), &PortLister::setNetworkConfig, this,
            [this](const Settings &settings) { m_network.append(settings); });
    connect(m_lister.get(), &PortLister::Signal_ActivateMode, this,
            [this](const Settings &settings) { m_activated.append(settings); });
}

void TstPortLister::cleanup()
{
    m_lister.reset();
    m_time.reset();
}

void TstPortLister::resetSignals()
{
    m_serial.clear();
    m_network.clear();
    m_activated.clear();
}

void TstPortLister::show()
{
    m_lister->show();
    QVERIFY(QTest::qWaitForWindowActive(m_lister.get()));
}

void TstPortLister::whenBoxRuns(const std::function<void(ComConfigBox &)> &action)
{
    auto *box = child<ComConfigBox>("comConfigBox");
    QTimer::singleShot(0, box, [box, action] { action(*box); });
}

void TstPortLister::windowIsAsAgreed()
{
    QCOMPARE(m_lister->windowTitle(), QStringLiteral("Communication Settings"));
    QVERIFY(m_lister->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(m_lister->windowType(), Qt::Dialog);
    show();
    QCOMPARE(m_lister->width(), 650);
    QVERIFY(m_lister->height() >= 450 && m_lister->height() <= 480);
    m_lister->resize(2000, 2000);
    QCOMPARE(m_lister->size(), QSize(650, 480));
    m_lister->resize(1, 1);
    QCOMPARE(m_lister->size(), QSize(650, 450));
}

void TstPortLister::textsAreAsAgreed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("text");
    QTest::newRow("heading") << "secondLabel"
                             << "text"
                             << "Available COM-PORTs:";
    QTest::newRow("serial heading") << "labelCOMPort"
                                    << "text"
                                    << "COM Port Properties";
    QTest::newRow("gateway heading") << "labelZRTGatewy"
                                     << "text"
                                     << "ZRT Gateway Properties";
    QTest::newRow("prefix") << "labelCom"
                            << "text"
                            << "COM";
    QTest::newRow("number") << "comBox"
                            << "placeholderText"
                            << "1-150";
    QTest::newRow("configure") << "labelConfigure"
                               << "text"
                               << "Configure";
    QTest::newRow("parameters") << "portConfigBox"
                                << "placeholderText"
                                << "Click here to configure";
    QTest::newRow("address") << "ipLabel"
                             << "text"
                             << "IP Address";
    QTest::newRow("port") << "portLabel"
                          << "text"
                          << "Port";
    QTest::newRow("serial") << "checkBoxComprt"
                            << "text"
                            << "use COM Port";
    QTest::newRow("gateway") << "checkBoxGateway"
                             << "text"
                             << "use Gateway";
    QTest::newRow("save") << "saveSettings"
                          << "text"
                          << "Save Settings";
    QTest::newRow("select") << "openBtn"
                            << "text"
                            << "Select";
    QTest::newRow("cancel") << "cancelBtn"
                            << "text"
                            << "Cancel";
}

void TstPortLister::textsAreAsAgreed()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QString, text);
    const auto *widget = m_lister->findChild<QWidget *>(name);
    QVERIFY(widget);
    QCOMPARE(widget->property(qPrintable(property)).toString(), text);
}

void TstPortLister::fieldsBeginAsAgreed()
{
    QCOMPARE(edit("comBox")->text(), QString());
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("115200,E,8,1"));
    QCOMPARE(edit("ipAddrBox")->text(), QString());
    QCOMPARE(edit("portBox")->text(), QStringLiteral("7777"));
    QVERIFY(edit("comBox")->isEnabled());
    QVERIFY(edit("portConfigBox")->isEnabled());
    QVERIFY(edit("portConfigBox")->isReadOnly());
    QVERIFY(!edit("ipAddrBox")->isEnabled());
    QVERIFY(!edit("portBox")->isEnabled());
    QVERIFY(button("checkBoxComprt")->isChecked());
    QVERIFY(!button("checkBoxGateway")->isChecked());
    QVERIFY(button("saveSettings")->isChecked());
    QCOMPARE(number(1), QStringLiteral("__"));
    QCOMPARE(number(150), QStringLiteral("__"));
}

void TstPortLister::boxesAreExclusive()
{
    const auto *group = child<QButtonGroup>("settingTypeGroup");
    QVERIFY(group);
    QVERIFY(group->exclusive());
    QCOMPARE(group->buttons().size(), 2);
    show();
    click("checkBoxGateway");
    QVERIFY(button("checkBoxGateway")->isChecked());
    QVERIFY(!button("checkBoxComprt")->isChecked());
    click("checkBoxGateway");
    QVERIFY(button("checkBoxGateway")->isChecked());
    click("checkBoxComprt");
    QVERIFY(!button("checkBoxGateway")->isChecked());
    QVERIFY(button("checkBoxComprt")->isChecked());
}

void TstPortLister::controlsAreNamed()
{
    QStringList accessibleNames;
    for (const char *name : {"comBox", "portConfigBox", "ipAddrBox", "portBox", "checkBoxComprt",
                             "checkBoxGateway", "saveSettings", "openBtn", "cancelBtn"}) {
        const auto *control = child<QWidget>(name);
        QVERIFY2(control, name);
        QVERIFY2(!control->accessibleName().isEmpty(), name);
        accessibleNames.append(control->accessibleName());
    }
    QCOMPARE(accessibleNames.removeDuplicates(), 0);
    QCOMPARE(child<QLabel>("labelCom")->buddy(), edit("comBox"));
    QCOMPARE(child<QLabel>("labelConfigure")->buddy(), edit("portConfigBox"));
    QCOMPARE(child<QLabel>("ipLabel")->buddy(), edit("ipAddrBox"));
    QCOMPARE(child<QLabel>("portLabel")->buddy(), edit("portBox"));
}

void TstPortLister::tabOrderFollowsReadingOrder()
{
    show();
    const auto order = [this](const char *first) {
        child<QWidget>(first)->setFocus();
        QStringList names;
        for (int i = 0; i < 7; ++i) {
            names.append(m_lister->focusWidget()->objectName());
            QTest::keyClick(m_lister->focusWidget(), Qt::Key_Tab);
        }
        return names;
    };
    QCOMPARE(order("checkBoxComprt"),
             words("checkBoxComprt|comBox|portConfigBox|saveSettings|openBtn|cancelBtn|"
                   "checkBoxComprt"));
    click("checkBoxGateway");
    QCOMPARE(order("checkBoxGateway"),
             words("checkBoxGateway|ipAddrBox|saveSettings|openBtn|cancelBtn|checkBoxGateway|ipAddrBox"));
}

void TstPortLister::surveyComesEveryTwoAndAHalfSeconds()
{
    QVERIFY(m_ports.plug(QStringLiteral("COM7")));
    m_time->advance(2499);
    QCOMPARE(number(7), QStringLiteral("__"));
    m_time->advance(1);
    QCOMPARE(number(7), QStringLiteral("7"));
    QVERIFY(m_ports.plug(QStringLiteral("COM150")));
    m_time->advance(2499);
    QCOMPARE(number(150), QStringLiteral("__"));
    m_time->advance(1);
    QCOMPARE(number(150), QStringLiteral("150"));
    QCOMPARE(number(7), QStringLiteral("7"));
    QVERIFY(m_ports.unplug(QStringLiteral("COM7")));
    QVERIFY(m_ports.unplug(QStringLiteral("COM150")));
}

void TstPortLister::surveyRunsWhileTheDialogIsHidden()
{
    show();
    m_lister->hide();
    QVERIFY(m_ports.plug(QStringLiteral("COM26")));
    m_time->advance(2500);
    QCOMPARE(number(26), QStringLiteral("26"));
    QVERIFY(m_ports.unplug(QStringLiteral("COM26")));
}

void TstPortLister::unpluggedPortDisappears()
{
    QVERIFY(m_ports.plug(QStringLiteral("COM3")));
    m_lister->Slot_AvailblePorts();
    QCOMPARE(number(3), QStringLiteral("3"));
    QVERIFY(m_ports.unplug(QStringLiteral("COM3")));
    m_lister->Slot_AvailblePorts();
    QCOMPARE(number(3), QStringLiteral("__"));
}

void TstPortLister::portBeyondTheTableIsLoggedAtEachSurvey()
{
    QVERIFY(m_ports.plug(QStringLiteral("COM151")));
    MessageCatcher log;
    m_time->advance(2500);
    QCOMPARE(log.lines(), QStringList{QStringLiteral("Ports more than 150")});
    m_time->advance(2500);
    QCOMPARE(log.lines().size(), 2);
    QVERIFY(m_ports.unplug(QStringLiteral("COM151")));
    m_time->advance(2500);
    QCOMPARE(log.lines().size(), 2);
}

void TstPortLister::colourOfThePortsStays()
{
    const auto *label = child<QLabel>("portNumber3");
    const QPalette before = label->palette();
    QVERIFY(m_ports.plug(QStringLiteral("COM3")));
    m_lister->Slot_AvailblePorts();
    QCOMPARE(label->palette(), before);
    QCOMPARE(label->styleSheet(), QString());
    QVERIFY(m_ports.unplug(QStringLiteral("COM3")));
}

void TstPortLister::numberFieldLetsThrough_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("1") << "1"
                       << "1";
    QTest::newRow("150") << "150"
                         << "150";
    QTest::newRow("151, although the field asks for less") << "151"
                                                           << "151";
    QTest::newRow("999") << "999"
                         << "999";
    QTest::newRow("four digits") << "1000"
                                 << "100";
    QTest::newRow("zero") << "0"
                          << "";
    QTest::newRow("leading zero") << "05"
                                  << "5";
    QTest::newRow("letters") << "COM5"
                             << "5";
    QTest::newRow("sign") << "-5"
                          << "5";
    QTest::newRow("blank") << " 5 "
                           << "5";
}

void TstPortLister::numberFieldLetsThrough()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    show();
    QTest::keyClicks(edit("comBox"), typed);
    QCOMPARE(edit("comBox")->text(), shown);
}

void TstPortLister::emptyNumberSelectsCom4()
{
    show();
    click("openBtn");
    Settings expected = freshRecord();
    expected.portName = QStringLiteral("COM4");
    expected.commType = Comm_Type::Serial;
    QCOMPARE(m_serial, QList<Settings>{expected});
    QCOMPARE(m_network, QList<Settings>());
    QCOMPARE(m_activated, QList<Settings>());
}

void TstPortLister::emptyNumberSelectsCom4AndNotTheLastPort()
{
    show();
    QTest::keyClicks(edit("comBox"), QStringLiteral("12"));
    click("openBtn");
    show();
    edit("comBox")->clear();
    click("openBtn");
    QCOMPARE(m_serial.size(), 2);
    QCOMPARE(m_serial.at(0).portName, QStringLiteral("COM12"));
    QCOMPARE(m_serial.at(1).portName, QStringLiteral("COM4"));
}

void TstPortLister::typedNumberIsSelected()
{
    show();
    QTest::keyClicks(edit("comBox"), QStringLiteral("33"));
    click("openBtn");
    QCOMPARE(m_serial.value(0).portName, QStringLiteral("COM33"));
    QVERIFY(!m_lister->isVisible());
}

void TstPortLister::number999IsSelected()
{
    show();
    QTest::keyClicks(edit("comBox"), QStringLiteral("999"));
    click("openBtn");
    QCOMPARE(m_serial.value(0).portName, QStringLiteral("COM999"));
}

void TstPortLister::blanksAroundTheNumberAreDropped()
{
    edit("comBox")->setText(QStringLiteral(" 8 "));
    m_lister->on_openBtn_clicked();
    QCOMPARE(m_serial.value(0).portName, QStringLiteral("COM8"));
}

void TstPortLister::serialParametersComeFromTheBox()
{
    Settings chosen = freshRecord();
    chosen.baudRate = 9600;
    chosen.parity = 0;
    chosen.dataBits = 7;
    chosen.stopBits = 2;
    chosen.serialConfig = QStringLiteral("9600:N,7,2");
    m_lister->acceptConfig(chosen);
    m_lister->on_openBtn_clicked();
    chosen.portName = QStringLiteral("COM4");
    chosen.commType = Comm_Type::Serial;
    QCOMPARE(m_serial, QList<Settings>{chosen});
}

void TstPortLister::emptyParametersAreReplacedByTheDefaults()
{
    Settings empty;
    m_lister->acceptConfig(empty);
    QCOMPARE(edit("portConfigBox")->text(), QString());
    m_lister->on_openBtn_clicked();
    Settings expected = freshRecord();
    expected.portName = QStringLiteral("COM4");
    expected.commType = Comm_Type::Serial;
    QCOMPARE(m_serial, QList<Settings>{expected});
}

void TstPortLister::emptyAddressSelectsTheDefault()
{
    show();
    click("checkBoxGateway");
    click("openBtn");
    Settings expected = freshRecord();
    expected.ipAddress = QStringLiteral("192.168.0.62");
    expected.tcpPort = QStringLiteral("7777");
    expected.commType = Comm_Type::Ethernet;
    QCOMPARE(m_network, QList<Settings>{expected});
    QCOMPARE(m_serial, QList<Settings>());
}

void TstPortLister::typedAddressIsSelected()
{
    show();
    click("checkBoxGateway");
    QTest::keyClicks(edit("ipAddrBox"), QStringLiteral("10.1.2.3"));
    click("openBtn");
    QCOMPARE(m_network.size(), 1);
    QCOMPARE(m_network.at(0).ipAddress, QStringLiteral("10.1.2.3"));
    QVERIFY(!m_lister->isVisible());
}

void TstPortLister::portIsAlways7777()
{
    m_lister->settingsServer(QStringLiteral("10.1.2.3"), QStringLiteral("9000"));
    button("checkBoxGateway")->setChecked(true);
    edit("portBox")->setText(QStringLiteral("8000"));
    m_lister->on_openBtn_clicked();
    QCOMPARE(m_network.value(0).tcpPort, QStringLiteral("7777"));
    QCOMPARE(m_network.value(0).ipAddress, QStringLiteral("10.1.2.3"));
}

void TstPortLister::signalComesBeforeTheDialogHides_data()
{
    QTest::addColumn<QString>("box");
    QTest::newRow("serial") << "checkBoxComprt";
    QTest::newRow("gateway") << "checkBoxGateway";
}

void TstPortLister::signalComesBeforeTheDialogHides()
{
    QFETCH(QString, box);
    show();
    click(qPrintable(box));
    QList<bool> visible;
    const auto note = [&] { visible.append(m_lister->isVisible()); };
    connect(m_lister.get(), &PortLister::setSerialPortConfig, this, note);
    connect(m_lister.get(), &PortLister::setNetworkConfig, this, note);
    click("openBtn");
    QCOMPARE(visible, QList<bool>{true});
    QVERIFY(!m_lister->isVisible());
}

void TstPortLister::saveBoxHasNoInfluence()
{
    show();
    click("openBtn");
    show();
    click("saveSettings");
    QVERIFY(!button("saveSettings")->isChecked());
    click("openBtn");
    QCOMPARE(m_serial.size(), 2);
    QCOMPARE(m_serial.at(0), m_serial.at(1));
}

void TstPortLister::cancelHidesAndSelectsNothing()
{
    show();
    QTest::keyClicks(edit("comBox"), QStringLiteral("9"));
    click("cancelBtn");
    QVERIFY(!m_lister->isVisible());
    QCOMPARE(m_serial.size() + m_network.size(), 0);
}

void TstPortLister::escapeHidesFromEveryControl()
{
    for (const char *name :
         {"comBox", "portConfigBox", "checkBoxComprt", "saveSettings", "openBtn", "cancelBtn"}) {
        show();
        child<QWidget>(name)->setFocus();
        QCOMPARE(m_lister->focusWidget()->objectName(), QString::fromLatin1(name));
        QTest::keyClick(m_lister->focusWidget(), Qt::Key_Escape);
        QVERIFY2(!m_lister->isVisible(), name);
    }
    QCOMPARE(m_serial.size() + m_network.size(), 0);
}

void TstPortLister::returnInTheNumberFieldSelectsOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("port");
    QTest::newRow("number") << "17"
                            << "COM17";
    QTest::newRow("empty") << ""
                           << "COM4";
    QTest::newRow("not acceptable") << "0"
                                    << "COM0";
}

void TstPortLister::returnInTheNumberFieldSelectsOnce()
{
    QFETCH(QString, text);
    QFETCH(QString, port);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        resetSignals();
        show();
        m_lister->Slot_ComportFocus();
        edit("comBox")->setText(text);
        QTest::keyClick(m_lister->focusWidget(), key);
        QCOMPARE(m_serial.size(), 1);
        QCOMPARE(m_serial.at(0).portName, port);
        QVERIFY(!m_lister->isVisible());
    }
}

void TstPortLister::returnElsewhereSelectsOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isSerial");
    QTest::newRow("parameters") << "portConfigBox" << true;
    QTest::newRow("serial box") << "checkBoxComprt" << true;
    QTest::newRow("save box") << "saveSettings" << true;
    QTest::newRow("select") << "openBtn" << true;
    QTest::newRow("gateway box") << "checkBoxGateway" << false;
    QTest::newRow("address") << "ipAddrBox" << false;
}

void TstPortLister::returnElsewhereSelectsOnce()
{
    QFETCH(QString, name);
    QFETCH(bool, isSerial);
    show();
    click(isSerial ? "checkBoxComprt" : "checkBoxGateway");
    m_lister->findChild<QWidget *>(name)->setFocus();
    QCOMPARE(m_lister->focusWidget()->objectName(), name);
    QTest::keyClick(m_lister->focusWidget(), Qt::Key_Return);
    QCOMPARE(m_serial.size(), isSerial ? 1 : 0);
    QCOMPARE(m_network.size(), isSerial ? 0 : 1);
}

void TstPortLister::returnOnCancelSelectsNothing()
{
    show();
    button("cancelBtn")->setFocus();
    QTest::keyClick(m_lister->focusWidget(), Qt::Key_Return);
    QVERIFY(!m_lister->isVisible());
    QCOMPARE(m_serial.size() + m_network.size(), 0);
}

void TstPortLister::clickOnABoxEnablesItsControls()
{
    show();
    click("checkBoxGateway");
    QVERIFY(!edit("comBox")->isEnabled());
    QVERIFY(!edit("portConfigBox")->isEnabled());
    QVERIFY(edit("ipAddrBox")->isEnabled());
    QVERIFY(!edit("portBox")->isEnabled());
    click("checkBoxComprt");
    QVERIFY(edit("comBox")->isEnabled());
    QVERIFY(edit("portConfigBox")->isEnabled());
    QVERIFY(!edit("ipAddrBox")->isEnabled());
    QVERIFY(!edit("portBox")->isEnabled());
    // By keyboard too.
    QTest::keyClick(button("checkBoxGateway"), Qt::Key_Space);
    QVERIFY(edit("ipAddrBox")->isEnabled());
}

void TstPortLister::portFieldIsNeverEnabled()
{
    for (const int mode : {1, 2, 0, 7}) {
        m_lister->Slot_ActivateMode(static_cast<Comm_Type>(mode));
        QVERIFY(!edit("portBox")->isEnabled());
        QCOMPARE(edit("portBox")->text(), QStringLiteral("7777"));
    }
}

void TstPortLister::focusGoesToTheNumber()
{
    MessageCatcher log;
    m_lister->Slot_ComportFocus();
    QCOMPARE(log.lines(), QStringList{QStringLiteral("**Com Box activated")});
    // Asked for before the dialog is shown, as the main window does.
    show();
    QCOMPARE(m_lister->focusWidget(), edit("comBox"));
    button("cancelBtn")->setFocus();
    m_lister->Slot_ComportFocus();
    QCOMPARE(m_lister->focusWidget(), edit("comBox"));
}

void TstPortLister::pressOnTheParametersOpensTheBox_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("space bar") << false;
}

void TstPortLister::pressOnTheParametersOpensTheBox()
{
    QFETCH(bool, byMouse);
    show();
    int runs = 0;
    whenBoxRuns([&runs](ComConfigBox &box) {
        runs += box.isVisible() ? 1 : 0;
        QTest::mouseClick(box.findChild<QAbstractButton *>(QStringLiteral("okButton")), Qt::LeftButton);
    });
    if (byMouse)
        QTest::mouseClick(edit("portConfigBox"), Qt::LeftButton);
    else
        QTest::keyClick(edit("portConfigBox"), Qt::Key_Space);
    QCOMPARE(runs, 1);
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("115200:E,8,1"));
    QVERIFY(m_lister->isVisible());
}

void TstPortLister::pressOnDisabledParametersOpensNothing()
{
    show();
    click("checkBoxGateway");
    auto *box = child<ComConfigBox>("comConfigBox");
    int runs = 0;
    whenBoxRuns([&runs](ComConfigBox &running) {
        runs += running.isVisible() ? 1 : 0;
        running.hide();
    });
    QTest::mousePress(edit("portConfigBox"), Qt::LeftButton);
    QTRY_COMPARE(box->isVisible(), false);
    QCOMPARE(runs, 0);
}

void TstPortLister::abandonedBoxChangesNothing()
{
    show();
    whenBoxRuns([](ComConfigBox &box) {
        box.findChildren<QAbstractButton *>().first()->click();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    QTest::mouseClick(edit("portConfigBox"), Qt::LeftButton);
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("115200,E,8,1"));
    QVERIFY(m_lister->isVisible());
}

void TstPortLister::openedBoxIsModal()
{
    bool isModal = false;
    whenBoxRuns([&isModal](ComConfigBox &box) {
        isModal = box.isModal();
        box.hide();
    });
    m_lister->portConfig();
    QVERIFY(isModal);
}

void TstPortLister::parametersOfTheFileAreShown()
{
    emit m_lister->updateConfig(words("PORT1|COM5|115200|E|8|1"));
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("115200:E,8,1"));
    QCOMPARE(edit("comBox")->text(), QStringLiteral("5"));
    QCOMPARE(m_serial.size() + m_network.size() + m_activated.size(), 0);

    emit m_lister->updateConfig(words("PORT1|COM77|9600|O|7|2"));
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("9600:O,7,2"));
    QCOMPARE(edit("comBox")->text(), QStringLiteral("77"));
    m_lister->Slot_ActivateMode(Comm_Type::Serial);
    Settings expected;
    expected.portName = QStringLiteral("COM77");
    expected.dataBits = 7;
    expected.parity = 3;
    expected.baudRate = 9600;
    expected.stopBits = 2;
    expected.serialConfig = QStringLiteral("9600:O,7,2");
    expected.commType = Comm_Type::Serial;
    QCOMPARE(m_activated, QList<Settings>{expected});
}

void TstPortLister::portWithoutNumberIsNotShown_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("shown");
    QTest::newRow("letters") << "LPT"
                             << "33";
    QTest::newRow("letters and a digit") << "LPT1"
                                         << "33";
    QTest::newRow("prefix alone") << "COM"
                                  << "33";
    QTest::newRow("empty") << ""
                           << "33";
    QTest::newRow("digit first") << "COM4x"
                                 << "4x";
}

void TstPortLister::portWithoutNumberIsNotShown()
{
    QFETCH(QString, port);
    QFETCH(QString, shown);
    edit("comBox")->setText(QStringLiteral("33"));
    Settings settings = freshRecord();
    settings.portName = port;
    settings.serialConfig = QStringLiteral("1200:E,8,1");
    m_lister->acceptDefaults(settings);
    QCOMPARE(edit("comBox")->text(), shown);
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("1200:E,8,1"));
    m_lister->Slot_ActivateMode(Comm_Type::Serial);
    QCOMPARE(m_activated.value(0).portName, port);
}

void TstPortLister::rejectedParametersChangeNothing_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::newRow("rate 9601") << words("PORT1|COM6|9601|E|8|1");
    QTest::newRow("parity") << words("PORT1|COM6|9600|X|8|1");
    QTest::newRow("data bits") << words("PORT1|COM6|9600|E|9|1");
    QTest::newRow("stop bits") << words("PORT1|COM6|9600|E|8|3");
    QTest::newRow("too short") << words("PORT1|COM6|");
}

void TstPortLister::rejectedParametersChangeNothing()
{
    QFETCH(QStringList, list);
    MessageCatcher log;
    emit m_lister->updateConfig(words("PORT1|COM5|115200|E|8|1"));
    m_lister->Slot_ActivateMode(Comm_Type::Serial);
    emit m_lister->updateConfig(list);
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("115200:E,8,1"));
    QCOMPARE(edit("comBox")->text(), QStringLiteral("5"));
    m_lister->Slot_ActivateMode(Comm_Type::Serial);
    QCOMPARE(m_activated.size(), 2);
    QCOMPARE(m_activated.at(1), m_activated.at(0));
}

void TstPortLister::confirmedBoxIsTakenOver()
{
    emit m_lister->updateConfig(words("PORT1|COM5|9600|O|7|2"));
    whenBoxRuns([](ComConfigBox &box) {
        QTest::mouseClick(box.findChild<QAbstractButton *>(QStringLiteral("okButton")), Qt::LeftButton);
    });
    m_lister->portConfig();
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("115200:E,8,1"));
    QCOMPARE(edit("comBox")->text(), QStringLiteral("5"));
    m_lister->on_openBtn_clicked();
    Settings expected = freshRecord();
    expected.portName = QStringLiteral("COM5");
    expected.serialConfig = QStringLiteral("115200:E,8,1");
    expected.commType = Comm_Type::Serial;
    QCOMPARE(m_serial, QList<Settings>{expected});
}

void TstPortLister::flowControlAndServerSurviveTheBox()
{
    m_lister->settingsServer(QStringLiteral("10.0.0.9"), QStringLiteral("5"));
    Settings other = freshRecord();
    other.flowControl = 3;
    other.ipAddress = QStringLiteral("1.1.1.1");
    other.tcpPort = QStringLiteral("1");
    other.commType = Comm_Type::Ethernet;
    m_lister->acceptDefaults(other);
    m_lister->Slot_ActivateMode(Comm_Type::None);
    Settings expected = freshRecord();
    expected.ipAddress = QStringLiteral("10.0.0.9");
    expected.tcpPort = QStringLiteral("5");
    QCOMPARE(m_activated, QList<Settings>{expected});
}

void TstPortLister::modeOfTheFileIsActivated_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("serialBefore");
    QTest::addColumn<bool>("serialAfter");
    QTest::newRow("TCP") << 1 << true << false;
    QTest::newRow("TCP again") << 1 << false << false;
    QTest::newRow("serial") << 2 << false << true;
    QTest::newRow("serial again") << 2 << true << true;
    QTest::newRow("none, serial stays") << 0 << true << true;
    QTest::newRow("none, gateway stays") << 0 << false << false;
    QTest::newRow("unknown, serial stays") << 3 << true << true;
    QTest::newRow("unknown, gateway stays") << -1 << false << false;
}

void TstPortLister::modeOfTheFileIsActivated()
{
    QFETCH(int, mode);
    QFETCH(bool, serialBefore);
    QFETCH(bool, serialAfter);
    button(serialBefore ? "checkBoxComprt" : "checkBoxGateway")->setChecked(true);
    m_lister->Slot_ActivateMode(static_cast<Comm_Type>(mode));
    QCOMPARE(button("checkBoxComprt")->isChecked(), serialAfter);
    QCOMPARE(button("checkBoxGateway")->isChecked(), !serialAfter);
    QCOMPARE(edit("comBox")->isEnabled(), serialAfter);
    QCOMPARE(edit("portConfigBox")->isEnabled(), serialAfter);
    QCOMPARE(edit("ipAddrBox")->isEnabled(), !serialAfter);
    Settings expected = freshRecord();
    expected.commType = static_cast<Comm_Type>(mode);
    QCOMPARE(m_activated, QList<Settings>{expected});
}

void TstPortLister::modeIsToldBeforeTheControlsFollow()
{
    bool wasEnabled = true;
    bool wasChecked = false;
    connect(m_lister.get(), &PortLister::Signal_ActivateMode, this, [&] {
        wasEnabled = edit("ipAddrBox")->isEnabled();
        wasChecked = button("checkBoxGateway")->isChecked();
    });
    m_lister->Slot_ActivateMode(Comm_Type::Ethernet);
    QVERIFY(!wasEnabled);
    QVERIFY(wasChecked);
    QVERIFY(edit("ipAddrBox")->isEnabled());
}

void TstPortLister::activationClicksTheGroup()
{
    QSignalSpy spy(child<QButtonGroup>("settingTypeGroup"), &QButtonGroup::idClicked);
    m_lister->Slot_ActivateMode(Comm_Type::Serial);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toInt(), 0);
}

void TstPortLister::unknownModeKeepsTheChoiceOfTheUser()
{
    m_lister->Slot_ActivateMode(Comm_Type::Ethernet);
    m_lister->Slot_ActivateMode(static_cast<Comm_Type>(9));
    m_lister->on_openBtn_clicked();
    QCOMPARE(m_network.size(), 1);
    QCOMPARE(m_network.at(0).commType, Comm_Type::Ethernet);
}

void TstPortLister::serverOfTheFileIsShown()
{
    m_lister->settingsServer(QStringLiteral("10.9.8.7"), QStringLiteral("1234"));
    QCOMPARE(edit("ipAddrBox")->text(), QStringLiteral("10.9.8.7"));
    QCOMPARE(edit("portBox")->text(), QStringLiteral("7777"));
    m_lister->Slot_ActivateMode(Comm_Type::Ethernet);
    QCOMPARE(m_activated.value(0).ipAddress, QStringLiteral("10.9.8.7"));
    QCOMPARE(m_activated.value(0).tcpPort, QStringLiteral("1234"));
    m_lister->settingsServer(QString(), QString());
    QCOMPARE(edit("ipAddrBox")->text(), QString());
}

void TstPortLister::versionIsKept()
{
    QCOMPARE(m_lister->version(), QStringLiteral("V_01.00"));
    const auto labels = m_lister->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        QVERIFY(!label->text().contains(m_lister->version()));
}

QTEST_MAIN(TstPortLister)
#include "tst_portlister.moc"
