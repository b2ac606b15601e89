#include "reportmanagerfixture.h"
#include "reports/sensormodel.h"

#include <QtTest>

/// Filing of records, and the table of the report dialog that follows them.
class TstModuleConfigurationManager : public ReportManagerFixture
{
    Q_OBJECT

private slots:
    void beginsEmpty();

    void systemStatusIsFiledAndLogged();
    void fastSystemStatusIsFiled();
    void moduleStatusIsFiled_data();
    void moduleStatusIsFiled();
    void moduleBeyondTheTableIsDropped_data();
    void moduleBeyondTheTableIsDropped();
    void fastModuleStatusIsFiled();
    void eepromTextIsFiledAndMayComeLater();

    void otherContentsCountAsAnEmptyRecord_data();
    void otherContentsCountAsAnEmptyRecord();
    void emptyFastEntriesOverwriteNothing();

    void moduleIsOfferedToTheDialog_data();
    void moduleIsOfferedToTheDialog();
    void rowsStandInTheOrderOfTheirComing();
    void secondStatusChangesNothingInTheTable_data();
    void secondStatusChangesNothingInTheTable();
    void clearListKeepsTheRecords();
    void statusAfterClearListFillsTheTableAnew();

    void displaySystemReportShowsTheDialogAndDoesNotBlock();

private:
    QString cell(int row, int column) const
    {
        return table().data(table().index(row, column), Qt::DisplayRole).toString();
    }

    int mark(int row) const
    {
        return table().data(table().index(row, SensorModel::MarkColumn), Qt::CheckStateRole).toInt();
    }
};

void TstModuleConfigurationManager::beginsEmpty()
{
    QCOMPARE(m_manager->store().systemStatus, System_Status());
    QVERIFY(!m_manager->store().isFull());
    QCOMPARE(table().rowCount(), 0);
    QVERIFY(!report().isVisible());
    QCOMPARE(logged(), QStringList());
    QCOMPARE(m_events, QStringList());
}

void TstModuleConfigurationManager::systemStatusIsFiledAndLogged()
{
    m_manager->Slot_SaveSystemStatus(QVariant::fromValue(reportrecords::system(5)));
    const StatusStore &store = m_manager->store();
    QCOMPARE(store.systemStatus, reportrecords::system(5));
    QVERIFY(store.haveSystem && !store.haveFastSystem && !store.haveModule && !store.haveFastModule);
    QCOMPARE(
        m_log->lines(QtDebugMsg),
        QStringList{"void ModuleConfigurationManager::Slot_SaveSystemStatus(QVariant) : save system status"});
    QCOMPARE(logged().size(), 1);
    QCOMPARE(m_events, QStringList());
}

void TstModuleConfigurationManager::fastSystemStatusIsFiled()
{
    Fast_System_Status status;
    status.voltageRaw = 2805;
    m_manager->Slot_SaveFastSystemStatus(QVariant::fromValue(status));
    const StatusStore &store = m_manager->store();
    QCOMPARE(store.fastSystemStatus, status);
    QVERIFY(!store.haveSystem && store.haveFastSystem && !store.haveModule && !store.haveFastModule);
    QCOMPARE(logged(), QStringList());
}

void TstModuleConfigurationManager::moduleStatusIsFiled_data()
{
    QTest::addColumn<int>("address");
    for (const int address : {0, 1, 2, 127, 128, 129})
        QTest::addRow("%d", address) << address;
}

void TstModuleConfigurationManager::moduleStatusIsFiled()
{
    QFETCH(int, address);
    const Module_Status module = reportrecords::universalModule(static_cast<quint8>(address));
    fileModule(module);
    const StatusStore &store = m_manager->store();
    QVERIFY(!store.haveSystem && !store.haveFastSystem && store.haveModule && !store.haveFastModule);
    for (int other = 0; other < 130; ++other)
        QCOMPARE(store.module(other), other == address ? module : Module_Status());
    QCOMPARE(logged(), QStringList());
}

void TstModuleConfigurationManager::moduleBeyondTheTableIsDropped_data()
{
    QTest::addColumn<int>("address");
    QTest::newRow("by one") << 130;
    QTest::newRow("255") << 255;
}

void TstModuleConfigurationManager::moduleBeyondTheTableIsDropped()
{
    QFETCH(int, address);
    fileModule(reportrecords::module(static_cast<quint8>(address), 1));
    QVERIFY(!m_manager->store().haveModule);
    QVERIFY(!report().isKnown(static_cast<quint8>(address)));
    QCOMPARE(table().rowCount(), 0);
}

