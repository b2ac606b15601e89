#include "panel.h"
#include "protocol/records/datagrams.h"
#include "support/messagecatcher.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

const QStringList kNothing;

/// Names of the cells of the table that show as the present one.
QStringList marked(const Panel &panel)
{
    QStringList names;
    const auto cells = panel.ratePart<QWidget>("rateTable")->findChildren<QPushButton *>();
    for (const QPushButton *cell : cells) {
        if (cell->styleSheet() == QStringLiteral("border: 2px solid blue"))
            names.append(cell->objectName());
    }
    return names;
}

SystemSettings someSettings()
{
    SystemSettings settings;
    settings.modules = 5;
    settings.channels = 10;
    settings.bitRate = QStringLiteral("2500 16");
    settings.samplingRate = QStringLiteral("3000");
    settings.poweringMode = QStringLiteral("fixed");
    settings.dataTransmission = QStringLiteral("PCM");
    return settings;
}

/// Six values that differ from those of the start.
void setAll(ModuleSysSettings_Ctrllr &controller)
{
    controller.setModules(5);
    controller.setChannels(10);
    controller.setBitRate(QStringLiteral("2500 16"));
    controller.setSamplingRate(QStringLiteral("3000"));
    controller.setPoweringMode(QStringLiteral("fixed"));
    controller.setDataTransmission(QStringLiteral("PCM"));
}

} // namespace

class TstModuleSysSettingsCtrllr : public QObject
{
    Q_OBJECT

private slots:
    void beginsWithZerosAndEmptyTexts();
    void beginsWithTheSettingsGiven();
    void countsAreDecimalNumbers_data();
    void countsAreDecimalNumbers();
    void systemOf5ModulesShows5And10();
    void textsGoToTheirFields();
    void textsAreShownAsTheyAre();
    void valuesAreKept();
    void emptyTextsLeaveTheCounts();
    void ratesAreShownAtOnceEachTime();
    void bitRateMarksTheTable();
    void samplingRateMarksNothing();
    void settersTellNobody();
    void chosenRateIsPassedOnAlone();
    void tableIsEnabledAndDisabled();
    void addressesAndMessagesArePassedOn();
    void loadedAddressGoesToThePanel();
    void onShowsFirstAndSendsThen();
    void offShowsFirstAndSendsThen();
    void onAndOffAreSentEachTime();
    void onWithoutModulesIsSent();
    void fieldsOfTheRequestAreExact_data();
    void fieldsOfTheRequestAreExact();
};

void TstModuleSysSettingsCtrllr::beginsWithZerosAndEmptyTexts()
{
    const Panel panel;
    QCOMPARE(panel.shown(), QStringLiteral("0|0||||"));
}

void TstModuleSysSettingsCtrllr::beginsWithTheSettingsGiven()
{
    const Panel panel(someSettings());
    QCOMPARE(panel.shown(), QStringLiteral("5|10|2500 16|3000|fixed|PCM"));
}

void TstModuleSysSettingsCtrllr::countsAreDecimalNumbers_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("0") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("128") << 128;
    QTest::newRow("65535") << 65535;
}

