#include "link/hostlookup.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QSemaphore>
#include <QtTest>
#include <memory>
#include <optional>

using std::chrono::milliseconds;

namespace {

const QString kName = QStringLiteral("gateway");
const QHostAddress kFirst(QStringLiteral("10.0.0.1"));
const QHostAddress kSecond(QStringLiteral("10.0.0.2"));
constexpr milliseconds kGenerous(20000);

QHostInfo infoOf(const QList<QHostAddress> &addresses)
{
    QHostInfo info;
    info.setAddresses(addresses);
    return info;
}

/// A look-up that hangs until the test lets it end.
struct HeldLookUp
{
    QSemaphore begun;
    QSemaphore mayEnd;
    QSemaphore ended;
};

HostLookup::Function held(const std::shared_ptr<HeldLookUp> &control)
{
    return [control](const QString &) {
        control->begun.release();
        control->mayEnd.acquire();
        control->ended.release();
        return infoOf({kFirst});
    };
}

} // namespace

class TstHostLookup : public QObject
{
    Q_OBJECT

private slots:
    void whatNeedsNoLookUpIsNotLookedUp_data();
    void whatNeedsNoLookUpIsNotLookedUp();
    void whatNeedsNoLookUpIsKnownWithoutWaiting_data();
    void whatNeedsNoLookUpIsKnownWithoutWaiting();
    void aNameIsLookedUp();
    void anUnknownNameHasNoAddress();
    void everyAttemptAfterAnAnswerLooksUpAnew();
    void aLookUpThatHangsIsGivenUp();
    void aHostIsLookedUpOnceAtATime();
    void aLateAnswerServesTheNextAttempt();
    void theAnswerOfAHostThatWasLeftIsForgotten();
    void withoutWaitingNoAnswerYetIsNoUnknownName();
    void aNameIsFoundWithoutWaiting();
    void aBegunLookUpServesTheOneWhoAsksLater();
    void theOneWhoAskedMayEndFirst();
    void theProgramEndsWhileALookUpHangs();
};

void TstHostLookup::whatNeedsNoLookUpIsNotLookedUp_data()
{
    QTest::addColumn<QString>("host");
    QTest::newRow("version 4") << QStringLiteral("192.168.0.62");
    QTest::newRow("version 6") << QStringLiteral("::1");
    QTest::newRow("empty") << QString();
}

void TstHostLookup::whatNeedsNoLookUpIsNotLookedUp()
{
    QFETCH(QString, host);
    const auto expected = host.isEmpty() ? QList<QHostAddress>() : QList<QHostAddress>{QHostAddress(host)};
    const auto control = std::make_shared<HeldLookUp>();
    control->mayEnd.release();
    HostLookup hosts(held(control));
    QCOMPARE(hosts.addressesWithin(milliseconds(0), host), expected);
    QVERIFY(!control->begun.tryAcquire(1, 100));
}

void TstHostLookup::whatNeedsNoLookUpIsKnownWithoutWaiting_data()
{
    whatNeedsNoLookUpIsNotLookedUp_data();
}

void TstHostLookup::whatNeedsNoLookUpIsKnownWithoutWaiting()
{
    QFETCH(QString, host);
    const auto expected = host.isEmpty() ? QList<QHostAddress>() : QList<QHostAddress>{QHostAddress(host)};
    const auto control = std::make_shared<HeldLookUp>();
    control->mayEnd.release();
    HostLookup hosts(held(control));
    hosts.begin(host);
    const auto found = hosts.addressesIfAnswered(host);
    QVERIFY(found.has_value());
    QCOMPARE(*found, expected);
    QVERIFY(!control->begun.tryAcquire(1, 100));
}

void TstHostLookup::aNameIsLookedUp()
{
    const QList<QHostAddress> expected{kFirst, kSecond};
    HostLookup hosts([expected](const QString &name) {
        return name == QLatin1String("gateway") ? infoOf(expected) : QHostInfo();
    });
    QCOMPARE(hosts.addressesWithin(kGenerous, kName), expected);
}

void TstHostLookup::anUnknownNameHasNoAddress()
{
    HostLookup hosts([](const QString &) { return QHostInfo(); });
    QVERIFY(hosts.addressesWithin(kGenerous, kName).isEmpty());
}

void TstHostLookup::everyAttemptAfterAnAnswerLooksUpAnew()
{
    int asked = 0;
    HostLookup hosts([&asked](const QString &) { return infoOf({++asked == 1 ? kFirst : kSecond}); });
    QCOMPARE(hosts.addressesWithin(kGenerous, kName), QList<QHostAddress>{kFirst});
    QCOMPARE(hosts.addressesWithin(kGenerous, kName), QList<QHostAddress>{kSecond});
}

