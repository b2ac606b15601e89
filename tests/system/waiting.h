#pragma once

#include <QEventLoop>
#include <QTimer>
#include <QtTest>

/// Runs the event loop until the condition holds; false if that takes too long. Unlike QTRY_VERIFY it does
/// not sleep between looks: where two peers talk in one process, each sleep delays a request or a reply.
template <typename Condition>
bool waitUntil(Condition holds)
{
    using namespace std::chrono_literals;
    QEventLoop loop;
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (holds())
            loop.quit();
    });
    limit.start(30s);
    look.start(1ms);
    if (!holds())
        loop.exec();
    return holds();
}

#define WAIT_VERIFY(expression) QVERIFY(waitUntil([&] { return static_cast<bool>(expression); }))

#define WAIT_COMPARE(actual, expected)                                                                       \
    do {                                                                                                     \
        (void)waitUntil([&] { return (actual) == (expected); });                                             \
        QCOMPARE(actual, expected);                                                                          \
    } while (false)
