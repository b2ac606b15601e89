#include "stripfixture.h"
#include "support/messagecatcher.h"

#include <QToolTip>

namespace {

constexpr auto kAmplifiers = {1, 2, 4};
const QString kAutozeroSent = QStringLiteral("Signal_SendAutozero(true)");
const QString kAutoResetSent = QStringLiteral("Signal_SendAutoReset(true)");

} // namespace

/// Clicks, long presses and gestures of the Auto Zero button.
class TstChannelAutozero : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void autozeroPress_data();
    void autozeroPress();
    void resetComesWhileTheButtonIsDown_data() { addFamilies(kAmplifiers); }
    void resetComesWhileTheButtonIsDown();
    void resetOfAllIsToldToo_data() { addFamilies(kAmplifiers); }
    void resetOfAllIsToldToo();
    void disabledStripStillResets_data() { addFamilies(kAmplifiers); }
    void disabledStripStillResets();
    void onlyShiftAloneIsAGesture_data();
    void onlyShiftAloneIsAGesture();
    void secondPressOfAQuickPairIsAGestureToo_data() { addFamilies(kAmplifiers); }
    void secondPressOfAQuickPairIsAGestureToo();
    void meaninglessShiftPressCountsForTheNext_data() { addFamilies(kAmplifiers); }
    void meaninglessShiftPressCountsForTheNext();
    void autozeroStateIsColoured_data() { addFamilies(kAmplifiers); }
    void autozeroStateIsColoured();
    void deletedWhileAutozeroIsHeld_data() { addFamilies(kAmplifiers); }
    void deletedWhileAutozeroIsHeld();

private:
    std::unique_ptr<StripFixture> s;
};

void TstChannelAutozero::init()
{
    QFETCH(int, family);
    s = std::make_unique<StripFixture>(family);
    s->show();
}

void TstChannelAutozero::cleanup()
{
    s.reset();
    QToolTip::hideText();
}

void TstChannelAutozero::autozeroPress_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("ms");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<QString>("sent"); // empty: nothing
    const auto add = [](const char *name, int ms, const QString &plain, const QString &group) {
        for (const int family : kAmplifiers) {
            QTest::addRow("type %d, %s", family, name) << family << ms << false << plain;
            QTest::addRow("type %d, Shift, %s", family, name) << family << ms << true << group;
        }
    };
    const QString zeroAll = StripFixture::groupSignal(2);
    const QString resetAll = StripFixture::groupSignal(5);
    add("at once", 0, kAutozeroSent, zeroAll);
    add("after the first look", 1000, kAutozeroSent, zeroAll);
    add("longest click", 1100, kAutozeroSent, zeroAll);
    add("too long for a click", 1101, QString(), QString());
    add("a second and a half", 1500, QString(), QString());
    add("too short for a long press", 1999, QString(), QString());
    add("two seconds", 2000, kAutoResetSent, resetAll);
    add("three seconds", 3000, kAutoResetSent, resetAll);
    add("ten seconds", 10000, kAutoResetSent, resetAll);
}

void TstChannelAutozero::autozeroPress()
{
    QFETCH(int, ms);
    QFETCH(bool, shift);
    QFETCH(QString, sent);
    s->holdAutozero(ms, shift ? Qt::ShiftModifier : Qt::NoModifier);
    s->time.advance(10000); // nothing comes afterwards
    QCOMPARE(s->recorder->take(), sent.isEmpty() ? QStringList() : QStringList(sent));
    QCOMPARE(s->autozero()->styleSheet(), sent.isEmpty() ? kBlack : kRed);
    if (sent.isEmpty())
        return;
    s->holdAutozero(0);
    QCOMPARE(s->recorder->take(), QStringList(kAutozeroSent)); // the gesture was for one press
}

void TstChannelAutozero::resetComesWhileTheButtonIsDown()
{
    MessageCatcher log;
    QTest::mousePress(s->autozero(), Qt::LeftButton);
    s->time.advance(1999);
    QCOMPARE(s->recorder->take(), QStringList());
    QVERIFY(!log.contains("Autozero released"));
    s->time.advance(1);
    QCOMPARE(s->recorder->take(), QStringList(kAutoResetSent));
    QVERIFY(log.contains("Autozero released"));
    QCOMPARE(QToolTip::text(), QStringLiteral("AutoReset Sent"));
    QVERIFY(s->autozero()->isDown());
    QTest::mouseRelease(s->autozero(), Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelAutozero::resetOfAllIsToldToo()
{
    MessageCatcher log;
    s->holdAutozero(2000, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(5)));
    QCOMPARE(QToolTip::text(), QStringLiteral("AutoReset Sent"));
    QVERIFY(log.contains("Autozero released"));
}

void TstChannelAutozero::disabledStripStillResets()
{
    s->strip->disableUpdates();
    s->holdAutozero(2000);
    QCOMPARE(s->recorder->take(), QStringList(kAutoResetSent));
    s->holdAutozero(2000, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(5)));
}

void TstChannelAutozero::onlyShiftAloneIsAGesture_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("keys");
    for (const int family : kAmplifiers) {
        QTest::addRow("type %d, Ctrl", family) << family << int(Qt::ControlModifier);
        QTest::addRow("type %d, Alt", family) << family << int(Qt::AltModifier);
        QTest::addRow("type %d, Shift and Ctrl", family)
            << family << int(Qt::ShiftModifier | Qt::ControlModifier);
    }
}

void TstChannelAutozero::onlyShiftAloneIsAGesture()
{
    QFETCH(int, keys);
    s->holdAutozero(0, Qt::KeyboardModifiers(keys));
    QCOMPARE(s->recorder->take(), QStringList(kAutozeroSent));
}

void TstChannelAutozero::secondPressOfAQuickPairIsAGestureToo()
{
    QMouseEvent press(QEvent::MouseButtonDblClick, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                      Qt::ShiftModifier);
    QApplication::sendEvent(s->autozero(), &press);
    QTest::mouseRelease(s->autozero(), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(2)));
}

void TstChannelAutozero::meaninglessShiftPressCountsForTheNext()
{
    s->holdAutozero(1500, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList());
    s->holdAutozero(0);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(2)));
    s->holdAutozero(0);
    QCOMPARE(s->recorder->take(), QStringList(kAutozeroSent));
}

void TstChannelAutozero::autozeroStateIsColoured()
{
    s->strip->setAutozero(true);
    QCOMPARE(s->autozero()->styleSheet(), kRed);
    s->strip->setAutozero(false);
    QCOMPARE(s->autozero()->styleSheet(), kBlack);
}

void TstChannelAutozero::deletedWhileAutozeroIsHeld()
{
    QTest::mousePress(s->autozero(), Qt::LeftButton);
    s->time.advance(1000);
    delete s->strip;
    s->time.advance(30000);
    QCOMPARE(s->recorder->take(), QStringList());
}

QTEST_MAIN(TstChannelAutozero)
#include "tst_channelautozero.moc"
