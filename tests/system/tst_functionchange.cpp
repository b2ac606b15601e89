#include "channelfixture.h"

#include <QAbstractButton>
#include <QLabel>
#include <QtTest>

namespace {

using namespace std::chrono_literals;

const QString kChain = QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                                      "module type=1 serial=SG-\n"
                                      "module type=9 serial=UN- functionA=1 functionB=2 rangeA=3\n"
                                      "module type=2 serial=VO-\n"
                                      "module type=9 serial=UN- functionA=6 functionB=3\n");

QStringList items(const QComboBox *box)
{
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items.append(box->itemText(i));
    return items;
}

} // namespace

/// The function of a universal channel, from its dialog to the new lists.
class TstFunctionChange : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void dialogOffersTheFunctionOfTheChannel_data();
    void dialogOffersTheFunctionOfTheChannel();
    void channelIsHiddenUntilItsNewListsAreThere();
    void otherChannelKeepsItsState();
    void voltageBecomesStrainGauge();
    void cancelSendsNothing();
    void shiftOnOkChangesAllUniversalChannels();
    void channelJoinsTheGroupOfItsNewFunction();
    void channelStaysHiddenWhileNoStatusComes();

private:
    ChannelFixture &fixture() { return *m_fixture; }
    QWidget *openDialog(int module, char channel);
    void choose(QWidget *dialog, const char *radioButton, Qt::KeyboardModifiers keys = Qt::NoModifier);
    QLabel *label(int module, const char *name) const
    {
        return childByName<QLabel>(m_fixture->row(module), name);
    }

    std::unique_ptr<ChannelFixture> m_fixture;
};

void TstFunctionChange::init()
{
    m_fixture = std::make_unique<ChannelFixture>();
    m_fixture->startChain(kChain);
}

QWidget *TstFunctionChange::openDialog(int module, char channel)
{
    auto *button =
        childByName<QPushButton>(fixture().row(module), channel == 'A' ? "pushButton_ChA" : "pushButton_ChB");
    QTest::mouseClick(button, Qt::LeftButton);
    return fixture().openDialog("ChangeModuleType");
}

void TstFunctionChange::choose(QWidget *dialog, const char *radioButton, Qt::KeyboardModifiers keys)
{
    QVERIFY(dialog);
    gestures::check(childByName<QAbstractButton>(dialog, radioButton));
    QTest::mouseClick(childByName<QAbstractButton>(dialog, "OkBtn"), Qt::LeftButton, keys);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
}

void TstFunctionChange::dialogOffersTheFunctionOfTheChannel_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<char>("channel");
    QTest::addColumn<QByteArray>("checked");
    QTest::addColumn<QString>("title");
    QTest::newRow("strain gauge") << 2 << 'A' << QByteArray("strainGBtn") << "ANALOG Module, Channel 3";
    QTest::newRow("voltage") << 2 << 'B' << QByteArray("voltageBtn") << "ANALOG Module, Channel 4";
    QTest::newRow("potentiometer") << 4 << 'A' << QByteArray("potBtn") << "ANALOG Module, Channel 7";
    QTest::newRow("IEPE") << 4 << 'B' << QByteArray("iepeBtn") << "ANALOG Module, Channel 8";
}

void TstFunctionChange::dialogOffersTheFunctionOfTheChannel()
{
    QFETCH(int, module);
    QFETCH(char, channel);
    QFETCH(QByteArray, checked);
    QFETCH(QString, title);
    QWidget *dialog = openDialog(module, channel);
    QVERIFY(dialog);
    QVERIFY(childByName<QAbstractButton>(dialog, checked)->isChecked());
    QCOMPARE(childByName<QWidget>(dialog, "groupBox")->property("title").toString(), title);
}

void TstFunctionChange::channelIsHiddenUntilItsNewListsAreThere()
{
    QPointer<QWidget> row = fixture().row(2);
    choose(openDialog(2, 'A'), "iepeBtn");
    QVERIFY(!fixture().strip(2, 'A')->isVisible());
    for (const char *header : {"label_Channel", "label_FirstInfoDevice", "label_SecondInfoDevice",
                               "label_Shunt", "label_Filter", "label_ManualOffset", "label_RevPol"})
        QVERIFY2(!label(2, header)->isVisible(), header);
    QCOMPARE(label(2, "ChDeviceLabel_A")->text(), QStringLiteral("IEPE/ICP®"));
    QVERIFY(fixture().strip(2, 'B')->isVisible());

    WAIT_VERIFY(fixture().strip(2, 'A')->isVisible());
    QCOMPARE(fixture().row(2), row.data());
    QCOMPARE(fixture().commands(), QStringList{"1e000000030300"});
    QCOMPARE(fixture().changes(), (QStringList{"2A function=3", "2A range=0", "2A filter=2500"}));
    QCOMPARE(items(fixture().typeBox(2, 'A')), (QStringList{"4 mA", "8 mA", "Voltage AC"}));
    QCOMPARE(items(fixture().rangeBox(2, 'A')), (QStringList{"0.1", "0.5", "1", "5", "10"}));
    QCOMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(label(2, "label_FirstInfoDevice")->text(), QStringLiteral("Input"));
    QCOMPARE(label(2, "label_SecondInfoDevice")->text(), QStringLiteral("Range  [±V]   "));
    QVERIFY(label(2, "label_Filter")->isVisible());
    QVERIFY(!label(2, "label_Shunt")->isVisible());
    QVERIFY(!fixture().button(2, 'A', "checkBox_Shunt_Pos")->isVisible());
    QVERIFY(!fixture().button(2, 'A', "pushButton_ManualOffset")->isVisible());
    QCOMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstFunctionChange::otherChannelKeepsItsState()
{
    gestures::pick(fixture().rangeBox(2, 'A'), 5);
    choose(openDialog(2, 'B'), "potBtn");
    WAIT_VERIFY(fixture().strip(2, 'B')->isVisible());
    // The status came within the second of channel A, which holds its value.
    QCOMPARE(fixture().rangeBox(2, 'A')->styleSheet(), styles::kSent);
    QCOMPARE(fixture().rangeBox(2, 'A')->currentText(), QStringLiteral("20"));
    QCOMPARE(items(fixture().typeBox(2, 'B')), (QStringList{"3-wire", "2-wire"}));
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().changes(), (QStringList{"2A range=5", "2B function=6"}));
    QCOMPARE(fixture().mismatches(), QStringList());
}

