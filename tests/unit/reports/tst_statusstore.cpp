#include "reportrecords.h"
#include "support/messagecatcher.h"

#include <QtTest>

/// Filing of records by address, and what the store says of the system.
class TstStatusStore : public QObject
{
    Q_OBJECT

private slots:
    void beginsEmpty();

    void systemIsKept();
    void fastSystemIsKept();

    void moduleIsFiledUnderItsAddress_data();
    void moduleIsFiledUnderItsAddress();
    void moduleBeyondTheTableChangesNothing_data();
    void moduleBeyondTheTableChangesNothing();
    void laterModuleTakesThePlaceOfTheEarlierOne();

    void fastEntriesAreFiledFromZeroOn();
    void noFastEntryIsNoRecord();
    void fewerFastEntriesLeaveTheOthers();
    void fastEntriesBeyondTheTableAreDropped();

    void eepromTextIsFiled();
    void eepromTextBeyondTheTableIsDropped();

    void recordsBeyondTheTableAreEmpty_data();
    void recordsBeyondTheTableAreEmpty();

    void fullNeedsEachOfTheFourKinds_data();
    void fullNeedsEachOfTheFourKinds();

    void powerModuleNeedsItsByteAndASerialNumber_data();
    void powerModuleNeedsItsByteAndASerialNumber();
    void serialNumberOfAnotherModuleIsNotThePowerModules();

    void analogModulesAreAtMost128_data();
    void analogModulesAreAtMost128();
};

void TstStatusStore::beginsEmpty()
{
    const StatusStore store;
    QVERIFY(!store.haveSystem);
    QVERIFY(!store.haveFastSystem);
    QVERIFY(!store.haveModule);
    QVERIFY(!store.haveFastModule);
    QVERIFY(!store.isFull());
    QVERIFY(!store.hasPowerModule());
    QCOMPARE(store.analogModuleCount(), 0);
    for (int address = 0; address < 130; ++address) {
        QCOMPARE(store.module(address), Module_Status());
        QCOMPARE(store.fastModule(address), Fast_Module_Status());
    }
}

void TstStatusStore::systemIsKept()
{
    StatusStore store;
    store.setSystem(reportrecords::system(5));
    QCOMPARE(store.systemStatus, reportrecords::system(5));
    QVERIFY(store.haveSystem);
    QVERIFY(!store.haveFastSystem);
    QVERIFY(!store.haveModule);
    QVERIFY(!store.haveFastModule);
    store.setSystem(System_Status());
    QCOMPARE(store.systemStatus, System_Status());
    QVERIFY(store.haveSystem);
}

void TstStatusStore::fastSystemIsKept()
{
    StatusStore store;
    Fast_System_Status status;
    status.voltageRaw = 2805;
    status.outputVoltageRaw = 1234;
    store.setFastSystem(status);
    QCOMPARE(store.fastSystemStatus, status);
    QVERIFY(store.haveFastSystem);
    QVERIFY(!store.haveSystem);
    QVERIFY(!store.haveModule);
    QVERIFY(!store.haveFastModule);
}

void TstStatusStore::moduleIsFiledUnderItsAddress_data()
{
    QTest::addColumn<int>("address");
    QTest::newRow("controller") << 0;
    QTest::newRow("first analog module") << 1;
    QTest::newRow("last analog module") << 128;
    QTest::newRow("power module") << 129;
}

void TstStatusStore::moduleIsFiledUnderItsAddress()
{
    QFETCH(int, address);
    StatusStore store;
    const Module_Status module = reportrecords::module(static_cast<quint8>(address), 1);
    QVERIFY(store.setModule(module));
    QVERIFY(store.haveModule);
    QVERIFY(!store.haveSystem);
    QVERIFY(!store.haveFastSystem);
    QVERIFY(!store.haveFastModule);
    for (int other = 0; other < 130; ++other)
        QCOMPARE(store.module(other), other == address ? module : Module_Status());
}

