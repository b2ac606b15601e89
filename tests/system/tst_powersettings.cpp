#include "channelfixture.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMessageBox>
#include <QtTest>
#include <functional>

namespace {

using namespace std::chrono_literals;
using Gesture = std::function<void(ChannelFixture &)>;

const QString kFixedChain = QStringLiteral("controller serial=C-1\n"
                                           "power serial=P-1 mode=fixed fixed=12000 auto=9000 protection=0\n"
                                           "module type=1 serial=SG-\n");
const QString kAutoChain = QStringLiteral("controller serial=C-1\n"
                                          "power serial=P-1 mode=auto fixed=12000 auto=9000 protection=2\n"
                                          "module type=2 serial=VO-\n");

const QString kRed = QStringLiteral("color: red;background-color: white;selection-color: red;"
                                    "selection-background-color: white;border-width: 2;");
const QString kBlack = QStringLiteral("color: black;background-color: white;selection-color: white;"
                                      "selection-background-color: #0078d7;border-width: 2;");

QDoubleSpinBox *setpointBox(const ChannelFixture &f)
{
    return childByName<QDoubleSpinBox>(f.window(), "doubleSpinBox_OutputVoltage");
}

QComboBox *modeBox(const ChannelFixture &f)
{
    return childByName<QComboBox>(f.window(), "comboBox_OutputVoltageMode");
}

Gesture typed(const char *text)
{
    return [text](ChannelFixture &f) { gestures::type(setpointBox(f), QString::fromLatin1(text)); };
}

Gesture entered(const char *text)
{
    return [text](ChannelFixture &f) {
        gestures::type(setpointBox(f), QString::fromLatin1(text));
        QTest::keyClick(setpointBox(f), Qt::Key_Return);
    };
}

Gesture clicked(gestures::Arrow arrow, int times)
{
    return [arrow, times](ChannelFixture &f) {
        for (int i = 0; i < times; ++i)
            gestures::clickArrow(setpointBox(f), arrow);
    };
}

Gesture pressed(Qt::Key key)
{
    return [key](ChannelFixture &f) {
        setpointBox(f)->setFocus();
        QTest::keyClick(setpointBox(f), key);
    };
}

} // namespace

Q_DECLARE_METATYPE(Gesture)

/// What the operator tells the power module, and what comes back of it.
class TstPowerSettings : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<ChannelFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void reportedSettingsAreShown_data();
    void reportedSettingsAreShown();
    void setpointIsSentOnceAfterTwoSeconds_data();
    void setpointIsSentOnceAfterTwoSeconds();
    void laterSetpointReplacesTheOneThatWaits();
    void setpointIsReadBackOnce();
    void changeAfterAReadBackOfTheSameValueIsLost();
    void refusedSetpointGivesWayToTheDevices();
    void reportWhileASetpointWaitsReplacesTheTextOnly();
    void modeIsSentAtOnce_data();
    void modeIsSentAtOnce();
    void protectionIsSentWhenTheDialogIsAccepted_data();
    void protectionIsSentWhenTheDialogIsAccepted();
    void leavingTheProtectionDialogSendsNothing_data();
    void leavingTheProtectionDialogSendsNothing();
    void reportedProtectionWithoutANameIsANumber();
    void controllerButtonShowsItsVersions();
    void settingsOnALostLinkAreForgotten();

private:
    ChannelFixture &fixture() { return *m_fixture; }
    sim::Power &power() { return *m_fixture->device->chain().power; }
    QString label(const char *name) const { return childByName<QLabel>(m_fixture->window(), name)->text(); }
    /// Requests for the status of the power module.
    int powerStatuses() const
    {
        return m_fixture->device->receivedPayloads().count(QByteArray::fromHex("1200000081"));
    }
    QWidget *openProtections();
    static QAbstractButton *dialogButton(const QWidget *dialog, QDialogButtonBox::StandardButton which)
    {
        return childByName<QDialogButtonBox>(dialog, "buttonBox")->button(which);
    }

    std::unique_ptr<ChannelFixture> m_fixture;
};

QWidget *TstPowerSettings::openProtections()
{
    QTest::mouseClick(childByName<QPushButton>(fixture().window(), "pushButton_powModType"), Qt::LeftButton);
    return fixture().openDialog("powerSettingsDialog");
}

