#pragma once

#include <QSpinBox>
#include <QtTest>

/// Rows of steps by one and by other counts.
inline void addStepCounts()
{
    QTest::addColumn<int>("steps");
    for (const int steps : {1, -1, 10, -10, 0})
        QTest::newRow(qPrintable(QString::number(steps))) << steps;
}

/// Steps a confirmed box by the row's count: its value is shown as sent.
inline void checkStepTurnsRed(QSpinBox &box)
{
    QFETCH(int, steps);
    box.setStyleSheet(QStringLiteral("color:black"));
    box.stepBy(steps);
    QCOMPARE(box.styleSheet(), QStringLiteral("color:#C00000"));
}
