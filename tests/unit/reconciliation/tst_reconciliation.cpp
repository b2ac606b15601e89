#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"
#include "modules/analogmodule_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "protocol/communication.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/systemstatus.h"
#include "support/appfixture.h"
#include "support/messagecatcher.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString kNoController = QStringLiteral("No Controller connected or detected.");
const QString kNoModule = QStringLiteral("No Device connected or detected.");
const QColor kGreen(154, 237, 191);

/// A settings file with a port and no mode: the application starts without opening a link.
const QByteArray kQuietSettings = "PORT1=COM5:115200,E,8,1\r\n";

QVariant variant(const System_Status &status)
{
    return QVariant::fromValue(status);
}

} // namespace

/// What the application makes of the system statuses and clean slates that it is told of.
class TstReconciliation : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void statusCreatesControllerAndRowsInOrder();
    void rowsStandInGridOrderFromTheTop();
    void fixedModulesDecide_data();
    void fixedModulesDecide();
    void fixedModuleCodesCountAnywhereAndOnce();
    void powerWithoutControllerRefusesEveryModule();
    void controllerAloneKeepsTheModulePlaceholder();
    void statusOfForeignTypeCreatesNothing();
    void rowsOfEveryKnownType_data();
    void rowsOfEveryKnownType();
    void unknownTypeKeepsItsPlace();
    void module129IsRefused();
    void countBeyondTheArrayReadsTypeZero();
    void secondControllerIsRefused();
    void secondStatusAddsModulesAgain();
    void firstModuleRemovesThePlaceholder();
    void cleanSlateRemovesEverything();
    void cleanSlateWithoutControllerStillTells();
    void cleanSlateRestartsTheNumbering();
    void cleanSlateWhileAVersionBoxIsOpen();
    void debugFunnelListsTheModules();
    void samplingIsEnabledByAStatusOnly();
    void rateChangeCreatesNothing();

private:
    void receive(const System_Status &status) { m_fixture->app->Slot_SystemStatus(variant(status)); }
    QList<ModuleDevice_View *> rows() const
    {
        return m_fixture->window()->findChildren<ModuleDevice_View *>();
    }
    ModuleDevice_View *row(int index) const
    {
        return m_fixture->app->analogModules().at(static_cast<std::size_t>(index))->GetView();
    }
    QString moduleNumber(int index) const
    {
        return row(index)->findChild<QPushButton *>(QStringLiteral("pushButton_DeviceButton"))->text();
    }

    std::unique_ptr<AppFixture> m_fixture;
};

void TstReconciliation::init()
{
    m_fixture = std::make_unique<AppFixture>();
    m_fixture->writeSettings(kQuietSettings);
    m_fixture->start();
}

void TstReconciliation::cleanup()
{
    m_fixture.reset();
}

void TstReconciliation::statusCreatesControllerAndRowsInOrder()
{
    QCOMPARE(m_fixture->placeholders(), (QStringList{kNoController, kNoModule}));
    receive(systemStatus({1, 4, 9}));
    QVERIFY(m_fixture->app->controllerModule());
    QCOMPARE(rows().size(), 3);
    QCOMPARE(moduleNumber(0), QStringLiteral("1"));
    QCOMPARE(moduleNumber(2), QStringLiteral("3"));
    const auto channelA = [this](int index) {
        return row(index)->findChild<QPushButton *>(QStringLiteral("pushButton_ChA"))->text();
    };
    QCOMPARE(channelA(0), QStringLiteral("1"));
    QCOMPARE(channelA(1), QStringLiteral("3"));
    QCOMPARE(channelA(2), QStringLiteral("5"));
    QCOMPARE(m_fixture->placeholders(), QStringList());
}

void TstReconciliation::rowsStandInGridOrderFromTheTop()
{
    receive(systemStatus({1, 2, 3}));
    auto *grid = m_fixture->child<QGridLayout>("modulesLayout");
    for (int index = 0; index < 3; ++index) {
        auto *item = grid->itemAtPosition(index, 0);
        QVERIFY(item);
        QCOMPARE(item->widget(), static_cast<QWidget *>(row(index)));
    }
    QVERIFY(grid->alignment() & Qt::AlignTop);
}

