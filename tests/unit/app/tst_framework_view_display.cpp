#include "app/lamps.h"
#include "mainwindowfixture.h"
#include "protocol/records/systemstatus.h"

namespace {

const QColor kPaleGreen(154, 237, 191);
const QColor kDark(240, 240, 240);
const QColor kYellow(Qt::yellow);
const QColor kGreen(Qt::green);
const QColor kGray(Qt::gray);

QVariant systemOf(quint16 modules)
{
    System_Status status;
    status.nModules = modules;
    return QVariant::fromValue(status);
}

} // namespace

/// What the window tells by itself: lamps, status box and the notice of a new version.
class TstFrameworkViewDisplay : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void boxIsOfflineAtTheStart();
    void offlineLeavesTheBusyTimer();
    void readyResetsTheBusyTime();
    void busyAddsHalfASecond();
    void busyTwiceStartsTheTimerOnce();
    void busyTimeIsCountedDownToZeroAndStays();
    void busyAgainAfterReadyCountsFromTheStart();
    void systemStatusShowsZeroOfAll_data();
    void systemStatusShowsZeroOfAll();
    void foreignStatusCountsTheControllerAlone();
    void modulesReadShowsTheCount();
    void modulesReadBeforeAnyStatusCountsOverZero();
    void readingLeavesTheBusyTimer();

    void connectionLampFollowsTheState_data();
    void connectionLampFollowsTheState();
    void yellowLampMeansOffline();
    void greenLampShowsTheBox();
    void grayLampLeavesTheBox();
    void otherStatesResetTheLamp_data();
    void otherStatesResetTheLamp();

    void trafficLampIsLitFor100Ms_data();
    void trafficLampIsLitFor100Ms();
    void retriggeredLampStaysLit_data() { trafficLampIsLitFor100Ms_data(); }
    void retriggeredLampStaysLit();

    void newVersionIsNoticed_data();
    void newVersionIsNoticed();
    void endlessVersionIsCut();
    void olderVersionLeavesTheNotice();

private:
    std::unique_ptr<MainWindowFixture> m;
};

void TstFrameworkViewDisplay::init()
{
    m = std::make_unique<MainWindowFixture>();
    m->show();
}

void TstFrameworkViewDisplay::cleanup()
{
    m.reset();
}

void TstFrameworkViewDisplay::boxIsOfflineAtTheStart()
{
    QCOMPARE(m->boxText(), QString("OFFLINE"));
    QCOMPARE(m->lamp("statusBox"), kYellow);
}

void TstFrameworkViewDisplay::offlineLeavesTheBusyTimer()
{
    m->view->SetBusyStatus();
    m->view->SetBusyStatus();
    m->view->SetOfflineStatus();
    QCOMPARE(m->boxText(), QString("OFFLINE"));
    m->time.advance(500);
    QCOMPARE(m->boxText(), QString("0.50 s"));
}

void TstFrameworkViewDisplay::readyResetsTheBusyTime()
{
    for (int i = 0; i < 6; ++i)
        m->view->SetBusyStatus();
    m->time.advance(700);
    m->view->SetAvailableStatus();
    QCOMPARE(m->boxText(), QString("READY"));
    QCOMPARE(m->lamp("statusBox"), kGreen);
    m->time.advance(5000);
    QCOMPARE(m->boxText(), QString("READY"));
}

void TstFrameworkViewDisplay::busyAddsHalfASecond()
{
    m->view->SetAvailableStatus();
    m->view->SetBusyStatus();
    QCOMPARE(m->boxText(), QString("0.50 s"));
    QCOMPARE(m->lamp("statusBox"), kYellow);
    m->view->SetBusyStatus();
    QCOMPARE(m->boxText(), QString("1.00 s"));
}

void TstFrameworkViewDisplay::busyTwiceStartsTheTimerOnce()
{
    m->view->SetBusyStatus();
    m->time.advance(400);
    m->view->SetBusyStatus();
    QCOMPARE(m->boxText(), QString("1.00 s"));
    m->time.advance(100); // the period of the first start is over
    QCOMPARE(m->boxText(), QString("0.50 s"));
    m->time.advance(499);
    QCOMPARE(m->boxText(), QString("0.50 s"));
    m->time.advance(1);
    QCOMPARE(m->boxText(), QString("0.00 s"));
}

