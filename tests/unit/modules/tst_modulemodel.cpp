#include "modules/common/modulemodel.h"

#include <QtTest>

Q_DECLARE_METATYPE(HeaderForm)
Q_DECLARE_METATYPE(ModuleFamily)

class TstModuleModel : public QObject
{
    Q_OBJECT

private slots:
    void addressFollowsTheHeaderForm_data();
    void addressFollowsTheHeaderForm();
    void addressOfAFormBeyondTheTableIsUnknown();
    void constructionIsLogged_data();
    void constructionIsLogged();
    void beginsWithTheIdentification();
    void readsChannelsByNumber();
    void otherChannelsReadAsEmpty_data();
    void otherChannelsReadAsEmpty();
};

void TstModuleModel::addressFollowsTheHeaderForm_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QString>("address");
    QTest::newRow("1 controller") << HeaderForm::Controller << "C17";
    QTest::newRow("2 power") << HeaderForm::Power << "P17";
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge << "17";
    QTest::newRow("4 voltage") << HeaderForm::Voltage << "17";
    QTest::newRow("5 thermo") << HeaderForm::Thermo << "17";
    QTest::newRow("6 universal") << HeaderForm::Universal << "unknown";
}

void TstModuleModel::addressFollowsTheHeaderForm()
{
    QFETCH(HeaderForm, form);
    QTEST(moduleAddress(form, 17), "address");
    ModuleIdentification identification;
    identification.headerForm = form;
    const ModuleModel model(ModuleFamily::Type1, identification, 17, 33);
    QTEST(model.address, "address");
    QCOMPARE(model.headerForm, form);
    QCOMPARE(model.moduleNumber, 17);
}

void TstModuleModel::addressOfAFormBeyondTheTableIsUnknown()
{
    QCOMPARE(moduleAddress(static_cast<HeaderForm>(0), 1), QStringLiteral("unknown"));
    QCOMPARE(moduleAddress(static_cast<HeaderForm>(7), 1), QStringLiteral("unknown"));
}

void TstModuleModel::constructionIsLogged_data()
{
    QTest::addColumn<ModuleFamily>("family");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("1") << ModuleFamily::Type1 << QByteArray("Model Type 1 created...");
    QTest::newRow("2") << ModuleFamily::Type2 << QByteArray("Model Type 2 created...");
    QTest::newRow("3") << ModuleFamily::Type3 << QByteArray("Model Type 3 created...");
    QTest::newRow("4") << ModuleFamily::Type4 << QByteArray("Model Type 4 created...");
}

void TstModuleModel::constructionIsLogged()
{
    QFETCH(ModuleFamily, family);
    QFETCH(QByteArray, line);
    QTest::ignoreMessage(QtDebugMsg, line.constData());
    const ModuleModel model(family, ModuleIdentification(), 1, 1);
}

void TstModuleModel::beginsWithTheIdentification()
{
    const ModuleModel model(ModuleFamily::Type1, ModuleIdentification(), 1, 1);
    QCOMPARE(model.name, QStringLiteral("Unknown"));
    QCOMPARE(model.serialNumber, QStringLiteral("XXXXXXX"));
    QCOMPARE(model.firmware1, QStringLiteral("XX.XX.XX"));
    QCOMPARE(model.firmware2, QStringLiteral("XX.XX.XX"));
    QCOMPARE(model.hardware, QStringLiteral("XX.XX"));
    QCOMPARE(model.voltage, 0.0F);
    QCOMPARE(model.temperature, 0.0F);
    QCOMPARE(model.selftest, quint8(0));
}

void TstModuleModel::readsChannelsByNumber()
{
    ModuleModel model(ModuleFamily::Type1, ModuleIdentification(), 3, 5);
    model.channel(Channel::A).gainIndex = 4;
    model.channel(Channel::B).gainIndex = 9;
    QCOMPARE(model.channel(1).gainIndex, 4);
    QCOMPARE(model.channel(2).gainIndex, 9);
    QCOMPARE(model.channel(1).channelNumber, 5);
    QCOMPARE(model.channel(2).channelNumber, 6);
}

void TstModuleModel::otherChannelsReadAsEmpty_data()
{
    QTest::addColumn<int>("channel");
    QTest::newRow("0") << 0;
    QTest::newRow("3") << 3;
    QTest::newRow("-1") << -1;
}

void TstModuleModel::otherChannelsReadAsEmpty()
{
    QFETCH(int, channel);
    ModuleModel model(ModuleFamily::Type1, ModuleIdentification(), 3, 5);
    for (const Channel own : {Channel::A, Channel::B}) {
        model.channel(own).bridgeTypeList = QStringList{QStringLiteral("Full")};
        model.channel(own).bridgeTypeIndex = 1;
        model.channel(own).gainIndex = 2;
        model.channel(own).autozero = 1;
        model.channel(own).manualOffset = QStringLiteral("1.5");
        model.channel(own).filterValue = 100;
    }
    const ChannelRecord other = model.channel(channel);
    QVERIFY(other.bridgeTypeList.isEmpty());
    QCOMPARE(other.channelNumber, 0);
    QCOMPARE(other.bridgeTypeIndex, 0);
    QCOMPARE(other.gainIndex, 0);
    QCOMPARE(other.autozero, quint8(0));
    QCOMPARE(other.manualOffset, QString());
    QCOMPARE(other.filterValue, 0);
}

QTEST_APPLESS_MAIN(TstModuleModel)
#include "tst_modulemodel.moc"