void TstReconciliation::fixedModulesDecide_data()
{
    QTest::addColumn<bool>("controller");
    QTest::addColumn<bool>("power");
    QTest::addColumn<QString>("line");
    QTest::newRow("both") << true << true << "Controller and Power Module request received -> creating";
    QTest::newRow("none") << false << false
                          << "Error: Neither Controller nor Power Module request received!!!";
    QTest::newRow("controller alone")
        << true << false << "Warning: Controller Modul request received, but without Power Modul!!!";
    QTest::newRow("power alone") << false << true
                                 << "Warning: Power Module request received, but without Controller Modul!!!";
}

void TstReconciliation::fixedModulesDecide()
{
    QFETCH(bool, controller);
    QFETCH(bool, power);
    QFETCH(QString, line);
    const QColor before = m_fixture->lamp();
    MessageCatcher messages;
    receive(systemStatus({}, controller, power));
    QVERIFY(messages.contains(line));
    QCOMPARE(m_fixture->app->controllerModule() != nullptr, controller);
    QCOMPARE(m_fixture->lamp(), controller ? kGreen : before);
    if (controller) {
        auto *view = m_fixture->app->controllerModule()->GetView();
        auto *button = view->findChild<QPushButton *>(QStringLiteral("pushButton_powModType"));
        QCOMPARE(button->isVisibleTo(view), power);
    }
}

void TstReconciliation::fixedModuleCodesCountAnywhereAndOnce()
{
    System_Status status;
    status.sModules.fill(0x64);
    status.sModules.at(0) = 0x78;
    receive(status);
    QVERIFY(m_fixture->app->controllerModule());
    QCOMPARE(m_fixture->window()->findChildren<ModuleController_View *>().size(), 1);
}

void TstReconciliation::powerWithoutControllerRefusesEveryModule()
{
    receive(systemStatus({1, 2}, false, true));
    QVERIFY(!m_fixture->app->controllerModule());
    QCOMPARE(rows().size(), 0);
    QCOMPARE(m_fixture->placeholders(), (QStringList{kNoController, kNoModule}));
    QCOMPARE(m_fixture->statusText(), QStringLiteral("No Controller Module available"));
}

void TstReconciliation::controllerAloneKeepsTheModulePlaceholder()
{
    receive(systemStatus({}));
    QCOMPARE(m_fixture->placeholders(), QStringList{kNoModule});
}

void TstReconciliation::statusOfForeignTypeCreatesNothing()
{
    MessageCatcher messages;
    m_fixture->app->Slot_SystemStatus(QVariant(QStringLiteral("something else")));
    QVERIFY(
        messages.contains(QStringLiteral("Error: Neither Controller nor Power Module request received!!!")));
    QVERIFY(!m_fixture->app->controllerModule());
    QCOMPARE(rows().size(), 0);
}

void TstReconciliation::rowsOfEveryKnownType_data()
{
    QTest::addColumn<int>("type");
    for (int type = 1; type <= 9; ++type)
        QTest::newRow(qPrintable(QString::number(type))) << type;
}

void TstReconciliation::rowsOfEveryKnownType()
{
    QFETCH(int, type);
    receive(systemStatus({type}));
    QCOMPARE(rows().size(), 1);
    QVERIFY(m_fixture->statusText() != QStringLiteral("Connection of unknown device type is ignored"));
}