void TstModuleConfigurationManager::fastModuleStatusIsFiled()
{
    QVector<Fast_Module_Status> entries(200, reportrecords::fast(100, 100));
    entries[0] = reportrecords::fast(2400, 160);
    entries[129] = reportrecords::fast(2300, 150, 3);
    m_manager->Slot_SaveFastModuleStatus(QVariant::fromValue(entries));
    const StatusStore &store = m_manager->store();
    QVERIFY(!store.haveSystem && !store.haveFastSystem && !store.haveModule && store.haveFastModule);
    QCOMPARE(store.fastModule(0), reportrecords::fast(2400, 160));
    QCOMPARE(store.fastModule(1), reportrecords::fast(100, 100));
    QCOMPARE(store.fastModule(129), reportrecords::fast(2300, 150, 3));
    QCOMPARE(table().rowCount(), 0);
}

void TstModuleConfigurationManager::eepromTextIsFiledAndMayComeLater()
{
    m_manager->Slot_SaveModuleEepromStatus(QStringLiteral("first"), 0);
    QVERIFY(QMetaObject::invokeMethod(m_manager.get(), "Slot_SaveModuleEepromStatus", Qt::QueuedConnection,
                                      Q_ARG(QString, QStringLiteral("last")), Q_ARG(int, 129)));
    for (const int address : {-1, 130, 4711})
        m_manager->Slot_SaveModuleEepromStatus(QStringLiteral("lost"), address);
    QCOMPARE(m_manager->store().eepromText.back(), QString());
    m_time->turn();
    QCOMPARE(m_manager->store().eepromText.front(), QStringLiteral("first"));
    QCOMPARE(m_manager->store().eepromText.back(), QStringLiteral("last"));
    for (std::size_t address = 1; address < 129; ++address)
        QCOMPARE(m_manager->store().eepromText.at(address), QString());
}

void TstModuleConfigurationManager::otherContentsCountAsAnEmptyRecord_data()
{
    QTest::addColumn<QVariant>("contents");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("text") << QVariant(QStringLiteral("Module_Status"));
    QTest::newRow("number") << QVariant(7);
    QTest::newRow("list") << QVariant(QVariantList{1, 2});
    QTest::newRow("a record of one module's live values")
        << QVariant::fromValue(reportrecords::fast(2400, 160, 3));
}

void TstModuleConfigurationManager::otherContentsCountAsAnEmptyRecord()
{
    QFETCH(QVariant, contents);
    fill({reportrecords::module(1, 1)});
    m_manager->Slot_SaveSystemStatus(contents);
    m_manager->Slot_SaveFastSystemStatus(contents);
    m_manager->Slot_SaveStaticModuleStatus(contents);
    const StatusStore &store = m_manager->store();
    QCOMPARE(store.systemStatus, System_Status());
    QCOMPARE(store.fastSystemStatus, Fast_System_Status());
    QCOMPARE(store.module(0), Module_Status()); // an empty record has address 0
    QCOMPARE(store.module(1), reportrecords::module(1, 1));
    QVERIFY(store.isFull());

    // As the first record ever it sets the flag, and the module is offered like any other.
    ModuleConfigurationManager other({*m_time, QString(), QString(), QString()});
    other.Slot_SaveSystemStatus(contents);
    other.Slot_SaveFastSystemStatus(contents);
    other.Slot_SaveStaticModuleStatus(contents);
    QVERIFY(other.store().haveSystem && other.store().haveFastSystem && other.store().haveModule);
    QVERIFY(other.reportDialog()->isKnown(0));
}

void TstModuleConfigurationManager::emptyFastEntriesOverwriteNothing()
{
    fill({reportrecords::module(1, 1)});
    m_manager->Slot_SaveFastModuleStatus(QVariant());
    m_manager->Slot_SaveFastModuleStatus(QVariant(QStringLiteral("text")));
    m_manager->Slot_SaveFastModuleStatus(QVariant::fromValue(QVector<Fast_Module_Status>()));
    QCOMPARE(m_manager->store().fastModule(0), reportrecords::fast(2412, 161));
    QCOMPARE(m_manager->store().fastModule(1), reportrecords::fast(2400, 160, 3));
    QVERIFY(m_manager->store().haveFastModule);
}

void TstModuleConfigurationManager::moduleIsOfferedToTheDialog_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("controller") << 100 << "Controller";
    QTest::newRow("strain gauge") << 1 << "Strain Gauge";
    QTest::newRow("universal") << 9 << "Analog";
    QTest::newRow("power") << 120 << "Power";
    QTest::newRow("unknown") << 99 << "unknown99";
}

