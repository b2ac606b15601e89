#include "portlisterfixture.h"

#include <QTimer>
#include <QtTest>

/// Confirming and leaving the dialog.
class TstPortListerSelect : public PortListerFixture
{
    Q_OBJECT

private slots:
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
    void runEndsRejected_data();
    void runEndsRejected();

    void returnInTheNumberFieldSelectsOnce_data();
    void returnInTheNumberFieldSelectsOnce();
    void returnElsewhereSelectsOnce_data();
    void returnElsewhereSelectsOnce();
    void returnOnCancelSelectsNothing();
};

void TstPortListerSelect::emptyNumberSelectsCom4()
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

void TstPortListerSelect::emptyNumberSelectsCom4AndNotTheLastPort()
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

void TstPortListerSelect::typedNumberIsSelected()
{
    show();
    QTest::keyClicks(edit("comBox"), QStringLiteral("33"));
    click("openBtn");
    QCOMPARE(m_serial.value(0).portName, QStringLiteral("COM33"));
    QVERIFY(!m_lister->isVisible());
}

void TstPortListerSelect::number999IsSelected()
{
    show();
    QTest::keyClicks(edit("comBox"), QStringLiteral("999"));
    click("openBtn");
    QCOMPARE(m_serial.value(0).portName, QStringLiteral("COM999"));
}

void TstPortListerSelect::blanksAroundTheNumberAreDropped()
{
    edit("comBox")->setText(QStringLiteral(" 8 "));
    m_lister->on_openBtn_clicked();
    QCOMPARE(m_serial.value(0).portName, QStringLiteral("COM8"));
}

void TstPortListerSelect::serialParametersComeFromTheBox()
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

void TstPortListerSelect::emptyParametersAreReplacedByTheDefaults()
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

void TstPortListerSelect::emptyAddressSelectsTheDefault()
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

void TstPortListerSelect::typedAddressIsSelected()
{
    show();
    click("checkBoxGateway");
    QTest::keyClicks(edit("ipAddrBox"), QStringLiteral("10.1.2.3"));
    click("openBtn");
    QCOMPARE(m_network.size(), 1);
    QCOMPARE(m_network.at(0).ipAddress, QStringLiteral("10.1.2.3"));
    QVERIFY(!m_lister->isVisible());
}

void TstPortListerSelect::portIsAlways7777()
{
    m_lister->settingsServer(QStringLiteral("10.1.2.3"), QStringLiteral("9000"));
    button("checkBoxGateway")->setChecked(true);
    edit("portBox")->setText(QStringLiteral("8000"));
    m_lister->on_openBtn_clicked();
    QCOMPARE(m_network.value(0).tcpPort, QStringLiteral("7777"));
    QCOMPARE(m_network.value(0).ipAddress, QStringLiteral("10.1.2.3"));
}

void TstPortListerSelect::signalComesBeforeTheDialogHides_data()
{
    QTest::addColumn<QString>("box");
    QTest::newRow("serial") << "checkBoxComprt";
    QTest::newRow("gateway") << "checkBoxGateway";
}

void TstPortListerSelect::signalComesBeforeTheDialogHides()
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

void TstPortListerSelect::saveBoxHasNoInfluence()
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

void TstPortListerSelect::cancelHidesAndSelectsNothing()
{
    show();
    QTest::keyClicks(edit("comBox"), QStringLiteral("9"));
    click("cancelBtn");
    QVERIFY(!m_lister->isVisible());
    QCOMPARE(m_serial.size() + m_network.size(), 0);
}

void TstPortListerSelect::escapeHidesFromEveryControl()
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

void TstPortListerSelect::runEndsRejected_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Escape") << true;
    QTest::newRow("Cancel") << false;
}

void TstPortListerSelect::runEndsRejected()
{
    QFETCH(bool, byEscape);
    m_lister->setModal(true);
    bool ran = false;
    QTimer::singleShot(0, m_lister.get(), [&] {
        ran = m_lister->isVisible();
        edit("comBox")->setText(QStringLiteral("9"));
        if (byEscape)
            QTest::keyClick(edit("comBox"), Qt::Key_Escape);
        else
            click("cancelBtn");
    });
    QCOMPARE(m_lister->exec(), int(QDialog::Rejected));
    QVERIFY(ran);
    QVERIFY(!m_lister->isVisible());
    QCOMPARE(m_serial.size() + m_network.size(), 0);
}

void TstPortListerSelect::returnInTheNumberFieldSelectsOnce_data()
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

void TstPortListerSelect::returnInTheNumberFieldSelectsOnce()
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

void TstPortListerSelect::returnElsewhereSelectsOnce_data()
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

void TstPortListerSelect::returnElsewhereSelectsOnce()
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

void TstPortListerSelect::returnOnCancelSelectsNothing()
{
    show();
    button("cancelBtn")->setFocus();
    QTest::keyClick(m_lister->focusWidget(), Qt::Key_Return);
    QVERIFY(!m_lister->isVisible());
    QCOMPARE(m_serial.size() + m_network.size(), 0);
}

QTEST_MAIN(TstPortListerSelect)
#include "tst_portlisterselect.moc"
