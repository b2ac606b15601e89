#include "protocol/pollingpattern.h"

#include <QtTest>

class TstPollingPattern : public QObject
{
    Q_OBJECT

private slots:
    void everyFourthPollAsksForTheModules();
};

void TstPollingPattern::everyFourthPollAsksForTheModules()
{
    PollingPattern pattern;
    for (int round = 0; round < 300; ++round) {
        QCOMPARE(int(pattern.next()), 0x08);
        QCOMPARE(int(pattern.next()), 0x08);
        QCOMPARE(int(pattern.next()), 0x08);
        QCOMPARE(int(pattern.next()), 0x10);
    }
}

QTEST_GUILESS_MAIN(TstPollingPattern)
#include "tst_pollingpattern.moc"