void TstStatusStore::moduleBeyondTheTableChangesNothing_data()
{
    QTest::addColumn<int>("address");
    QTest::newRow("by one") << 130;
    QTest::newRow("last that fits the byte") << 255;
}

void TstStatusStore::moduleBeyondTheTableChangesNothing()
{
    QFETCH(int, address);
    StatusStore store;
    QVERIFY(!store.setModule(reportrecords::module(static_cast<quint8>(address), 1)));
    QVERIFY(!store.haveModule);
    for (int other = 0; other < 130; ++other)
        QCOMPARE(store.module(other), Module_Status());
}

void TstStatusStore::laterModuleTakesThePlaceOfTheEarlierOne()
{
    StatusStore store;
    QVERIFY(store.setModule(reportrecords::module(7, 1)));
    QVERIFY(store.setModule(reportrecords::module(7, 4)));
    QCOMPARE(store.module(7), reportrecords::module(7, 4));
}

void TstStatusStore::fastEntriesAreFiledFromZeroOn()
{
    StatusStore store;
    store.setFastModules({reportrecords::fast(2400, 160), reportrecords::fast(2300, 150, 3)});
    QVERIFY(store.haveFastModule);
    QVERIFY(!store.haveModule);
    QVERIFY(!store.haveSystem);
    QVERIFY(!store.haveFastSystem);
    QCOMPARE(store.fastModule(0), reportrecords::fast(2400, 160));
    QCOMPARE(store.fastModule(1), reportrecords::fast(2300, 150, 3));
    QCOMPARE(store.fastModule(2), Fast_Module_Status());
}

void TstStatusStore::noFastEntryIsNoRecord()
{
    StatusStore store;
    store.setFastModules({});
    QVERIFY(!store.haveFastModule);
    store.setFastModules({reportrecords::fast(2400, 160)});
    store.setFastModules({});
    QVERIFY(store.haveFastModule);
    QCOMPARE(store.fastModule(0), reportrecords::fast(2400, 160));
}

void TstStatusStore::fewerFastEntriesLeaveTheOthers()
{
    StatusStore store;
    store.setFastModules(QVector<Fast_Module_Status>(130, reportrecords::fast(2400, 160)));
    store.setFastModules({reportrecords::fast(2300, 150)});
    QCOMPARE(store.fastModule(0), reportrecords::fast(2300, 150));
    QCOMPARE(store.fastModule(1), reportrecords::fast(2400, 160));
    QCOMPARE(store.fastModule(129), reportrecords::fast(2400, 160));
}

void TstStatusStore::fastEntriesBeyondTheTableAreDropped()
{
    QVector<Fast_Module_Status> entries(300, reportrecords::fast(100, 100));
    entries[129] = reportrecords::fast(2400, 160);
    StatusStore store;
    store.setFastModules(entries);
    QVERIFY(store.haveFastModule);
    QCOMPARE(store.fastModule(128), reportrecords::fast(100, 100));
    QCOMPARE(store.fastModule(129), reportrecords::fast(2400, 160));
    QCOMPARE(store.fastModule(130), Fast_Module_Status());
}

void TstStatusStore::eepromTextIsFiled()
{
    StatusStore store;
    store.setEepromText(QStringLiteral("first"), 0);
    store.setEepromText(QStringLiteral("last"), 129);
    QCOMPARE(store.eepromText.front(), QStringLiteral("first"));
    QCOMPARE(store.eepromText.back(), QStringLiteral("last"));
    QCOMPARE(store.eepromText.at(1), QString());
    QVERIFY(!store.haveModule);
}

void TstStatusStore::eepromTextBeyondTheTableIsDropped()
{
    StatusStore store;
    for (const int address : {-1, 130, 255, 100000, -100000})
        store.setEepromText(QStringLiteral("lost"), address);
    for (const QString &text : store.eepromText)
        QCOMPARE(text, QString());
}

