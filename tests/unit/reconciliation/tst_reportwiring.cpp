#include "protocol/communication.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/systemstatus.h"
#include "reports/moduleconfigurationmanager.h"
#include "reports/systemreport.h"
#include "support/appfixture.h"
#include "support/messagecatcher.h"

#include <QAbstractItemModel>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QtTest>

/// How the memory behind the reports hangs together with the rest of the application.
class TstReportWiring : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void sessionFillsTheStore();
    void eepromTextIsFiledAtOnce();
    void rowsAndCounterComeBeforeTheStore();
    void rowsGoBeforeTheTableIsEmptied();
    void cleanSlateKeepsTheRecords();
    void buttonShowsTheDialog();
    void folderOfTheFileIsProposed();
    void chosenFolderIsSaved();
    void progressReachesTheDebugFunnel();

private:
    /// A chain of these modules, read and polled.
    void openSerialLink(const QByteArray &types);
    Communication *session() const { return m_fixture->app->communication(); }
    ModuleConfigurationManager *manager() const { return m_fixture->app->moduleConfig(); }
    SystemReport *dialog() const { return manager()->reportDialog(); }

    std::unique_ptr<AppFixture> m_fixture;
    QTemporaryDir m_folder;
};

void TstReportWiring::init()
{
    m_fixture = std::make_unique<AppFixture>();
    m_fixture->writeSettings("FILE_DIR=" + m_folder.path().toUtf8() +
                             "\r\nPORT1=COM7:9600,O,7,2\r\nMode=Serial\r\n");
    m_fixture->serialOpens = true;
    m_fixture->start();
}

void TstReportWiring::openSerialLink(const QByteArray &types)
{
    m_fixture->serial->script = device::chain(types, false);
    for (int turn = 0; turn < 200 && session()->state() != SessionState::Cyclic; ++turn)
        m_fixture->time.advance(50);
    m_fixture->time.advance(5000);
}

void TstReportWiring::sessionFillsTheStore()
{
    openSerialLink(QByteArray("\x01\x04"));
    const StatusStore &store = manager()->store();
    QVERIFY(store.haveSystem);
    QVERIFY(store.haveFastSystem);
    QVERIFY(store.haveModule);
    QVERIFY(store.haveFastModule);
    QCOMPARE(store.systemStatus.nModules, quint16(2));
    QCOMPARE(store.module(2).moduleType, quint8(4));
    QCOMPARE(store.module(2).serialNumber, QStringLiteral("SN 2"));
    QVERIFY(dialog()->isSelected(0));
    QVERIFY(dialog()->isSelected(1));
    QVERIFY(dialog()->isSelected(2));
    QVERIFY(!dialog()->isKnown(3));
}

void TstReportWiring::eepromTextIsFiledAtOnce()
{
    emit session()->Signal_ModuleEepromStatus(QStringLiteral("calibrated"), 7);
    QCOMPARE(manager()->store().eepromText.at(7), QStringLiteral("calibrated"));
}

void TstReportWiring::rowsAndCounterComeBeforeTheStore()
{
    connect(m_fixture->child<QLineEdit>("statusBox"), &QLineEdit::textChanged, this,
            [] { qDebug().noquote() << "counter shown"; });
    MessageCatcher messages;
    emit session()->Signal_SystemStatus(QVariant::fromValue(systemStatus({1})));
    const QStringList lines = messages.lines();
    const int row = lines.indexOf(QStringLiteral("<<New module attached at 0>>"));
    const int filed = lines.indexOf(QStringLiteral(
        "void ModuleConfigurationManager::Slot_SaveSystemStatus(QVariant) : save system status"));
    const int counter = lines.indexOf(QStringLiteral("counter shown"));
    QVERIFY(row >= 0);
    QVERIFY(counter > row);
    QVERIFY(filed > counter);
}

void TstReportWiring::rowsGoBeforeTheTableIsEmptied()
{
    openSerialLink(QByteArray("\x01"));
    QCOMPARE(m_fixture->app->analogModules().size(), std::size_t(1));
    std::size_t rowsLeft = 99;
    const auto *model = dialog()->findChild<QTableView *>(QStringLiteral("tableView"))->model();
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [&] { rowsLeft = m_fixture->app->analogModules().size(); });
    emit session()->Signal_CleanSlateProtocol();
    QCOMPARE(rowsLeft, std::size_t(0));
    disconnect(model, nullptr, this, nullptr);
}

void TstReportWiring::cleanSlateKeepsTheRecords()
{
    openSerialLink(QByteArray("\x01"));
    emit session()->Signal_CleanSlateProtocol();
    QVERIFY(!dialog()->isKnown(0));
    QVERIFY(!dialog()->isKnown(1));
    QCOMPARE(manager()->store().module(1).serialNumber, QStringLiteral("SN 1"));
}

void TstReportWiring::buttonShowsTheDialog()
{
    QVERIFY(!dialog()->isVisible());
    QTest::mouseClick(m_fixture->child<QPushButton>("systemReportButton"), Qt::LeftButton);
    QVERIFY(dialog()->isVisible());
    QVERIFY(dialog()->isModal());
    QCOMPARE(dialog()->windowTitle(), QStringLiteral("System Report"));
    QVERIFY(dialog()->isWindow());
    QVERIFY(dialog()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(dialog()->parentWidget(), m_fixture->window());
}

void TstReportWiring::folderOfTheFileIsProposed()
{
    manager()->savePdfAll();
    const auto *chooser = dialog()->findChild<QFileDialog *>(QStringLiteral("saveDialog"));
    QCOMPARE(chooser->directory().absolutePath(), m_folder.path());
}

void TstReportWiring::chosenFolderIsSaved()
{
    QTemporaryDir other;
    emit manager()->DefltLctn(other.path());
    QVERIFY(m_fixture->readSettings().contains("FILE_DIR=" + other.path().toUtf8() + "\r\n"));
}

void TstReportWiring::progressReachesTheDebugFunnel()
{
    QSignalSpy funnel(m_fixture->window(), &Framework_View::Signal_DebugMessage);
    manager()->savePdfAll();
    QCOMPARE(funnel.size(), 1);
    QCOMPARE(funnel.first().first().toString(), QStringLiteral("save location:") + m_folder.path());
}

QTEST_MAIN(TstReportWiring)

#include "tst_reportwiring.moc"