void TstPowerSettings::reportedSettingsAreShown_data()
{
    QTest::addColumn<QString>("chain");
    QTest::addColumn<double>("setpoint");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("protection");
    QTest::newRow("fixed") << kFixedChain << 12.0 << 0 << QStringLiteral("standard");
    QTest::newRow("auto") << kAutoChain << 9.0 << 1 << QStringLiteral("mission critical");
}

void TstPowerSettings::reportedSettingsAreShown()
{
    QFETCH(QString, chain);
    QFETCH(double, setpoint);
    QFETCH(int, mode);
    QFETCH(QString, protection);
    fixture().startChain(chain);
    QCOMPARE(label("label_SerialNumber_Pow"), QStringLiteral("S/N P-1"));
    QVERIFY(setpointBox(fixture())->isVisible() && setpointBox(fixture())->isEnabled());
    QVERIFY(modeBox(fixture())->isEnabled());
    QCOMPARE(setpointBox(fixture())->value(), setpoint);
    QCOMPARE(modeBox(fixture())->currentIndex(), mode);
    QCOMPARE(label("label_Protection"), protection);
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
}

void TstPowerSettings::setpointIsSentOnceAfterTwoSeconds_data()
{
    QTest::addColumn<QString>("chain");
    QTest::addColumn<Gesture>("gesture");
    QTest::addColumn<QString>("payload");
    QTest::addColumn<int>("millivolts");
    using gestures::Arrow;
    QTest::newRow("typed") << kFixedChain << typed("12.3") << "1800000001100c30" << 12300;
    QTest::newRow("typed and entered") << kFixedChain << entered("7.5") << "1800000001104c1d" << 7500;
    QTest::newRow("smallest") << kFixedChain << typed("5") << "1800000001108813" << 5000;
    QTest::newRow("largest") << kFixedChain << typed("20") << "180000000110204e" << 20000;
    QTest::newRow("one step up") << kFixedChain << clicked(Arrow::Up, 1) << "180000000110442f" << 12100;
    QTest::newRow("three steps down")
        << kFixedChain << clicked(Arrow::Down, 3) << "180000000110b42d" << 11700;
    QTest::newRow("arrow key") << kFixedChain << pressed(Qt::Key_Down) << "1800000001107c2e" << 11900;
    QTest::newRow("auto mode, typed") << kAutoChain << typed("14.6") << "1800000001110839" << 14600;
    QTest::newRow("auto mode, stepped") << kAutoChain << clicked(Arrow::Up, 2) << "180000000111f023" << 9200;
}

void TstPowerSettings::setpointIsSentOnceAfterTwoSeconds()
{
    QFETCH(QString, chain);
    QFETCH(Gesture, gesture);
    QFETCH(QString, payload);
    QFETCH(int, millivolts);
    fixture().startChain(chain);
    const int before = power().outputMillivolts();
    const int statuses = powerStatuses();
    gesture(fixture());
    QCOMPARE(setpointBox(fixture())->styleSheet(), kRed);
    fixture().time.skip(1999ms);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(setpointBox(fixture())->styleSheet(), kRed);
    fixture().time.skip(1ms);
    QCOMPARE(setpointBox(fixture())->styleSheet(), kBlack);
    WAIT_COMPARE(fixture().commands(), QStringList{payload});
    QVERIFY(before != millivolts);
    QCOMPARE(power().outputMillivolts(), millivolts);
    WAIT_COMPARE(powerStatuses(), statuses + 1);
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{payload});
    QCOMPARE(setpointBox(fixture())->value(), millivolts / 1000.0);
    QCOMPARE(setpointBox(fixture())->styleSheet(), kBlack);
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstPowerSettings::laterSetpointReplacesTheOneThatWaits()
{
    fixture().startChain(kFixedChain);
    entered("8")(fixture());
    fixture().time.skip(1500ms);
    gestures::clickArrow(setpointBox(fixture()), gestures::Arrow::Up);
    fixture().time.skip(1999ms);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    fixture().time.skip(1ms);
    WAIT_COMPARE(fixture().commands(), QStringList{"180000000110a41f"});
    QCOMPARE(power().fixedMillivolts, 8100);
}

void TstPowerSettings::setpointIsReadBackOnce()
{
    fixture().startChain(kFixedChain);
    fixture().device->clearCounters();
    entered("10.5")(fixture());
    fixture().time.skip(2s);
    WAIT_COMPARE(powerStatuses(), 1);
    fixture().waitForPolls();
    // The command, then the one status; else the cycle of fast statuses goes on.
    QList<QByteArray> others;
    for (const QByteArray &payload : fixture().device->receivedPayloads()) {
        if (payload.at(0) != '\x08' && payload.at(0) != '\x10')
            others.append(payload.toHex());
    }
    QCOMPARE(others, (QList<QByteArray>{"1800000001100429", "1200000081"}));
}