void TstReconciliation::unknownTypeKeepsItsPlace()
{
    MessageCatcher messages;
    receive(systemStatus({1, 2, 77, 4}));
    QCOMPARE(rows().size(), 4);
    QCOMPARE(moduleNumber(3), QStringLiteral("4"));
    QCOMPARE(m_fixture->statusText(), QStringLiteral("Connection of unknown device type is ignored"));
    const QString signature = QStringLiteral("void Framework_Ctrllr::AddAnalogModule(quint8) : ");
    const QStringList log = messages.lines(QtDebugMsg);
    const int refusal = log.indexOf(signature + QStringLiteral("Unknown device type detected!"));
    QVERIFY(refusal >= 0);
    QCOMPARE(log.value(refusal + 1), signature + QStringLiteral("-> ignoring Modul creation!"));
    QCOMPARE(log.value(refusal + 2), QStringLiteral("Model Type 4 created..."));

    Module_Status status;
    status.moduleAddress = 3;
    status.moduleType = 77;
    status.serialNumber = QStringLiteral("X-1");
    auto *unknown = qobject_cast<AnalogModule_Ctrllr *>(m_fixture->app->analogModules().at(2));
    emit m_fixture->app->communication()->Signal_StaticModuleStatus(QVariant::fromValue(status));
    QCOMPARE(row(2)->findChild<QLabel *>(QStringLiteral("label_SnVersion"))->text(), QStringLiteral("X-1"));
    QVERIFY(!row(2)->findChild<QLabel *>(QStringLiteral("label_Filter"))->isVisibleTo(row(2)));
    QVERIFY(row(1)->findChild<QLabel *>(QStringLiteral("label_Filter"))->isVisibleTo(row(1)));

    // Its commands are joined to nothing.
    QSignalSpy all(m_fixture->app.get(), &Framework_Ctrllr::Signal_SendAll);
    QSignalSpy busy(m_fixture->app.get(), &Framework_Ctrllr::statusBusy);
    emit unknown->Signal_ShiftClickCommand(GroupCommand());
    emit unknown->Signal_GetChannelData(3);
    QCOMPARE(all.size(), 0);
    QCOMPARE(busy.size(), 0);
}

void TstReconciliation::module129IsRefused()
{
    System_Status status = systemStatus(std::vector<int>(128, 1));
    status.nModules = 129;
    receive(status);
    QCOMPARE(rows().size(), 128);
    QCOMPARE(m_fixture->statusText(), QStringLiteral("Maximal Number of connected Devices achieved"));
}

void TstReconciliation::countBeyondTheArrayReadsTypeZero()
{
    MessageCatcher messages;
    System_Status status = systemStatus(std::vector<int>(128, 2));
    status.nModules = 131;
    receive(status);
    QVERIFY(messages.contains(QStringLiteral("Index  130 Module : 0")));
    QCOMPARE(rows().size(), 128);
}

void TstReconciliation::secondControllerIsRefused()
{
    receive(systemStatus({}));
    const auto *first = m_fixture->app->controllerModule();
    receive(systemStatus({}));
    QCOMPARE(m_fixture->app->controllerModule(), first);
    QCOMPARE(m_fixture->statusText(), QStringLiteral("Controller Module exists already"));
}

void TstReconciliation::secondStatusAddsModulesAgain()
{
    receive(systemStatus({1, 1}));
    receive(systemStatus({1, 1}));
    QCOMPARE(rows().size(), 4);
    QCOMPARE(moduleNumber(3), QStringLiteral("4"));
}

void TstReconciliation::firstModuleRemovesThePlaceholder()
{
    receive(systemStatus({}));
    QCOMPARE(m_fixture->placeholders(), QStringList{kNoModule});
    receive(systemStatus({5}));
    QCOMPARE(m_fixture->placeholders(), QStringList());
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(m_fixture->placeholders(), (QStringList{kNoController, kNoModule}));
}

void TstReconciliation::cleanSlateRemovesEverything()
{
    receive(systemStatus({1, 2, 3, 4, 9}));
    MessageCatcher messages;
    QSignalSpy disabled(m_fixture->app.get(), &Framework_Ctrllr::Signal_DisableSamplingRate);
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(rows().size(), 0);
    QVERIFY(m_fixture->app->analogModules().empty());
    QVERIFY(!m_fixture->app->controllerModule());
    QCOMPARE(m_fixture->window()->findChildren<ModuleController_View *>().size(), 0);
    QCOMPARE(m_fixture->placeholders(), (QStringList{kNoController, kNoModule}));
    QCOMPARE(m_fixture->statusText(), QStringLiteral("Retrying to connect with Torvex"));
    QCOMPARE(disabled.size(), 1);
    QCOMPARE(m_fixture->lamp(), QColor(Qt::yellow));
    QCOMPARE(m_fixture->child<QLineEdit>("statusBox")->text(), QStringLiteral("OFFLINE"));
    QVERIFY(messages.contains(QStringLiteral("<<Controller Removed>>")));
}