void TstModuleConfigurationManager::moduleIsOfferedToTheDialog()
{
    QFETCH(int, type);
    fileModule(reportrecords::module(5, static_cast<quint8>(type)));
    QCOMPARE(table().rowCount(), 1);
    QTEST(cell(0, SensorModel::TypeColumn), "name");
    QCOMPARE(cell(0, SensorModel::SerialColumn), QStringLiteral("77 5"));
    QCOMPARE(mark(0), 2);
    QVERIFY(report().isSelected(5));
    QVERIFY(!report().isSelected(0));
}

void TstModuleConfigurationManager::rowsStandInTheOrderOfTheirComing()
{
    for (const quint8 address : {quint8(3), quint8(129), quint8(0), quint8(1)})
        fileModule(reportrecords::module(address, 1));
    QCOMPARE(table().rowCount(), 4);
    QCOMPARE(cell(0, SensorModel::SerialColumn), QStringLiteral("77 3"));
    QCOMPARE(cell(1, SensorModel::SerialColumn), QStringLiteral("77 129"));
    QCOMPARE(cell(2, SensorModel::SerialColumn), QStringLiteral("77 0"));
    QCOMPARE(cell(3, SensorModel::SerialColumn), QStringLiteral("77 1"));
}

void TstModuleConfigurationManager::secondStatusChangesNothingInTheTable_data()
{
    QTest::addColumn<bool>("isMarked");
    QTest::newRow("checked") << true;
    QTest::newRow("unchecked") << false;
}

void TstModuleConfigurationManager::secondStatusChangesNothingInTheTable()
{
    QFETCH(bool, isMarked);
    fileModule(reportrecords::module(4, 1));
    fileModule(reportrecords::module(5, 1));
    const int state = isMarked ? Qt::Checked : Qt::Unchecked;
    table().setData(table().index(0, SensorModel::MarkColumn), state, Qt::CheckStateRole);
    QCOMPARE(mark(0), state);
    Module_Status second = reportrecords::module(4, 2);
    second.serialNumber = QStringLiteral("another");
    fileModule(second);
    QCOMPARE(table().rowCount(), 2);
    QCOMPARE(mark(0), state);
    QCOMPARE(cell(0, SensorModel::TypeColumn), QStringLiteral("Strain Gauge"));
    QCOMPARE(cell(0, SensorModel::SerialColumn), QStringLiteral("77 4"));
    QCOMPARE(m_manager->store().module(4), second);
}

void TstModuleConfigurationManager::clearListKeepsTheRecords()
{
    fill({reportrecords::module(1, 1), reportrecords::module(2, 2)});
    QCOMPARE(table().rowCount(), 3);
    m_manager->clearList();
    QCOMPARE(table().rowCount(), 0);
    QVERIFY(!report().isKnown(1));
    const StatusStore &store = m_manager->store();
    QVERIFY(store.isFull());
    QCOMPARE(store.systemStatus, reportrecords::system(2));
    QCOMPARE(store.module(0), reportrecords::controller());
    QCOMPARE(store.module(1), reportrecords::module(1, 1));
    QCOMPARE(store.fastModule(1), reportrecords::fast(2400, 160, 3));
    m_manager->clearList();
    QCOMPARE(table().rowCount(), 0);
}

void TstModuleConfigurationManager::statusAfterClearListFillsTheTableAnew()
{
    fill({reportrecords::module(1, 1), reportrecords::module(2, 2)});
    table().setData(table().index(1, SensorModel::MarkColumn), Qt::Unchecked, Qt::CheckStateRole);
    m_manager->clearList();
    fileModule(reportrecords::module(1, 3));
    QCOMPARE(table().rowCount(), 1);
    QCOMPARE(cell(0, SensorModel::TypeColumn), QStringLiteral("IEPE_ICP"));
    QCOMPARE(mark(0), 2);
    QCOMPARE(m_manager->store().module(1), reportrecords::module(1, 3));
    QCOMPARE(m_manager->store().module(2), reportrecords::module(2, 2));
}

void TstModuleConfigurationManager::displaySystemReportShowsTheDialogAndDoesNotBlock()
{
    m_manager->displaySystemReport();
    QVERIFY(report().isVisible());
    QVERIFY(report().isModal());
    QCOMPARE(report().windowTitle(), QStringLiteral("System Report"));
    QVERIFY(report().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    report().reject();
    QVERIFY(!report().isVisible());
    m_time->turn();
    m_manager->displaySystemReport(); // the same dialog, with its table
    QVERIFY(report().isVisible());
}

QTEST_MAIN(TstModuleConfigurationManager)
#include "tst_moduleconfigurationmanager.moc"
