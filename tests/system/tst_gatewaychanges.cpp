#include "gatewayfixture.h"

#include <QLineEdit>
#include <QtTest>

using namespace std::chrono_literals;

/// Each control of the panel changes the gateway, by one line and at once.
class TstGatewayChanges : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void listSendsItsEntry_data();
    void listSendsItsEntry();
    void offRepeatsTheLastMode();
    void radioButtonSendsItsChoice_data();
    void radioButtonSendsItsChoice();
    void targetIsSetByItsDialog();
    void serverModeHidesTheTarget();
    void blockSizesAreSetByTheirDialog_data();
    void blockSizesAreSetByTheirDialog();
    void emptyBlockSizeIsSentAndShowsTheOldOne();
    void cancelSendsNothing_data();
    void cancelSendsNothing();
    void debugIsSent();
    void abortedRestartSendsNothing_data();
    void abortedRestartSendsNothing();
    void refusedChangeShowsByTheNextStatus();
    void wheelOverAListWithoutTheFocusSendsNothing();

private:
    GatewayFixture &fixture() { return *m_fixture; }
    QString state(QString sim::GatewayState::*member) const { return m_fixture->gateway->state().*member; }
    /// The gateway got this line alone, and the panel shows what became of it.
    void expectLine(const QString &line);

    std::unique_ptr<GatewayFixture> m_fixture;
};

Q_DECLARE_METATYPE(QString sim::GatewayState::*)

void TstGatewayChanges::init()
{
    m_fixture = std::make_unique<GatewayFixture>();
    fixture().startWithGateway();
    fixture().openConnectedPanel();
}

void TstGatewayChanges::expectLine(const QString &line)
{
    WAIT_COMPARE(fixture().lines(), QStringList(line));
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
    QCOMPARE(fixture().lines(), QStringList(line));
    QCOMPARE(fixture().gateway->refusals(), QStringList());
    QCOMPARE(fixture().commands(), QStringList());
}

void TstGatewayChanges::listSendsItsEntry_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString sim::GatewayState::*>("member");

    const auto rows = [](const char *list, const char *code, QString sim::GatewayState::*member,
                         const QStringList &values) {
        for (int i = 0; i < values.size(); ++i)
            QTest::addRow("%s %d", list, i) << QByteArray(list) << i << code + values.at(i) << member;
    };
    using State = sim::GatewayState;
    rows("comboMode", "#009_", &State::mode, {"UDP-B", "UDP-M", "UDP-U", "TCP-S", "TCP-C"});
    rows("comboSimultn", "#006_", &State::simulation, {"0", "1", "2", "3", "4", "5", "6", "7", "8"});
    rows("comboActivCOM", "#032_", &State::activeCom, {"0", "1", "2", "3"});
    rows("comboPTP", "#034_", &State::ptpMode, {"0", "1", "2"});
    rows("comboBoxDataPtcl", "#039_", &State::dataProtocol, {"ZRT-1", "IENA-1"});
}

void TstGatewayChanges::listSendsItsEntry()
{
    QFETCH(QByteArray, list);
    QFETCH(int, index);
    QFETCH(QString, line);
    QFETCH(QString sim::GatewayState::*, member);
    gestures::pick(fixture().part<QComboBox>(list), index);
    expectLine(line);
    QCOMPARE(state(member), line.mid(5));
    QCOMPARE(fixture().part<QComboBox>(list)->currentIndex(), index);
}

void TstGatewayChanges::offRepeatsTheLastMode()
{
    auto *mode = fixture().part<QComboBox>("comboMode");
    gestures::pick(mode, 4);
    WAIT_COMPARE(fixture().lines(), QStringList("#009_TCP-C"));
    gestures::pick(mode, 5);
    WAIT_COMPARE(fixture().lines(), (QStringList{"#009_TCP-C", "#009_TCP-C"}));
    fixture().nextPoll();
    WAIT_COMPARE(mode->currentIndex(), 4);
}

void TstGatewayChanges::radioButtonSendsItsChoice_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString sim::GatewayState::*>("member");

    using State = sim::GatewayState;
    QTest::newRow("little") << QByteArray("radioLitleEndn") << "#010_L" << &State::endian;
    QTest::newRow("18 bit") << QByteArray("radio18Bit") << "#011_18" << &State::dataLength;
    QTest::newRow("two's complement") << QByteArray("twoComp") << "#014_2" << &State::dataFormat;
    QTest::newRow("big, again") << QByteArray("radioBigEndn") << "#010_B" << &State::endian;
    QTest::newRow("16 bit, again") << QByteArray("radio16Bit") << "#011_16" << &State::dataLength;
    QTest::newRow("unsigned, again") << QByteArray("unsignedInt") << "#014_U" << &State::dataFormat;
}

void TstGatewayChanges::radioButtonSendsItsChoice()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, line);
    QFETCH(QString sim::GatewayState::*, member);
    gestures::check(fixture().part<QAbstractButton>(button));
    expectLine(line);
    QCOMPARE(state(member), line.mid(5));
    QVERIFY(fixture().part<QAbstractButton>(button)->isChecked());
}