void TstFunctionChange::voltageBecomesStrainGauge()
{
    choose(openDialog(2, 'B'), "strainGBtn");
    WAIT_VERIFY(fixture().strip(2, 'B')->isVisible());
    QCOMPARE(fixture().commands(), QStringList{"1e000000040100"});
    QVERIFY(fixture().button(2, 'B', "checkBox_Shunt_Neg")->isVisible());
    QVERIFY(fixture().button(2, 'B', "pushButton_ManualOffset")->isVisible());
    QVERIFY(label(2, "label_Shunt_2")->isVisible());
    QCOMPARE(label(2, "label_FirstInfoDevice_2")->text(), QStringLiteral("BridgeType  [Ohm]"));
    QCOMPARE(label(2, "ChDeviceLabel_B")->text(), QStringLiteral("Strain Gauge"));
    QCOMPARE(items(fixture().rangeBox(2, 'B')).size(), 8);
    QTest::mouseClick(fixture().button(2, 'B', "checkBox_Shunt_Neg"), Qt::LeftButton);
    WAIT_COMPARE(fixture().commands().mid(1), QStringList{"280000000489"});
}

void TstFunctionChange::cancelSendsNothing()
{
    QWidget *dialog = openDialog(4, 'A');
    QVERIFY(dialog);
    gestures::check(childByName<QAbstractButton>(dialog, "voltageBtn"));
    QTest::mouseClick(childByName<QAbstractButton>(dialog, "CancelBtn"), Qt::LeftButton);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(fixture().commands(), QStringList());
    QVERIFY(fixture().strip(4, 'A')->isVisible());
    // The choice that was not taken is forgotten.
    dialog = openDialog(4, 'A');
    QVERIFY(dialog);
    QVERIFY(childByName<QAbstractButton>(dialog, "potBtn")->isChecked());
}

void TstFunctionChange::shiftOnOkChangesAllUniversalChannels()
{
    choose(openDialog(2, 'A'), "voltageBtn", Qt::ShiftModifier);
    for (const int module : {2, 4}) {
        QVERIFY(!fixture().strip(module, 'A')->isVisible());
        QVERIFY(!fixture().strip(module, 'B')->isVisible());
        QCOMPARE(label(module, "ChDeviceLabel_A")->text(), QStringLiteral("Voltage"));
        QCOMPARE(label(module, "ChDeviceLabel_B")->text(), QStringLiteral("Voltage"));
    }
    for (const int module : {1, 3})
        QVERIFY(fixture().strip(module, 'A')->isVisible());
    for (const int module : {2, 4}) {
        WAIT_VERIFY(fixture().strip(module, 'A')->isVisible());
        WAIT_VERIFY(fixture().strip(module, 'B')->isVisible());
    }
    QCOMPARE(fixture().commands(),
             (QStringList{"1e000000030200", "1e000000040200", "1e000000070200", "1e000000080200"}));
    QCOMPARE(fixture().changes(), (QStringList{"2A function=2", "2A range=0", "4A function=2",
                                               "4B function=2", "4B filter=1000"}));
    for (const int module : {2, 4}) {
        for (const char channel : {'A', 'B'})
            QCOMPARE(items(fixture().typeBox(module, channel)), (QStringList{"DC", "AC", "Differential"}));
    }
    WAIT_COMPARE(fixture().mismatches(), QStringList());
}

void TstFunctionChange::channelJoinsTheGroupOfItsNewFunction()
{
    choose(openDialog(4, 'A'), "voltageBtn");
    WAIT_VERIFY(fixture().strip(4, 'A')->isVisible());
    fixture().forgetChanges();
    gestures::pick(fixture().rangeBox(3, 'A'), 5, Qt::ShiftModifier);
    WAIT_COMPARE(fixture().changes(), (QStringList{"2B range=5", "3A range=5", "3B range=5", "4A range=5"}));
}

void TstFunctionChange::channelStaysHiddenWhileNoStatusComes()
{
    QString error;
    const QString script = QStringLiteral("unknown-code code=0x12 argument=4 count=1");
    QVERIFY(fixture().device->faults().parse(script, &error));
    const int asked = fixture().device->requestCount(0x12);
    choose(openDialog(4, 'B'), "voltageBtn");
    WAIT_COMPARE(fixture().device->requestCount(0x12), asked + 1);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QVERIFY(!fixture().strip(4, 'B')->isVisible());
    // The next status of the module, whatever it is fetched for, brings the channel back.
    gestures::pick(fixture().rangeBox(4, 'A'), 1);
    fixture().time.skip(1s);
    WAIT_VERIFY(fixture().strip(4, 'B')->isVisible());
    QCOMPARE(fixture().commands(), (QStringList{"1e000000080200", "220000000701"}));
    WAIT_COMPARE(fixture().mismatches(), QStringList());
}

QTEST_MAIN(TstFunctionChange)

#include "tst_functionchange.moc"
