#include "mainwindowfixture.h"

#include <QStatusBar>

/// The status line at the bottom of the window and the clock beside it.
class TstFrameworkViewStatusLine : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void textStaysForItsTicks_data();
    void textStaysForItsTicks();
    void textOfMinusOneStays();
    void firstTextGoesWithTheFirstTick();
    void newTextStartsItsOwnTicks();
    void colourOfTheText_data();
    void colourOfTheText();
    void plainMessageColoursOnlyTheBar();
    void textIsShownAsItStands();
    void hwDelayCoversTheLineForThreeSeconds();
    void nextHwDelayHasATimeOfItsOwn();
    void clockShowsTheTimeOfDay();

private:
    void tick(int seconds) { m->time.advance(std::chrono::seconds(seconds)); }

    std::unique_ptr<MainWindowFixture> m;
};

void TstFrameworkViewStatusLine::init()
{
    m = std::make_unique<MainWindowFixture>();
    m->show();
}

void TstFrameworkViewStatusLine::cleanup()
{
    m.reset();
}

void TstFrameworkViewStatusLine::textStaysForItsTicks_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("ticks");
    QTest::newRow("message") << "message" << 7;
    QTest::newRow("info") << "info" << 10;
    QTest::newRow("timed 1") << "timed" << 1;
    QTest::newRow("timed 0") << "timed" << 0;
    QTest::newRow("coloured 3") << "coloured" << 3;
}

void TstFrameworkViewStatusLine::textStaysForItsTicks()
{
    QFETCH(QString, kind);
    QFETCH(int, ticks);
    if (kind == QLatin1String("message"))
        m->view->showMessage(QStringLiteral("text"));
    else if (kind == QLatin1String("info"))
        m->view->showInfo(QStringLiteral("text"));
    else if (kind == QLatin1String("timed"))
        m->view->showTimed(QStringLiteral("text"), ticks);
    else
        m->view->showColoured(QStringLiteral("text"), ticks, 1);
    QCOMPARE(m->statusText(), QString("   text"));
    tick(ticks);
    QCOMPARE(m->statusText(), QString("   text"));
    tick(1);
    QCOMPARE(m->statusText(), QString());
}

void TstFrameworkViewStatusLine::textOfMinusOneStays()
{
    m->view->showColoured(QStringLiteral("text"), -1, 0);
    tick(300);
    QCOMPARE(m->statusText(), QString("   text"));
}

void TstFrameworkViewStatusLine::firstTextGoesWithTheFirstTick()
{
    QCOMPARE(m->statusText(), QString("THis is a test message"));
    m->time.advance(999);
    QCOMPARE(m->statusText(), QString("THis is a test message"));
    m->time.advance(1);
    QCOMPARE(m->statusText(), QString());
}

void TstFrameworkViewStatusLine::newTextStartsItsOwnTicks()
{
    m->view->showColoured(QStringLiteral("stays"), -1, 1);
    tick(5);
    m->view->showTimed(QStringLiteral("goes"), 2);
    tick(2);
    QCOMPARE(m->statusText(), QString("   goes"));
    tick(1);
    QCOMPARE(m->statusText(), QString());
}

void TstFrameworkViewStatusLine::colourOfTheText_data()
{
    QTest::addColumn<int>("red");
    QTest::addColumn<QString>("style");
    QTest::newRow("0") << 0 << "color: black";
    QTest::newRow("1") << 1 << "color: red";
    QTest::newRow("-3") << -3 << "color: red";
}

void TstFrameworkViewStatusLine::colourOfTheText()
{
    QFETCH(int, red);
    QFETCH(QString, style);
    m->view->showColoured(QStringLiteral("text"), 4, red);
    QCOMPARE(m->child<QLabel>("statusLabel")->styleSheet(), style);
    m->view->showInfo(QStringLiteral("text"));
    QCOMPARE(m->child<QLabel>("statusLabel")->styleSheet(), QString("color: black"));
}

void TstFrameworkViewStatusLine::plainMessageColoursOnlyTheBar()
{
    m->view->showColoured(QStringLiteral("warning"), -1, 1);
    m->view->showMessage(QStringLiteral("plain"));
    QCOMPARE(m->view->statusBar()->styleSheet(), QString("color: black"));
    QCOMPARE(m->child<QLabel>("statusLabel")->styleSheet(), QString("color: red"));
    QCOMPARE(m->statusText(), QString("   plain"));
}

void TstFrameworkViewStatusLine::textIsShownAsItStands()
{
    m->view->showInfo(QStringLiteral("<b>COM3</b>"));
    QCOMPARE(m->child<QLabel>("statusLabel")->textFormat(), Qt::PlainText);
    QCOMPARE(m->statusText(), QString("   <b>COM3</b>"));
}

void TstFrameworkViewStatusLine::hwDelayCoversTheLineForThreeSeconds()
{
    m->view->showTimed(QStringLiteral("below"), -1);
    m->view->showHwDelay(250);
    QCOMPARE(m->view->statusBar()->currentMessage(), QString("HW delay response : 250"));
    QCOMPARE(m->view->statusBar()->styleSheet(), QString("color: black"));
    QCOMPARE(m->statusText(), QString("   below"));
    m->time.advance(2999);
    QCOMPARE(m->view->statusBar()->currentMessage(), QString("HW delay response : 250"));
    QVERIFY(!m->child<QLabel>("statusLabel")->isVisible());
    m->time.advance(1);
    QCOMPARE(m->view->statusBar()->currentMessage(), QString());
    QVERIFY(m->child<QLabel>("statusLabel")->isVisible());
    QCOMPARE(m->statusText(), QString("   below"));
}

void TstFrameworkViewStatusLine::nextHwDelayHasATimeOfItsOwn()
{
    m->view->showHwDelay(250);
    m->time.advance(2000);
    m->view->showHwDelay(300);
    m->time.advance(2999);
    QCOMPARE(m->view->statusBar()->currentMessage(), QString("HW delay response : 300"));
    m->time.advance(1);
    QCOMPARE(m->view->statusBar()->currentMessage(), QString());

    // Nobody clears what comes later.
    m->view->statusBar()->showMessage(QStringLiteral("other"));
    m->time.advance(10000);
    QCOMPARE(m->view->statusBar()->currentMessage(), QString("other"));
}

void TstFrameworkViewStatusLine::clockShowsTheTimeOfDay()
{
    const auto *clock = m->child<QLabel>("clockLabel");
    QCOMPARE(clock->text(), QString());
    tick(1);
    QCOMPARE(clock->text(), QString("08:30:01"));
    m->time.advance(1999);
    QCOMPARE(clock->text(), QString("08:30:02"));
    tick(118);
    QCOMPARE(clock->text(), QString("08:32:00"));
}

QTEST_MAIN(TstFrameworkViewStatusLine)

#include "tst_framework_view_statusline.moc"