void TstGatewayChanges::targetIsSetByItsDialog()
{
    fixture().clickPart("setExtAddress");
    const QWidget *dialog = fixture().openDialog("externIpAndPort");
    QVERIFY(dialog);
    QCOMPARE(childByName<QLineEdit>(dialog, "ipAddress")->text(), QString("192.168.0.22"));
    QCOMPARE(childByName<QLineEdit>(dialog, "portNo")->text(), QString("5675"));
    fixture().typeInto("externIpAndPort", "ipAddress", "10.20.30.40");
    fixture().typeInto("externIpAndPort", "portNo", "777");
    fixture().answerDialog("externIpAndPort", "OK");
    expectLine("#012_10.20.30.40:777");
    QCOMPARE(fixture().partText("extIpAddr"), QString("10.20.30.40"));
}

void TstGatewayChanges::serverModeHidesTheTarget()
{
    gestures::pick(fixture().part<QComboBox>("comboMode"), 3);
    expectLine("#009_TCP-S");
    QVERIFY(fixture().part<QWidget>("TcpPortDefault")->isVisible());
    QVERIFY(!fixture().part<QWidget>("extIpAddr")->isVisible());
    QVERIFY(!fixture().part<QWidget>("setExtAddress")->isVisible());
    QCOMPARE(fixture().partText("labelextPort"), QString("TCP Port"));
    fixture().gateway->state().mode = "UDP-M";
    fixture().nextPoll();
    WAIT_VERIFY(fixture().part<QWidget>("extIpAddr")->isVisible());
    QVERIFY(!fixture().part<QWidget>("TcpPortDefault")->isVisible());
}

void TstGatewayChanges::blockSizesAreSetByTheirDialog_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("old");
    QTest::addColumn<QString>("code");
    QTest::newRow("minimum") << QByteArray("minBox") << "Set Minimum"
                             << "1"
                             << "#037_";
    QTest::newRow("maximum") << QByteArray("maxBox") << "Set Maximum"
                             << "64"
                             << "#038_";
}

void TstGatewayChanges::blockSizesAreSetByTheirDialog()
{
    QFETCH(QByteArray, box);
    QFETCH(QString, title);
    QFETCH(QString, old);
    QFETCH(QString, code);
    fixture().clickPart(box);
    const QWidget *dialog = fixture().openDialog("minMaxDialog");
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), title);
    QCOMPARE(childByName<QLineEdit>(dialog, "valueBox")->text(), old);
    fixture().typeInto("minMaxDialog", "valueBox", "33");
    fixture().answerDialog("minMaxDialog", "OK");
    expectLine(code + "33");
    QCOMPARE(fixture().partText(box), QString("33"));
}

void TstGatewayChanges::emptyBlockSizeIsSentAndShowsTheOldOne()
{
    fixture().clickPart("minBox");
    fixture().typeInto("minMaxDialog", "valueBox", "");
    fixture().answerDialog("minMaxDialog", "OK");
    expectLine("#037_");
    QCOMPARE(fixture().partText("minBox"), QString("1"));
}

void TstGatewayChanges::cancelSendsNothing_data()
{
    QTest::addColumn<QByteArray>("opener");
    QTest::addColumn<QByteArray>("dialog");
    QTest::newRow("target") << QByteArray("setExtAddress") << QByteArray("externIpAndPort");
    QTest::newRow("minimum") << QByteArray("minBox") << QByteArray("minMaxDialog");
    QTest::newRow("maximum") << QByteArray("maxBox") << QByteArray("minMaxDialog");
    QTest::newRow("address") << QByteArray("ChangeGateway") << QByteArray("addressConfirmation");
}

void TstGatewayChanges::cancelSendsNothing()
{
    QFETCH(QByteArray, opener);
    QFETCH(QByteArray, dialog);
    fixture().clickPart(opener);
    fixture().answerDialog(dialog, "Cancel");
    fixture().nextPoll();
    QCOMPARE(fixture().lines(), QStringList());
    QCOMPARE(fixture().openDialogCount(), 1);
}

void TstGatewayChanges::debugIsSent()
{
    fixture().clickPart("debugBtn");
    expectLine("#000_1");
    QVERIFY(fixture().gateway->state().debugging);
}

void TstGatewayChanges::abortedRestartSendsNothing_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("box");
    QTest::newRow("reboot") << QByteArray("rebootBtn") << QByteArray("rebootConfirmation");
    QTest::newRow("restart") << QByteArray("restartBtn") << QByteArray("restartConfirmation");
}

void TstGatewayChanges::abortedRestartSendsNothing()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, box);
    fixture().clickPart(button);
    fixture().answerDialog(box, "Abort");
    fixture().nextPoll();
    QCOMPARE(fixture().lines(), QStringList());
    QVERIFY(fixture().isConnected());
}

void TstGatewayChanges::refusedChangeShowsByTheNextStatus()
{
    fixture().addGatewayFaults("silent line=\"#006_\"");
    gestures::pick(fixture().part<QComboBox>("comboSimultn"), 3);
    WAIT_COMPARE(fixture().lines(), QStringList("#006_3"));
    QCOMPARE(fixture().differences(), QStringList("comboSimultn: 3, not 0"));
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
}

void TstGatewayChanges::wheelOverAListWithoutTheFocusSendsNothing()
{
    for (const char *name : {"comboMode", "comboSimultn", "comboActivCOM", "comboPTP", "comboBoxDataPtcl"}) {
        auto *box = fixture().part<QComboBox>(name);
        const int index = box->currentIndex();
        fixture().part<QWidget>("RxBox")->setFocus();
        const QPoint place = box->rect().center();
        QWheelEvent wheel(place, box->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), index);
    }
    fixture().nextPoll();
    QCOMPARE(fixture().lines(), QStringList());
}

QTEST_MAIN(TstGatewayChanges)
#include "tst_gatewaychanges.moc"
