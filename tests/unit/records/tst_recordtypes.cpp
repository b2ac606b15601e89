#include "protocol/records/recordtypes.h"

#include "protocol/records/datagrams.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/fpgafwcommand.h"
#include "protocol/records/groupcommand.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/powerstatus.h"
#include "protocol/records/systemstatus.h"

#include <QtTest>

class TstRecordTypes : public QObject
{
    Q_OBJECT

private slots:
    void everyRecordIsKnownByItsAgreedName_data();
    void everyRecordIsKnownByItsAgreedName();
    void registeringAgainDoesNoHarm();
};

void TstRecordTypes::everyRecordIsKnownByItsAgreedName_data()
{
    registerRecordTypes();
    QTest::addColumn<int>("type");
    QTest::newRow("System_Status") << qMetaTypeId<System_Status>();
    QTest::newRow("Fast_System_Status") << qMetaTypeId<Fast_System_Status>();
    QTest::newRow("Module_Status") << qMetaTypeId<Module_Status>();
    QTest::newRow("Fast_Module_Status") << qMetaTypeId<Fast_Module_Status>();
    QTest::newRow("Power_Status") << qMetaTypeId<Power_Status>();
    QTest::newRow("QVector<Fast_Module_Status>") << qMetaTypeId<QVector<Fast_Module_Status>>();
    QTest::newRow("DatagramT1") << qMetaTypeId<DatagramT1>();
    QTest::newRow("DatagramT2") << qMetaTypeId<DatagramT2>();
    QTest::newRow("DatagramT3") << qMetaTypeId<DatagramT3>();
    QTest::newRow("FPGAfwCommand") << qMetaTypeId<FPGAfwCommand>();
    QTest::newRow("GroupCommand") << qMetaTypeId<GroupCommand>();
}

void TstRecordTypes::everyRecordIsKnownByItsAgreedName()
{
    QFETCH(int, type);
    QCOMPARE(QMetaType::type(QTest::currentDataTag()), type);
}

void TstRecordTypes::registeringAgainDoesNoHarm()
{
    registerRecordTypes();
    const int before = QMetaType::type("System_Status");
    registerRecordTypes();
    QCOMPARE(QMetaType::type("System_Status"), before);
}

QTEST_GUILESS_MAIN(TstRecordTypes)
#include "tst_recordtypes.moc"