void TstFrameworkViewDisplay::busyTimeIsCountedDownToZeroAndStays()
{
    m->view->SetBusyStatus();
    m->time.advance(500);
    QCOMPARE(m->boxText(), QString("0.00 s"));
    m->view->SetOfflineStatus();
    m->time.advance(5000); // at 0 the text is left alone
    QCOMPARE(m->boxText(), QString("OFFLINE"));

    // The timer kept its beat, so the next half second is eaten at the next beat.
    m->time.advance(300);
    m->view->SetBusyStatus();
    QCOMPARE(m->boxText(), QString("0.50 s"));
    m->time.advance(200);
    QCOMPARE(m->boxText(), QString("0.00 s"));
}

void TstFrameworkViewDisplay::busyAgainAfterReadyCountsFromTheStart()
{
    for (int i = 0; i < 4; ++i)
        m->view->SetBusyStatus();
    m->view->SetAvailableStatus();
    m->time.advance(300);
    m->view->SetBusyStatus();
    QCOMPARE(m->boxText(), QString("0.50 s"));
    m->time.advance(499);
    QCOMPARE(m->boxText(), QString("0.50 s"));
    m->time.advance(1);
    QCOMPARE(m->boxText(), QString("0.00 s"));
}

void TstFrameworkViewDisplay::systemStatusShowsZeroOfAll_data()
{
    QTest::addColumn<int>("modules");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << "0 / 1 ";
    QTest::newRow("one") << 1 << "0 / 2 ";
    QTest::newRow("full chain") << 128 << "0 / 129 ";
    QTest::newRow("16 bits run over") << 65535 << "0 / 0 ";
}

void TstFrameworkViewDisplay::systemStatusShowsZeroOfAll()
{
    QFETCH(int, modules);
    QFETCH(QString, text);
    m->view->SetAvailableStatus();
    m->view->Slot_SystemStatus(systemOf(static_cast<quint16>(modules)));
    QCOMPARE(m->boxText(), text);
    QCOMPARE(m->lamp("statusBox"), kYellow);
}

void TstFrameworkViewDisplay::foreignStatusCountsTheControllerAlone()
{
    m->view->Slot_SystemStatus(QVariant(QStringLiteral("no status")));
    QCOMPARE(m->boxText(), QString("0 / 1 "));
}

void TstFrameworkViewDisplay::modulesReadShowsTheCount()
{
    m->view->Slot_SystemStatus(systemOf(11));
    m->view->Slot_ModulesRead(3);
    QCOMPARE(m->boxText(), QString("3 / 12 "));
    m->view->SetAvailableStatus();
    m->view->Slot_ModulesRead(12);
    QCOMPARE(m->boxText(), QString("12 / 12 "));
    QCOMPARE(m->lamp("statusBox"), kGreen); // the colour is left as it was
}

void TstFrameworkViewDisplay::modulesReadBeforeAnyStatusCountsOverZero()
{
    m->view->Slot_ModulesRead(5);
    QCOMPARE(m->boxText(), QString("5 / 0 "));
    QCOMPARE(m->lamp("statusBox"), kYellow);
}

void TstFrameworkViewDisplay::readingLeavesTheBusyTimer()
{
    m->view->SetBusyStatus();
    m->view->SetBusyStatus();
    m->view->Slot_SystemStatus(systemOf(4));
    m->view->Slot_ModulesRead(1);
    m->time.advance(500);
    QCOMPARE(m->boxText(), QString("0.50 s"));
}

void TstFrameworkViewDisplay::connectionLampFollowsTheState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("system known") << 0 << kPaleGreen;
    QTest::newRow("no link") << 2 << kGray;
    QTest::newRow("link open") << 3 << kYellow;
}

void TstFrameworkViewDisplay::connectionLampFollowsTheState()
{
    QFETCH(int, state);
    QFETCH(QColor, colour);
    m->view->setConnectionLamp(static_cast<ConnectionState>(state));
    QCOMPARE(m->lamp("connectionLamp"), colour);
}

void TstFrameworkViewDisplay::yellowLampMeansOffline()
{
    m->view->SetAvailableStatus();
    m->view->setConnectionLamp(ConnectionState::LinkOpen);
    QCOMPARE(m->boxText(), QString("OFFLINE"));
    QCOMPARE(m->lamp("statusBox"), kYellow);
}

void TstFrameworkViewDisplay::greenLampShowsTheBox()
{
    m->child<QLineEdit>("statusBox")->hide();
    m->view->SetAvailableStatus();
    m->view->setConnectionLamp(ConnectionState::SystemKnown);
    QVERIFY(m->child<QLineEdit>("statusBox")->isVisible());
    QCOMPARE(m->boxText(), QString("READY"));
}

