#include "portlisterfixture.h"
#include "support/messagecatcher.h"

#include <QButtonGroup>
#include <QLabel>
#include <QtTest>

/// What stands in the dialog and how its controls behave.
class TstPortLister : public PortListerFixture
{
    Q_OBJECT

private slots:
    void windowIsAsAgreed();
    void textsAreAsAgreed_data();
    void textsAreAsAgreed();
    void fieldsBeginAsAgreed();
    void boxesAreExclusive();
    void controlsAreNamed();
    void tabOrderFollowsReadingOrder();
    void versionIsKept();

    void numberFieldLetsThrough_data();
    void numberFieldLetsThrough();
    void clickOnABoxEnablesItsControls();
    void buttonClickedSetsTheControls();
    void portFieldIsNeverEnabled();
    void focusGoesToTheNumber();
};

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

void TstPortLister::versionIsKept()
{
    QCOMPARE(m_lister->version(), QStringLiteral("V_01.00"));
    const auto labels = m_lister->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        QVERIFY(!label->text().contains(m_lister->version()));
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

void TstPortLister::buttonClickedSetsTheControls()
{
    // The group's agreed signal, and no other one, is what the controls follow.
    auto *group = child<QButtonGroup>("settingTypeGroup");
    button("checkBoxGateway")->setChecked(true);
    emit group->idClicked(0);
    QVERIFY(!edit("ipAddrBox")->isEnabled());
    QVERIFY(QMetaObject::invokeMethod(group, "buttonClicked", Q_ARG(int, 0)));
    QVERIFY(edit("ipAddrBox")->isEnabled());
    QVERIFY(!edit("comBox")->isEnabled());
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

QTEST_MAIN(TstPortLister)
#include "tst_portlister.moc"