void TstReconciliation::cleanSlateWithoutControllerStillTells()
{
    QSignalSpy disabled(m_fixture->app.get(), &Framework_Ctrllr::Signal_DisableSamplingRate);
    MessageCatcher messages;
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(m_fixture->statusText(), QStringLiteral("Retrying to connect with Torvex"));
    QCOMPARE(disabled.size(), 1);
    QCOMPARE(m_fixture->lamp(), QColor(Qt::yellow));
    QVERIFY(!messages.contains(QStringLiteral("<<Controller Removed>>")));
    QCOMPARE(m_fixture->placeholders(), (QStringList{kNoController, kNoModule}));
}

void TstReconciliation::cleanSlateRestartsTheNumbering()
{
    receive(systemStatus({1, 2}));
    m_fixture->app->Slot_CleanSlateProtocol();
    receive(systemStatus({3}));
    QCOMPARE(moduleNumber(0), QStringLiteral("1"));
    QCOMPARE(row(0)->findChild<QPushButton *>(QStringLiteral("pushButton_ChB"))->text(), QStringLiteral("2"));
    QCOMPARE(m_fixture->window()->findChildren<ModuleController_View *>().size(), 1);
    QVERIFY(m_fixture->statusText() != QStringLiteral("Controller Module exists already"));
}

void TstReconciliation::cleanSlateWhileAVersionBoxIsOpen()
{
    receive(systemStatus({1}));
    QTest::mouseClick(row(0)->findChild<QPushButton *>(QStringLiteral("pushButton_DeviceButton")),
                      Qt::LeftButton);
    QPointer<QMessageBox> box = row(0)->findChild<QMessageBox *>();
    QVERIFY(box);
    m_fixture->app->Slot_CleanSlateProtocol();
    QCoreApplication::processEvents();
    QVERIFY(!box);
    QCOMPARE(rows().size(), 0);
}

void TstReconciliation::debugFunnelListsTheModules()
{
    QStringList texts;
    QObject::connect(m_fixture->window(), &Framework_View::Signal_DebugMessage, m_fixture->window(),
                     [&texts](const QString &text) { texts.append(text); });
    receive(systemStatus({1, 9}));
    QCOMPARE(texts,
             (QStringList{QStringLiteral("System Status Message:"), QStringLiteral("Index 1 Module Type: 1"),
                          QStringLiteral("Index 2 Module Type: 9"),
                          QStringLiteral("Static Module Status Message:\n")}));
}

void TstReconciliation::samplingIsEnabledByAStatusOnly()
{
    QSignalSpy enabled(m_fixture->app.get(), &Framework_Ctrllr::Signal_EnableSamplingRate);
    m_fixture->app->openLink();
    QCOMPARE(enabled.size(), 0);
    receive(systemStatus({}));
    QCOMPARE(enabled.size(), 1);
}

void TstReconciliation::rateChangeCreatesNothing()
{
    receive(systemStatus({1}));
    MessageCatcher messages;
    System_Status status = systemStatus({1, 1, 1});
    status.bitRate = QStringLiteral("5000");
    status.samplingRate = QStringLiteral("1234");
    m_fixture->app->Slot_UpdateSamplingNBitRate(variant(status));
    QCOMPARE(rows().size(), 1);
    QVERIFY(messages.contains(
        QStringLiteral("***********System status received Bitrate: \"5000\" Sampling Rate: \"1234\"")));
}

QTEST_MAIN(TstReconciliation)

#include "tst_reconciliation.moc"