void TstPowerSettings::changeAfterAReadBackOfTheSameValueIsLost()
{
    // On purpose: the box takes the operator's next change for the one that the report announced.
    fixture().startChain(kFixedChain);
    entered("10.5")(fixture());
    const int statuses = powerStatuses();
    fixture().time.skip(2s);
    WAIT_COMPARE(powerStatuses(), statuses + 1);
    fixture().waitForPolls();
    gestures::clickArrow(setpointBox(fixture()), gestures::Arrow::Up);
    QCOMPARE(setpointBox(fixture())->value(), 10.6);
    QCOMPARE(setpointBox(fixture())->styleSheet(), kBlack);
    fixture().time.skip(2s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands().size(), 1);
    gestures::clickArrow(setpointBox(fixture()), gestures::Arrow::Up);
    QCOMPARE(setpointBox(fixture())->styleSheet(), kRed);
    fixture().time.skip(2s);
    WAIT_COMPARE(fixture().commands(), (QStringList{"1800000001100429", "180000000110cc29"}));
}

void TstPowerSettings::refusedSetpointGivesWayToTheDevices()
{
    fixture().startChain(QStringLiteral("controller serial=C-1\n"
                                        "power serial=P-1 fixed=9000 minimum=6000 maximum=10000\n"));
    typed("11")(fixture());
    fixture().time.skip(2s);
    WAIT_COMPARE(fixture().commands(), QStringList{"180000000110f82a"});
    WAIT_COMPARE(setpointBox(fixture())->value(), 9.0);
    QCOMPARE(setpointBox(fixture())->styleSheet(), kBlack);
    QCOMPARE(power().fixedMillivolts, 9000);
    typed("10")(fixture());
    fixture().time.skip(2s);
    WAIT_COMPARE(power().fixedMillivolts, 10000);
}

void TstPowerSettings::reportWhileASetpointWaitsReplacesTheTextOnly()
{
    fixture().startChain(kFixedChain);
    typed("14")(fixture());
    fixture().time.skip(1s);
    gestures::pick(modeBox(fixture()), 1);
    // The status that follows a mode brings the voltage of that mode.
    WAIT_COMPARE(setpointBox(fixture())->value(), 9.0);
    QCOMPARE(setpointBox(fixture())->styleSheet(), kRed);
    QCOMPARE(fixture().commands(), QStringList{"1800000001210000"});
    fixture().time.skip(999ms);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands().size(), 1);
    fixture().time.skip(1ms);
    WAIT_COMPARE(fixture().commands(), (QStringList{"1800000001210000", "180000000111b036"}));
    WAIT_COMPARE(setpointBox(fixture())->value(), 14.0);
    QCOMPARE(power().autoMillivolts, 14000);
    QCOMPARE(power().fixedMillivolts, 12000);
}

void TstPowerSettings::modeIsSentAtOnce_data()
{
    QTest::addColumn<QString>("chain");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("payload");
    QTest::addColumn<double>("setpoint");
    QTest::newRow("auto") << kFixedChain << 1 << "1800000001210000" << 9.0;
    QTest::newRow("fixed") << kAutoChain << 0 << "1800000001200000" << 12.0;
    QTest::newRow("fixed again") << kFixedChain << 0 << "1800000001200000" << 12.0;
}

void TstPowerSettings::modeIsSentAtOnce()
{
    QFETCH(QString, chain);
    QFETCH(int, index);
    QFETCH(QString, payload);
    QFETCH(double, setpoint);
    fixture().startChain(chain);
    const int statuses = powerStatuses();
    gestures::pick(modeBox(fixture()), index);
    WAIT_COMPARE(fixture().commands(), QStringList{payload});
    WAIT_COMPARE(powerStatuses(), statuses + 1);
    QCOMPARE(int(power().mode), index);
    WAIT_COMPARE(setpointBox(fixture())->value(), setpoint);
    fixture().waitForPolls();
    QCOMPARE(modeBox(fixture())->currentIndex(), index);
    QCOMPARE(setpointBox(fixture())->value(), setpoint);
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{payload});
}