void TstFrameworkViewDisplay::grayLampLeavesTheBox()
{
    m->view->SetAvailableStatus();
    m->view->setConnectionLamp(ConnectionState::NoLink);
    QCOMPARE(m->boxText(), QString("READY"));
}

void TstFrameworkViewDisplay::otherStatesResetTheLamp_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {-1, 1, 4, 5, 6})
        QTest::newRow(qPrintable(QString::number(state))) << state;
}

void TstFrameworkViewDisplay::otherStatesResetTheLamp()
{
    QFETCH(int, state);
    m->view->setConnectionLamp(ConnectionState::SystemKnown);
    m->view->setConnectionLamp(static_cast<ConnectionState>(state));
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(m->child<QLineEdit>("connectionLamp")->palette().color(group, QPalette::Base),
                 m->view->palette().color(group, QPalette::Base));
    }
    QCOMPARE(m->boxText(), QString("OFFLINE"));
}

void TstFrameworkViewDisplay::trafficLampIsLitFor100Ms_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("Rx") << QByteArray("rxLamp");
    QTest::newRow("Tx") << QByteArray("txLamp");
}

void TstFrameworkViewDisplay::trafficLampIsLitFor100Ms()
{
    QFETCH(QByteArray, name);
    const bool isRx = name == "rxLamp";
    const char *other = isRx ? "txLamp" : "rxLamp";
    isRx ? m->view->setRxLed() : m->view->setTxLed();
    QCOMPARE(m->lamp(name), kPaleGreen);
    QCOMPARE(m->lamp(other), kDark);
    m->time.advance(99);
    QCOMPARE(m->lamp(name), kPaleGreen);
    m->time.advance(1);
    QCOMPARE(m->lamp(name), kDark);

    // The timer stopped: nobody touches the lamp any more.
    QPalette palette = m->child<QLineEdit>(name)->palette();
    palette.setColor(QPalette::Base, Qt::blue);
    m->child<QLineEdit>(name)->setPalette(palette);
    m->time.advance(1000);
    QCOMPARE(m->lamp(name), QColor(Qt::blue));
}

void TstFrameworkViewDisplay::retriggeredLampStaysLit()
{
    QFETCH(QByteArray, name);
    const bool isRx = name == "rxLamp";
    for (int i = 0; i < 20; ++i) {
        isRx ? m->view->setRxLed() : m->view->setTxLed();
        m->time.advance(60);
        QCOMPARE(m->lamp(name), kPaleGreen);
    }
    m->time.advance(39);
    QCOMPARE(m->lamp(name), kPaleGreen);
    m->time.advance(1);
    QCOMPARE(m->lamp(name), kDark);
}

void TstFrameworkViewDisplay::newVersionIsNoticed_data()
{
    QTest::addColumn<QString>("remote");
    QTest::addColumn<bool>("noticed");
    QTest::newRow("newer") << "1.1.63" << true;
    QTest::newRow("same") << "1.1.62" << false;
    QTest::newRow("older") << "1.0.1" << false;
    QTest::newRow("older in front only") << "1.0.99" << true;
    QTest::newRow("four numbers") << "1.1.62.0" << true;
    QTest::newRow("markup is shown as it stands") << "<i>2</i>" << true;
}

void TstFrameworkViewDisplay::newVersionIsNoticed()
{
    QFETCH(QString, remote);
    QFETCH(bool, noticed);
    const auto *label = m->child<QLabel>("updateLabel");
    QVERIFY(!label->isVisible());
    m->view->UpdateVersion(remote);
    QCOMPARE(label->isVisible(), noticed);
    QCOMPARE(label->text(), noticed ? "Please download new version " + remote : QString());
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QCOMPARE(label->styleSheet(), QString("QLabel { color : red; }"));
}

void TstFrameworkViewDisplay::endlessVersionIsCut()
{
    const QString endless(1 << 20, QLatin1Char('9'));
    m->view->UpdateVersion(endless);
    QCOMPARE(m->child<QLabel>("updateLabel")->text(), "Please download new version " + endless.left(200));
}

void TstFrameworkViewDisplay::olderVersionLeavesTheNotice()
{
    const auto *label = m->child<QLabel>("updateLabel");
    m->view->UpdateVersion(QStringLiteral("1.2.0"));
    m->view->UpdateVersion(QStringLiteral("1.1.62"));
    QVERIFY(label->isVisible());
    QCOMPARE(label->text(), QString("Please download new version 1.2.0"));
}

QTEST_MAIN(TstFrameworkViewDisplay)

#include "tst_framework_view_display.moc"
