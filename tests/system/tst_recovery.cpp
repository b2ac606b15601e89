#include "protocol/communication.h"
#include "systemfixture.h"
#include "waiting.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString kChain = QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                                      "module type=1 count=3 serial=SG-\nmodule type=2 count=2 serial=V-\n");
constexpr int kRows = 5;

} // namespace

/// The session recovers from whatever goes wrong on the link, and then shows the chain as it is.
class TstRecovery : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void sessionRecovers_data();
    void sessionRecovers();
    void faultDoesNotEvenDelayTheSession_data();
    void faultDoesNotEvenDelayTheSession();
    void resetFlagStartsOver_data();
    void resetFlagStartsOver();
    void silentDeviceIsAskedAgainAndAgain();
    void silenceInTheCycleRemovesTheRows();
    void replyOfUnknownCodeEndsTheTurn();
    void systemResetOfTheDeviceReadsTheChainAnew();
    void stormOfFaultsEndsInReady();

private:
    void plugWithFaults(const QString &script);
    bool isWhole() const { return m_fixture->isReady() && m_fixture->rowCount() == kRows; }

    std::unique_ptr<SystemFixture> m_fixture;
};

void TstRecovery::init()
{
    m_fixture = std::make_unique<SystemFixture>(SystemFixture::LinkKind::Tcp);
}

void TstRecovery::plugWithFaults(const QString &script)
{
    m_fixture->plug(kChain);
    QString error;
    QVERIFY2(m_fixture->device->faults().parse(script, &error), qPrintable(error));
    m_fixture->start();
}

void TstRecovery::sessionRecovers_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("first reply lost") << "lose nth=1";
    QTest::newRow("first request not taken") << "silence nth=1";
    QTest::newRow("reply lost in the walk") << "lose code=0x12 nth=3";
    QTest::newRow("last reply of the walk lost") << "lose code=0x12 argument=0x81 count=1";
    QTest::newRow("poll lost") << "lose code=0x08 nth=2";
    QTest::newRow("fast module status lost") << "lose code=0x10 nth=1";
    QTest::newRow("header damaged") << "corrupt part=header byte=9 nth=2";
    QTest::newRow("sync byte damaged") << "corrupt part=header byte=0 nth=2";
    QTest::newRow("payload damaged") << "corrupt part=payload byte=30 nth=3";
    QTest::newRow("checksum damaged") << "corrupt part=crc nth=4";
    QTest::newRow("echo in place of a reply") << "originator nth=2";
    QTest::newRow("unknown code in place of the system status") << "unknown-code nth=1";
    QTest::newRow("unknown code in the walk") << "unknown-code code=0x12 nth=2";
    QTest::newRow("connection closed at once") << "close nth=1";
    QTest::newRow("connection closed in the walk") << "close code=0x12 nth=3";
    QTest::newRow("connection closed in the cycle") << "close code=0x08 nth=3";
}

void TstRecovery::sessionRecovers()
{
    QFETCH(QString, script);
    plugWithFaults(script);
    WAIT_VERIFY(isWhole());
    // It stays so: a few rounds of polling go through.
    const int polls = m_fixture->device->requestCount(0x10);
    WAIT_VERIFY(m_fixture->device->requestCount(0x10) > polls + 2);
    WAIT_VERIFY(isWhole());
    QCOMPARE(m_fixture->device->refusals(), QStringList());
}

void TstRecovery::faultDoesNotEvenDelayTheSession_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("every reply in single bytes") << "cut size=1 gap=0";
    QTest::newRow("every reply in pieces") << "cut size=100 gap=1";
    QTest::newRow("every reply late") << "delay ms=10";
}

void TstRecovery::faultDoesNotEvenDelayTheSession()
{
    m_fixture->useProductTimeouts();
    QFETCH(QString, script);
    plugWithFaults(script);
    QSignalSpy slates(m_fixture->app->communication(), &Communication::Signal_CleanSlateProtocol);
    WAIT_VERIFY(isWhole());
    WAIT_VERIFY(m_fixture->device->requestCount(0x10) > 3);
    QCOMPARE(slates.size(), 0);
}

void TstRecovery::resetFlagStartsOver_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("in the system status") << "reset-flag code=0x01 nth=1";
    QTest::newRow("in the walk") << "reset-flag code=0x12 nth=3";
    QTest::newRow("in the cycle") << "reset-flag code=0x08 nth=2";
    QTest::newRow("in a fast module status") << "reset-flag code=0x10 nth=1";
}

void TstRecovery::resetFlagStartsOver()
{
    m_fixture->useProductTimeouts();
    QFETCH(QString, script);
    plugWithFaults(script);
    WAIT_COMPARE(m_fixture->device->requestCount(0x01), 2);
    WAIT_VERIFY(isWhole());
    QVERIFY(m_fixture->device->requestCount(0x12) >= kRows + 2);
}

void TstRecovery::silentDeviceIsAskedAgainAndAgain()
{
    plugWithFaults(QStringLiteral("silence"));
    WAIT_VERIFY(m_fixture->device->requestCount(0x01) >= 3);
    QCOMPARE(m_fixture->rowCount(), 0);
    QCOMPARE(m_fixture->statusBox(), QStringLiteral("OFFLINE"));
    m_fixture->device->faults().clear();
    WAIT_VERIFY(isWhole());
}

void TstRecovery::silenceInTheCycleRemovesTheRows()
{
    m_fixture->plug(kChain);
    m_fixture->start();
    WAIT_VERIFY(isWhole());
    QString error;
    QVERIFY(m_fixture->device->faults().parse(QStringLiteral("silence"), &error));
    WAIT_COMPARE(m_fixture->rowCount(), 0);
    QCOMPARE(m_fixture->statusText(), QStringLiteral("Retrying to connect with Torvex"));
    m_fixture->device->faults().clear();
    WAIT_VERIFY(isWhole());
}

void TstRecovery::replyOfUnknownCodeEndsTheTurn()
{
    m_fixture->useProductTimeouts();
    plugWithFaults(QStringLiteral("unknown-code code=0x08"));
    QSignalSpy slates(m_fixture->app->communication(), &Communication::Signal_CleanSlateProtocol);
    WAIT_VERIFY(m_fixture->device->requestCount(0x10) > 3);
    QCOMPARE(slates.size(), 0);
    QVERIFY(isWhole());
}

void TstRecovery::systemResetOfTheDeviceReadsTheChainAnew()
{
    m_fixture->useProductTimeouts();
    m_fixture->plug(kChain);
    m_fixture->start();
    WAIT_VERIFY(isWhole());
    m_fixture->app->communication()->Slot_SendSystemReset();
    WAIT_COMPARE(m_fixture->device->requestCount(0x2B), 1);
    WAIT_COMPARE(m_fixture->device->requestCount(0x01), 2);
    WAIT_VERIFY(isWhole());
}

void TstRecovery::stormOfFaultsEndsInReady()
{
    plugWithFaults(QStringLiteral("lose probability=0.05\ncorrupt part=payload byte=3 probability=0.05\n"
                                  "close probability=0.02\nreset-flag probability=0.02\n"
                                  "cut size=7 gap=1 probability=0.2\nunknown-code probability=0.05\n"));
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->device->requestCount() > 60, 60000);
    m_fixture->device->faults().clear();
    QTRY_VERIFY_WITH_TIMEOUT(isWhole(), 10000);
    QCOMPARE(m_fixture->device->refusals(), QStringList());
}

QTEST_MAIN(TstRecovery)

#include "tst_recovery.moc"