void TstPowerSettings::protectionIsSentWhenTheDialogIsAccepted_data()
{
    QTest::addColumn<QString>("chain");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("payload");
    QTest::addColumn<QString>("shown");
    QTest::newRow("standard") << kAutoChain << 0 << "1800000001300000" << QStringLiteral("standard");
    QTest::newRow("derating") << kFixedChain << 1 << "1800000001310000" << QStringLiteral("derating");
    QTest::newRow("mission critical")
        << kFixedChain << 2 << "1800000001320000" << QStringLiteral("mission critical");
}

void TstPowerSettings::protectionIsSentWhenTheDialogIsAccepted()
{
    QFETCH(QString, chain);
    QFETCH(int, index);
    QFETCH(QString, payload);
    QFETCH(QString, shown);
    fixture().startChain(chain);
    const QString before = label("label_Protection");
    QWidget *dialog = openProtections();
    QVERIFY(dialog);
    auto *box = childByName<QComboBox>(dialog, "comboBox_Protection");
    if (index != box->currentIndex())
        gestures::pick(box, index);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QTest::mouseClick(dialogButton(dialog, QDialogButtonBox::Ok), Qt::LeftButton);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    WAIT_COMPARE(fixture().commands(), QStringList{payload});
    QVERIFY(before != shown);
    WAIT_COMPARE(label("label_Protection"), shown);
    QCOMPARE(int(power().protection), index);
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{payload});
    QCOMPARE(label("label_Protection"), shown);
}

void TstPowerSettings::leavingTheProtectionDialogSendsNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Cancel") << false;
    QTest::newRow("Escape") << true;
}

void TstPowerSettings::leavingTheProtectionDialogSendsNothing()
{
    QFETCH(bool, byKey);
    fixture().startChain(kFixedChain);
    QWidget *dialog = openProtections();
    QVERIFY(dialog);
    gestures::pick(childByName<QComboBox>(dialog, "comboBox_Protection"), 2);
    if (byKey)
        QTest::keyClick(dialog, Qt::Key_Escape);
    else
        QTest::mouseClick(dialogButton(dialog, QDialogButtonBox::Cancel), Qt::LeftButton);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(label("label_Protection"), QStringLiteral("standard"));
    // It opens again.
    QVERIFY(openProtections());
}

void TstPowerSettings::reportedProtectionWithoutANameIsANumber()
{
    fixture().startChain(QStringLiteral("controller serial=C-1\npower serial=P-1 protection=7\n"));
    QCOMPARE(label("label_Protection"), QStringLiteral("7"));
    power().protection = 3;
    gestures::pick(modeBox(fixture()), 0);
    WAIT_COMPARE(label("label_Protection"), QStringLiteral("none"));
}

void TstPowerSettings::controllerButtonShowsItsVersions()
{
    fixture().startChain(
        QStringLiteral("controller serial=C-1 hw=2.1 fw1=1.4.2 fw2=1.07\npower serial=P-1\n"));
    QTest::mouseClick(childByName<QPushButton>(fixture().window(), "pushButton_modType"), Qt::LeftButton);
    auto *box = qobject_cast<QMessageBox *>(fixture().openDialog("versionBox"));
    QVERIFY(box);
    QCOMPARE(box->windowTitle(), QStringLiteral("Module Version Info"));
    QCOMPARE(box->text(), QStringLiteral("Component version numbers\nHardware:\t2.1\nFirmware 1:\t1.4.2\n"
                                         "Firmware 2:\t1.07\n"));
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
}

void TstPowerSettings::settingsOnALostLinkAreForgotten()
{
    fixture().startChain(kFixedChain);
    typed("8")(fixture());
    fixture().unplug();
    WAIT_COMPARE(fixture().statusText(), QStringLiteral("COM Port unavailable: COM40"));
    // The top row is still there: it goes when the chain answers again.
    const QPointer<QWidget> row = setpointBox(fixture());
    gestures::pick(modeBox(fixture()), 1);
    QWidget *dialog = openProtections();
    QVERIFY(dialog);
    gestures::pick(childByName<QComboBox>(dialog, "comboBox_Protection"), 2);
    QTest::mouseClick(dialogButton(dialog, QDialogButtonBox::Ok), Qt::LeftButton);
    fixture().time.skip(3s);
    fixture().plug(kFixedChain);
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    fixture().time.skip(3s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(setpointBox(fixture())->value(), 12.0);
    QCOMPARE(modeBox(fixture())->currentIndex(), 0);
    QCOMPARE(label("label_Protection"), QStringLiteral("standard"));
}

QTEST_MAIN(TstPowerSettings)

#include "tst_powersettings.moc"
