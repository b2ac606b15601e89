#include "gateway/dialogueview.h"
#include "gatewayfixture.h"

#include <QTimer>
#include <QtTest>
#include <utility>

using namespace std::chrono_literals;

/// A gateway that sends its prompt behind each answer: each prompt makes the program ask again, so that it
/// asks as fast as the answers come. The request of each second starts another line of requests beside those
/// that go on; one ends when a prompt arrives in one piece with an answer.
class TstGatewayPrompts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void promptBehindAnAnswerMakesItAskAgainAtOnce();
    void operatorIsServedMeanwhile();
    void dialogueStaysBounded();
    void pollingGoesBackToOnceASecond();

private:
    GatewayFixture &fixture() { return *m_fixture; }
    const DialogueView *dialogue() const { return m_fixture->part<DialogueView>("RxBox"); }
    /// From now on each answer is followed by a prompt, and the program's seconds pass ten times as fast as
    /// others.
    void promptBehindEachAnswer();

    std::unique_ptr<GatewayFixture> m_fixture;
    std::unique_ptr<QTimer> m_seconds;
    int m_secondCount = 0;
    int m_requests = 0;
};

void TstGatewayPrompts::init()
{
    m_fixture = std::make_unique<GatewayFixture>();
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    m_secondCount = 0;
    m_requests = 0;
    connect(fixture().gateway.get(), &sim::GatewayServer::lineReceived, this, [this](const QByteArray &line) {
        if (line == "#?")
            ++m_requests;
    });
    m_seconds = std::make_unique<QTimer>();
    connect(m_seconds.get(), &QTimer::timeout, this, [this] {
        ++m_secondCount;
        fixture().time.skip(1s);
    });
}

void TstGatewayPrompts::cleanup()
{
    m_seconds.reset();
    m_fixture.reset();
}

void TstGatewayPrompts::promptBehindEachAnswer()
{
    fixture().addGatewayFaults("prompt gap=2 line=\"#?\"");
    m_seconds->start(100ms);
}

void TstGatewayPrompts::promptBehindAnAnswerMakesItAskAgainAtOnce()
{
    constexpr int kRequests = 500;
    promptBehindEachAnswer();
    WAIT_VERIFY(m_requests >= kRequests);
    QVERIFY2(m_requests > 2 * m_secondCount, qPrintable(QString::number(m_secondCount)));
    QCOMPARE(fixture().lines(), QStringList()); // it sends nothing else
}

void TstGatewayPrompts::operatorIsServedMeanwhile()
{
    constexpr int kMostRequestsATurn = 3;
    int requestsBefore = 0;
    int mostRequests = 0; // in a turn of the event loop
    QTimer beat;
    connect(&beat, &QTimer::timeout, this, [&] {
        mostRequests = qMax(mostRequests, m_requests - std::exchange(requestsBefore, m_requests));
    });
    beat.start(0ms);
    promptBehindEachAnswer();
    WAIT_VERIFY(m_requests >= 100);
    for (int i = 0; i < 10; ++i) {
        const int requests = m_requests;
        const bool isBig = i % 2 != 0;
        gestures::check(fixture().part<QAbstractButton>(isBig ? "radioBigEndn" : "radioLitleEndn"));
        WAIT_COMPARE(fixture().lines().size(), i + 1);
        QCOMPARE(fixture().gateway->state().endian, QString(isBig ? "B" : "L"));
        WAIT_VERIFY(m_requests > requests);
    }
    fixture().gateway->state().mode = "TCP-S";
    WAIT_COMPARE(fixture().differences(), QStringList());
    fixture().waitForPolls(); // the chain's session goes on
    QVERIFY2(mostRequests <= kMostRequestsATurn, qPrintable(QString::number(mostRequests)));
    QVERIFY(fixture().isReady());
    QVERIFY(fixture().isConnected());
    QCOMPARE(fixture().gateway->connectionCount(), 1);
}

void TstGatewayPrompts::dialogueStaysBounded()
{
    constexpr int kRequests = 1000; // more than the dialogue keeps
    promptBehindEachAnswer();
    int mostLines = 0;
    int mostCharacters = 0;
    WAIT_VERIFY((mostLines = qMax(mostLines, dialogue()->blockCount()),
                 mostCharacters = qMax(mostCharacters, dialogue()->document()->characterCount()),
                 m_requests >= kRequests));
    QCOMPARE(mostLines, int(DialogueView::kLines));
    QVERIFY(mostCharacters <= DialogueView::kCharacters + DialogueView::kLongLine);
}

void TstGatewayPrompts::pollingGoesBackToOnceASecond()
{
    promptBehindEachAnswer();
    WAIT_VERIFY(m_requests >= 100);
    m_seconds->stop();
    fixture().gateway->faults().clear();
    int requests = 0;
    do { // what is on its way is answered
        requests = m_requests;
        fixture().waitForPolls();
    } while (m_requests != requests);
    for (int i = 1; i <= 5; ++i) {
        fixture().nextPoll();
        fixture().waitForPolls();
        QCOMPARE(m_requests, requests + i);
    }
    QCOMPARE(fixture().differences(), QStringList());
}

QTEST_MAIN(TstGatewayPrompts)
#include "tst_gatewayprompts.moc"
