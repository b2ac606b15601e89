#include "portlisterfixture.h"

#include <QButtonGroup>
#include <QtTest>

/// The link kind and the server of the settings file.
class TstPortListerMode : public PortListerFixture
{
    Q_OBJECT

private slots:
    void modeOfTheFileIsActivated_data();
    void modeOfTheFileIsActivated();
    void modeIsToldBeforeTheControlsFollow();
    void activationClicksTheGroup();
    void unknownModeKeepsTheChoiceOfTheUser();
    void serverOfTheFileIsShown();
};

void TstPortListerMode::modeOfTheFileIsActivated_data()
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

void TstPortListerMode::modeOfTheFileIsActivated()
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

void TstPortListerMode::modeIsToldBeforeTheControlsFollow()
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

void TstPortListerMode::activationClicksTheGroup()
{
    auto *group = child<QButtonGroup>("settingTypeGroup");
    // By its text, since the newer Qt warns of the name.
    QSignalSpy agreed(group, SIGNAL(buttonClicked(int)));
    QSignalSpy newer(group, &QButtonGroup::idClicked);
    m_lister->Slot_ActivateMode(Comm_Type::Serial);
    QCOMPARE(agreed.size(), 1);
    QCOMPARE(agreed.first().first().toInt(), 0);
    QCOMPARE(newer.size(), 0);
}

void TstPortListerMode::unknownModeKeepsTheChoiceOfTheUser()
{
    m_lister->Slot_ActivateMode(Comm_Type::Ethernet);
    m_lister->Slot_ActivateMode(static_cast<Comm_Type>(9));
    m_lister->on_openBtn_clicked();
    QCOMPARE(m_network.size(), 1);
    QCOMPARE(m_network.at(0).commType, Comm_Type::Ethernet);
}

void TstPortListerMode::serverOfTheFileIsShown()
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

QTEST_MAIN(TstPortListerMode)
#include "tst_portlistermode.moc"
