#include "link/hostlookup.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QtTest>
#include <memory>

using std::chrono::milliseconds;

namespace {

QHostInfo infoOf(const QList<QHostAddress> &addresses)
{
    QHostInfo info;
    info.setAddresses(addresses);
    return info;
}

} // namespace

class TstHostLookup : public QObject
{
    Q_OBJECT

private slots:
    void addressesAreNotLookedUp_data();
    void addressesAreNotLookedUp();
    void aNameIsLookedUp();
    void anUnknownNameHasNoAddress();
    void aLookUpThatHangsIsGivenUp();
};

void TstHostLookup::addressesAreNotLookedUp_data()
{
    QTest::addColumn<QString>("host");
    QTest::newRow("version 4") << QStringLiteral("192.168.0.62");
    QTest::newRow("version 6") << QStringLiteral("::1");
}

void TstHostLookup::addressesAreNotLookedUp()
{
    QFETCH(QString, host);
    bool asked = false;
    const auto addresses = addressesWithin(milliseconds(0), host, [&asked](const QString &) {
        asked = true;
        return QHostInfo();
    });
    QCOMPARE(addresses, QList<QHostAddress>{QHostAddress(host)});
    QVERIFY(!asked);
}

void TstHostLookup::aNameIsLookedUp()
{
    const QList<QHostAddress> expected{QHostAddress(QStringLiteral("10.0.0.1")),
                                       QHostAddress(QStringLiteral("10.0.0.2"))};
    const auto addresses =
        addressesWithin(milliseconds(10000), QStringLiteral("gateway"), [&](const QString &name) {
            return name == QLatin1String("gateway") ? infoOf(expected) : QHostInfo();
        });
    QCOMPARE(addresses, expected);
}

void TstHostLookup::anUnknownNameHasNoAddress()
{
    const auto addresses = addressesWithin(milliseconds(10000), QStringLiteral("gateway"),
                                           [](const QString &) { return QHostInfo(); });
    QVERIFY(addresses.isEmpty());
}

void TstHostLookup::aLookUpThatHangsIsGivenUp()
{
    const auto release = std::make_shared<QSemaphore>();
    const auto ended = std::make_shared<QSemaphore>();
    QElapsedTimer clock;
    clock.start();
    const auto addresses = addressesWithin(milliseconds(50), QStringLiteral("gateway"), [=](const QString &) {
        release->acquire();
        ended->release();
        return infoOf({QHostAddress(QHostAddress::LocalHost)});
    });
    QVERIFY(addresses.isEmpty());
    QVERIFY(clock.elapsed() >= 45);
    release->release();
    QVERIFY(ended->tryAcquire(1, 10000)); // its late answer reaches nobody
}

QTEST_GUILESS_MAIN(TstHostLookup)
#include "tst_hostlookup.moc"