void TstModuleSysSettingsCtrllr::countsAreDecimalNumbers()
{
    QFETCH(int, count);
    Panel panel(someSettings());
    panel.controller->setModules(count);
    QCOMPARE(panel.label("label_ModulesNumber"), QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(panel.label("label_ChannelsNumber"), QStringLiteral("10"));
    panel.controller->setChannels(count);
    QCOMPARE(panel.label("label_ChannelsNumber"), QString::fromLatin1(QTest::currentDataTag()));
}

void TstModuleSysSettingsCtrllr::systemOf5ModulesShows5And10()
{
    Panel panel;
    panel.controller->setModules(5);
    panel.controller->setChannels(10);
    QCOMPARE(panel.shown(), QStringLiteral("5|10||||"));
}

void TstModuleSysSettingsCtrllr::textsGoToTheirFields()
{
    Panel panel;
    panel.controller->setBitRate(QStringLiteral("2500 (16ch)"));
    QCOMPARE(panel.shown(), QStringLiteral("0|0|2500 (16ch)|||"));
    panel.controller->setSamplingRate(QStringLiteral("3000"));
    QCOMPARE(panel.shown(), QStringLiteral("0|0|2500 (16ch)|3000||"));
    panel.controller->setPoweringMode(QStringLiteral("fixed"));
    QCOMPARE(panel.shown(), QStringLiteral("0|0|2500 (16ch)|3000|fixed|"));
    panel.controller->setDataTransmission(QStringLiteral("PCM"));
    QCOMPARE(panel.shown(), QStringLiteral("0|0|2500 (16ch)|3000|fixed|PCM"));
}

void TstModuleSysSettingsCtrllr::textsAreShownAsTheyAre()
{
    Panel panel;
    const QString odd = QString::fromUtf8("<b>x</b> & µ");
    panel.controller->setBitRate(odd);
    panel.controller->setSamplingRate(odd);
    panel.controller->setPoweringMode(odd);
    panel.controller->setDataTransmission(odd);
    QCOMPARE(panel.shown(), QStringList({"0", "0", odd, odd, odd, odd}).join('|'));
    for (const char *name : {"label_PoweringMode", "label_DataTransmission"})
        QCOMPARE(panel.child<QLabel>(name)->textFormat(), Qt::PlainText);
}

void TstModuleSysSettingsCtrllr::valuesAreKept()
{
    Panel panel;
    setAll(*panel.controller);
    const SystemSettings &data = panel.controller->data();
    QCOMPARE(data.modules, 5);
    QCOMPARE(data.channels, 10);
    QCOMPARE(data.bitRate, QStringLiteral("2500 16"));
    QCOMPARE(data.samplingRate, QStringLiteral("3000"));
    QCOMPARE(data.poweringMode, QStringLiteral("fixed"));
    QCOMPARE(data.dataTransmission, QStringLiteral("PCM"));
}

void TstModuleSysSettingsCtrllr::emptyTextsLeaveTheCounts()
{
    Panel panel(someSettings());
    panel.controller->setBitRate(QString());
    panel.controller->setSamplingRate(QString());
    panel.controller->setPoweringMode(QString());
    panel.controller->setDataTransmission(QString());
    QCOMPARE(panel.shown(), QStringLiteral("5|10||||"));
}

void TstModuleSysSettingsCtrllr::ratesAreShownAtOnceEachTime()
{
    Panel panel;
    const MessageCatcher log;
    for (const char *text : {"1", "2", "3"}) {
        panel.controller->setBitRate(QString::fromLatin1(text));
        panel.controller->setSamplingRate(QString::fromLatin1(text));
        QCOMPARE(panel.edit("lineEdit_BitRate"), QString::fromLatin1(text));
        QCOMPARE(panel.edit("lineEdit_SamplingRate"), QString::fromLatin1(text));
    }
    panel.time.advance(10000); // no timer has anything to say
    QCOMPARE(panel.shown(), QStringLiteral("0|0|3|3||"));
    QVERIFY(!log.containsText(QStringLiteral("***Really Mad Nothing is initialized")));
}

void TstModuleSysSettingsCtrllr::bitRateMarksTheTable()
{
    Panel panel;
    emit panel.controller->Signal_EnableSamplingRate();
    panel.controller->setBitRate(QStringLiteral("2500 (16ch)"));
    QCOMPARE(marked(panel), QStringList{"16,2500"});
    QCOMPARE(panel.take(), kNothing);
}

void TstModuleSysSettingsCtrllr::samplingRateMarksNothing()
{
    Panel panel;
    emit panel.controller->Signal_EnableSamplingRate();
    panel.controller->setSamplingRate(QStringLiteral("2500 (16ch)"));
    QCOMPARE(marked(panel), kNothing);
}

void TstModuleSysSettingsCtrllr::settersTellNobody()
{
    Panel panel;
    emit panel.controller->Signal_EnableSamplingRate();
    setAll(*panel.controller);
    emit panel.controller->Signal_DisableSamplingRate();
    panel.time.advance(10000);
    QCOMPARE(panel.take(), kNothing);
}

void TstModuleSysSettingsCtrllr::chosenRateIsPassedOnAlone()
{
    Panel panel;
    emit panel.controller->Signal_EnableSamplingRate();
    panel.controller->setBitRate(QStringLiteral("1250 8"));
    panel.view()->bitRateExec(false);
    QTest::mouseClick(panel.ratePart<QPushButton>("16,2500"), Qt::LeftButton);
    QCOMPARE(panel.take(), QStringList{"rates 2500 16"});
    // What the device runs at is shown when it reports it.
    QCOMPARE(panel.edit("lineEdit_BitRate"), QStringLiteral("1250 8"));
}

void TstModuleSysSettingsCtrllr::tableIsEnabledAndDisabled()
{
    Panel panel;
    const auto *cell = panel.ratePart<QPushButton>("16,2500");
    QVERIFY(!cell->isEnabled());
    emit panel.controller->Signal_EnableSamplingRate();
    QVERIFY(cell->isEnabled());
    emit panel.controller->Signal_DisableSamplingRate();
    QVERIFY(!cell->isEnabled());
    emit panel.controller->Signal_EnableSamplingRate();
    QVERIFY(cell->isEnabled());
}

void TstModuleSysSettingsCtrllr::addressesAndMessagesArePassedOn()
{
    Panel panel;
    emit panel.view()->Signal_ZrtGateway(QStringLiteral("10.0.0.1"), QStringLiteral("5000"));
    emit panel.view()->debugMessage(QStringLiteral("hello"));
    emit panel.view()->samplingRates(QStringLiteral("625"), QStringLiteral("2"));
    QCOMPARE(panel.take(), (QStringList{"address in use 10.0.0.1 5000", "debug hello", "rates 625 2"}));
}

void TstModuleSysSettingsCtrllr::loadedAddressGoesToThePanel()
{
    Panel panel;
    QSignalSpy loaded(panel.view(), &ModuleSysSettings_View::Signal_loadGateway);
    emit panel.controller->Signal_LoadGateway(QStringLiteral("10.0.0.1"), QStringLiteral("5000"));
    QCOMPARE(loaded.count(), 1);
    QCOMPARE(loaded.at(0), (QVariantList{"10.0.0.1", "5000"}));
    QCOMPARE(panel.take(), kNothing);
}

void TstModuleSysSettingsCtrllr::onShowsFirstAndSendsThen()
{
    Panel panel(someSettings());
    QTest::mouseClick(panel.child<QPushButton>("loadPreselBtn"), Qt::LeftButton);
    QCOMPARE(panel.take(), (QStringList{"group 1 10 0", "request"}));
}

void TstModuleSysSettingsCtrllr::offShowsFirstAndSendsThen()
{
    Panel panel(someSettings());
    QTest::mouseClick(panel.child<QPushButton>("loadPreselBtn_off"), Qt::LeftButton);
    QCOMPARE(panel.take(), (QStringList{"group 1 11 0", "request"}));
}

void TstModuleSysSettingsCtrllr::onAndOffAreSentEachTime()
{
    Panel panel(someSettings());
    for (int i = 0; i < 2; ++i)
        QTest::mouseClick(panel.child<QPushButton>("loadPreselBtn"), Qt::LeftButton);
    for (int i = 0; i < 2; ++i)
        QTest::mouseClick(panel.child<QPushButton>("loadPreselBtn_off"), Qt::LeftButton);
    QCOMPARE(panel.take(), (QStringList{"group 1 10 0", "request", "group 1 10 0", "request", "group 1 11 0",
                                        "request", "group 1 11 0", "request"}));
}

void TstModuleSysSettingsCtrllr::onWithoutModulesIsSent()
{
    Panel panel; // no module of any kind
    QTest::mouseClick(panel.child<QPushButton>("loadPreselBtn"), Qt::LeftButton);
    QCOMPARE(panel.take(), (QStringList{"group 1 10 0", "request"}));
}

void TstModuleSysSettingsCtrllr::fieldsOfTheRequestAreExact_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("shuntState");
    QTest::newRow("On") << "loadPreselBtn" << 0x8F;
    QTest::newRow("Off") << "loadPreselBtn_off" << 0x8E;
}

void TstModuleSysSettingsCtrllr::fieldsOfTheRequestAreExact()
{
    QFETCH(QString, button);
    QFETCH(int, shuntState);
    Panel panel(someSettings());
    QTest::mouseClick(panel.child<QPushButton>(button.toLatin1().constData()), Qt::LeftButton);
    QCOMPARE(panel.requests.size(), 1);
    const QVariant request = panel.requests.first();
    QVERIFY(request.canConvert<DatagramT1>());
    DatagramT1 expected;
    expected.module = 1;
    expected.channel = 1;
    expected.data.bridgeTypeIndex = 0;
    expected.data.gainIndex = 0;
    expected.data.autozero = 0;
    expected.data.manualOffset = std::string();
    expected.data.filterValue = 0;
    expected.data.reversePolarity = false;
    expected.data.shuntState = static_cast<quint8>(shuntState);
    expected.data.level = 0;
    expected.data.selector = 7;
    QCOMPARE(request.value<DatagramT1>(), expected);
}

QTEST_MAIN(TstModuleSysSettingsCtrllr)
#include "tst_modulesyssettings_ctrllr.moc"
