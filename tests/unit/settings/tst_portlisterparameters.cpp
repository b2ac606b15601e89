#include "portlisterfixture.h"
#include "settings/comconfigbox.h"
#include "support/messagecatcher.h"

#include <QtTest>

/// The serial parameters: the box that the dialog opens, and what the settings file gives.
class TstPortListerParameters : public PortListerFixture
{
    Q_OBJECT

private slots:
    void pressOnTheParametersOpensTheBox_data();
    void pressOnTheParametersOpensTheBox();
    void pressOnDisabledParametersOpensNothing();
    void abandonedBoxChangesNothing_data();
    void abandonedBoxChangesNothing();
    void openedBoxIsModal();
    void confirmedBoxIsTakenOver();
    void flowControlAndServerSurviveTheBox();

    void parametersOfTheFileAreShown();
    void portWithoutNumberIsNotShown_data();
    void portWithoutNumberIsNotShown();
    void rejectedParametersChangeNothing_data();
    void rejectedParametersChangeNothing();
};

void TstPortListerParameters::pressOnTheParametersOpensTheBox_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("space bar") << false;
}

void TstPortListerParameters::pressOnTheParametersOpensTheBox()
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

void TstPortListerParameters::pressOnDisabledParametersOpensNothing()
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

void TstPortListerParameters::abandonedBoxChangesNothing_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Escape") << true;
    QTest::newRow("button of the window") << false;
}

void TstPortListerParameters::abandonedBoxChangesNothing()
{
    QFETCH(bool, byEscape);
    show();
    bool ran = false;
    whenBoxRuns([&ran, byEscape](ComConfigBox &box) {
        ran = box.isVisible();
        box.findChildren<QAbstractButton *>().first()->click();
        if (byEscape)
            QTest::keyClick(&box, Qt::Key_Escape);
        else
            box.close();
    });
    QTest::mouseClick(edit("portConfigBox"), Qt::LeftButton);
    QVERIFY(ran);
    QCOMPARE(edit("portConfigBox")->text(), QStringLiteral("115200,E,8,1"));
    QVERIFY(m_lister->isVisible());
    click("openBtn");
    Settings expected = freshRecord();
    expected.portName = QStringLiteral("COM4");
    expected.commType = Comm_Type::Serial;
    QCOMPARE(m_serial, QList<Settings>{expected});
}

void TstPortListerParameters::openedBoxIsModal()
{
    bool isModal = false;
    whenBoxRuns([&isModal](ComConfigBox &box) {
        isModal = box.isModal();
        box.hide();
    });
    m_lister->portConfig();
    QVERIFY(isModal);
}

void TstPortListerParameters::confirmedBoxIsTakenOver()
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

void TstPortListerParameters::flowControlAndServerSurviveTheBox()
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

void TstPortListerParameters::parametersOfTheFileAreShown()
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

void TstPortListerParameters::portWithoutNumberIsNotShown_data()
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

void TstPortListerParameters::portWithoutNumberIsNotShown()
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

void TstPortListerParameters::rejectedParametersChangeNothing_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::newRow("rate 9601") << words("PORT1|COM6|9601|E|8|1");
    QTest::newRow("parity") << words("PORT1|COM6|9600|X|8|1");
    QTest::newRow("data bits") << words("PORT1|COM6|9600|E|9|1");
    QTest::newRow("stop bits") << words("PORT1|COM6|9600|E|8|3");
    QTest::newRow("too short") << words("PORT1|COM6|");
}

void TstPortListerParameters::rejectedParametersChangeNothing()
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

QTEST_MAIN(TstPortListerParameters)
#include "tst_portlisterparameters.moc"