void TstStatusStore::recordsBeyondTheTableAreEmpty_data()
{
    QTest::addColumn<int>("address");
    QTest::newRow("below") << -1;
    QTest::newRow("beyond by one") << 130;
    QTest::newRow("255") << 255;
}

void TstStatusStore::recordsBeyondTheTableAreEmpty()
{
    QFETCH(int, address);
    StatusStore store;
    store.setModule(reportrecords::module(0, 100));
    store.setModule(reportrecords::module(129, 120));
    store.setFastModules(QVector<Fast_Module_Status>(130, reportrecords::fast(2400, 160)));
    QCOMPARE(store.module(address), Module_Status());
    QCOMPARE(store.fastModule(address), Fast_Module_Status());
}

void TstStatusStore::fullNeedsEachOfTheFourKinds_data()
{
    QTest::addColumn<int>("missing");
    QTest::newRow("system") << 0;
    QTest::newRow("fast system") << 1;
    QTest::newRow("module") << 2;
    QTest::newRow("fast module") << 3;
    QTest::newRow("none") << 4;
}

void TstStatusStore::fullNeedsEachOfTheFourKinds()
{
    QFETCH(int, missing);
    StatusStore store;
    if (missing != 0)
        store.setSystem(System_Status());
    if (missing != 1)
        store.setFastSystem(Fast_System_Status());
    if (missing != 2)
        QVERIFY(store.setModule(Module_Status()));
    if (missing != 3)
        store.setFastModules({Fast_Module_Status()});
    QCOMPARE(store.isFull(), missing == 4);
}

void TstStatusStore::powerModuleNeedsItsByteAndASerialNumber_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<QString>("serialNumber");
    QTest::addColumn<bool>("present");
    QTest::addColumn<int>("lines");
    QTest::newRow("first byte") << 0 << "129" << true << 0;
    QTest::newRow("last byte") << 9 << "129" << true << 0;
    QTest::newRow("no byte") << -1 << "129" << false << 0;
    QTest::newRow("no byte and no serial number") << -1 << "" << false << 0;
    QTest::newRow("no serial number") << 4 << "" << false << 1;
}

void TstStatusStore::powerModuleNeedsItsByteAndASerialNumber()
{
    QFETCH(int, byte);
    QFETCH(QString, serialNumber);
    QFETCH(int, lines);
    StatusStore store;
    if (byte >= 0)
        store.systemStatus.sModules.at(static_cast<std::size_t>(byte)) = 120;
    Module_Status power = reportrecords::power();
    power.serialNumber = serialNumber;
    QVERIFY(store.setModule(power));
    const MessageCatcher log;
    QTEST(store.hasPowerModule(), "present");
    QCOMPARE(log.lines().size(), lines);
    QCOMPARE(log.lines(QtDebugMsg).count(QStringLiteral("Power Module Empty")), lines);
}

void TstStatusStore::serialNumberOfAnotherModuleIsNotThePowerModules()
{
    StatusStore store = reportrecords::chain();
    store.setModule(reportrecords::module(128, 1));
    store.systemStatus.sModules[1] = 120;
    const MessageCatcher log;
    QVERIFY(!store.hasPowerModule());
    QCOMPARE(log.lines(), QStringList{QStringLiteral("Power Module Empty")});
}

void TstStatusStore::analogModulesAreAtMost128_data()
{
    QTest::addColumn<int>("claimed");
    QTest::addColumn<int>("counted");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("all") << 128 << 128;
    QTest::newRow("one too many") << 129 << 128;
    QTest::newRow("200") << 200 << 128;
    QTest::newRow("most that fits the field") << 65535 << 128;
}

void TstStatusStore::analogModulesAreAtMost128()
{
    QFETCH(int, claimed);
    StatusStore store;
    store.setSystem(reportrecords::system(static_cast<quint16>(claimed)));
    QTEST(store.analogModuleCount(), "counted");
}

QTEST_GUILESS_MAIN(TstStatusStore)
#include "tst_statusstore.moc"
