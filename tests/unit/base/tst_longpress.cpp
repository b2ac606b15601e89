#include "base/longpress.h"

#include <QtTest>

using std::chrono::milliseconds;

namespace {

const QDateTime kBegin(QDate(2026, 3, 2), QTime(23, 59, 59), Qt::UTC); // just before midnight

} // namespace

/// What a press means by the time for which it lasted.
class TstLongPress : public QObject
{
    Q_OBJECT

private slots:
    void meaningFollowsTheTime_data();
    void meaningFollowsTheTime();
    void limitsCanBeChosen();
    void nextPressBeginsAnew();
    void clockSetBackMakesAClick();
    void withoutAPressNothingIsLong();
};

void TstLongPress::meaningFollowsTheTime_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<bool>("click");
    QTest::addColumn<bool>("longPress");
    QTest::newRow("at once") << 0 << true << false;
    QTest::newRow("longest click") << 1100 << true << false;
    QTest::newRow("neither, from below") << 1101 << false << false;
    QTest::newRow("neither, from above") << 1999 << false << false;
    QTest::newRow("shortest long press") << 2000 << false << true;
    QTest::newRow("over midnight") << 3000 << false << true;
}

void TstLongPress::meaningFollowsTheTime()
{
    QFETCH(int, ms);
    LongPress press;
    press.begin(kBegin);
    const QDateTime now = kBegin.addMSecs(ms);
    QTEST(press.isClick(now), "click");
    QTEST(press.isLong(now), "longPress");
}

void TstLongPress::limitsCanBeChosen()
{
    LongPress press(LongPress::Limits{milliseconds(10), milliseconds(20)});
    press.begin(kBegin);
    QVERIFY(press.isClick(kBegin.addMSecs(10)));
    QVERIFY(!press.isClick(kBegin.addMSecs(11)));
    QVERIFY(!press.isLong(kBegin.addMSecs(19)));
    QVERIFY(press.isLong(kBegin.addMSecs(20)));
}

void TstLongPress::nextPressBeginsAnew()
{
    LongPress press;
    press.begin(kBegin);
    press.begin(kBegin.addMSecs(5000));
    QVERIFY(press.isClick(kBegin.addMSecs(6000)));
    QVERIFY(!press.isLong(kBegin.addMSecs(6000)));
}

void TstLongPress::clockSetBackMakesAClick()
{
    LongPress press;
    press.begin(kBegin);
    QVERIFY(press.isClick(kBegin.addSecs(-3600)));
    QVERIFY(!press.isLong(kBegin.addSecs(-3600)));
}

void TstLongPress::withoutAPressNothingIsLong()
{
    const LongPress press;
    QVERIFY(!press.isLong(kBegin));
}

QTEST_APPLESS_MAIN(TstLongPress)
#include "tst_longpress.moc"