void TstHostLookup::aLookUpThatHangsIsGivenUp()
{
    const auto control = std::make_shared<HeldLookUp>();
    HostLookup hosts(held(control));
    QElapsedTimer clock;
    clock.start();
    QVERIFY(hosts.addressesWithin(milliseconds(50), kName).isEmpty());
    QVERIFY(clock.elapsed() >= 45);
    control->mayEnd.release();
    QVERIFY(control->ended.tryAcquire(1, 10000));
}

void TstHostLookup::aHostIsLookedUpOnceAtATime()
{
    const auto control = std::make_shared<HeldLookUp>();
    HostLookup hosts(held(control));
    for (int attempt = 0; attempt < 5; ++attempt)
        QVERIFY(hosts.addressesWithin(milliseconds(1), kName).isEmpty());
    QVERIFY(control->begun.tryAcquire(1, 10000));
    QVERIFY(hosts.addressesWithin(milliseconds(1), QStringLiteral("other")).isEmpty());
    QVERIFY(control->begun.tryAcquire(1, 10000)); // another host does not wait for the first
    control->mayEnd.release(2);
    QVERIFY(control->ended.tryAcquire(2, 10000));
    QCOMPARE(control->begun.available(), 0);
}

void TstHostLookup::aLateAnswerServesTheNextAttempt()
{
    const auto control = std::make_shared<HeldLookUp>();
    HostLookup hosts(held(control));
    QVERIFY(hosts.addressesWithin(milliseconds(1), kName).isEmpty());
    control->mayEnd.release();
    QCOMPARE(hosts.addressesWithin(kGenerous, kName), QList<QHostAddress>{kFirst});
    QCOMPARE(control->begun.available(), 1);
}

void TstHostLookup::theAnswerOfAHostThatWasLeftIsForgotten()
{
    const auto control = std::make_shared<HeldLookUp>();
    HostLookup hosts(held(control));
    const long owners = control.use_count();
    QVERIFY(hosts.addressesWithin(milliseconds(1), kName).isEmpty());
    control->mayEnd.release(3);
    QTRY_COMPARE(control.use_count(), owners); // the look-up is over
    QVERIFY(!hosts.addressesWithin(kGenerous, QStringLiteral("other")).isEmpty());
    QVERIFY(!hosts.addressesWithin(kGenerous, kName).isEmpty());
    QCOMPARE(control->begun.available(), 3);
}

void TstHostLookup::withoutWaitingNoAnswerYetIsNoUnknownName()
{
    QSemaphore mayEnd;
    HostLookup hosts([&mayEnd](const QString &) {
        mayEnd.acquire();
        return QHostInfo();
    });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!hosts.addressesIfAnswered(kName).has_value());
    QVERIFY(!hosts.addressesIfAnswered(kName).has_value());
    QVERIFY(clock.elapsed() < kGenerous.count());
    mayEnd.release();
    std::optional<QList<QHostAddress>> found;
    QTRY_VERIFY(found || (found = hosts.addressesIfAnswered(kName)));
    QVERIFY(found->isEmpty());
}

void TstHostLookup::aNameIsFoundWithoutWaiting()
{
    const auto control = std::make_shared<HeldLookUp>();
    HostLookup hosts(held(control));
    QVERIFY(!hosts.addressesIfAnswered(kName).has_value());
    control->mayEnd.release();
    std::optional<QList<QHostAddress>> found;
    QTRY_VERIFY(found || (found = hosts.addressesIfAnswered(kName)));
    QCOMPARE(*found, QList<QHostAddress>{kFirst});
    QCOMPARE(control->begun.available(), 1);
}

void TstHostLookup::aBegunLookUpServesTheOneWhoAsksLater()
{
    const auto control = std::make_shared<HeldLookUp>();
    HostLookup hosts(held(control));
    hosts.begin(kName);
    hosts.begin(kName);
    QVERIFY(control->begun.tryAcquire(1, 10000)); // nobody has asked yet
    control->mayEnd.release();
    QVERIFY(control->ended.tryAcquire(1, 10000));
    hosts.begin(kName);
    QCOMPARE(hosts.addressesWithin(kGenerous, kName), QList<QHostAddress>{kFirst});
    QCOMPARE(control->begun.available(), 0); // no second look-up
}

void TstHostLookup::theOneWhoAskedMayEndFirst()
{
    const auto control = std::make_shared<HeldLookUp>();
    {
        HostLookup hosts(held(control));
        QVERIFY(hosts.addressesWithin(milliseconds(1), kName).isEmpty());
    }
    control->mayEnd.release();
    QVERIFY(control->ended.tryAcquire(1, 10000));
    QTRY_COMPARE(control.use_count(), 1L); // nothing is left of it
}

void TstHostLookup::theProgramEndsWhileALookUpHangs()
{
    QProcess program;
    program.start(QCoreApplication::applicationDirPath() + QStringLiteral("/hanginglookup"), QStringList());
    QVERIFY(program.waitForFinished(20000));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.readAllStandardOutput(), QByteArray("leaving"));
    QCOMPARE(program.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TstHostLookup)
#include "tst_hostlookup.moc"
