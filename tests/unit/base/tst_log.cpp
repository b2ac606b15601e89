#include "base/log.h"

#include <QtTest>

class TstLog : public QObject
{
    Q_OBJECT

private slots:
    void aLineThatMattersBeginsWithTheSignature();
    void aCriticalLineHasTheLevelCritical();
    void linesGoToTheDefaultCategory();
};

void TstLog::aLineThatMattersBeginsWithTheSignature()
{
    QTest::ignoreMessage(QtDebugMsg, "void Some::slot(int) : it is 5");
    debugLine("void Some::slot(int)") << "it is" << 5;
}

void TstLog::aCriticalLineHasTheLevelCritical()
{
    QTest::ignoreMessage(QtCriticalMsg, "void Some::slot() : too bad");
    criticalLine("void Some::slot()") << "too bad";
}

void TstLog::linesGoToTheDefaultCategory()
{
    static QByteArray category;
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &context, const QString &) { category = context.category; });
    debugLine("f()") << "x";
    qInstallMessageHandler(previous);
    QCOMPARE(category, QByteArray("default"));
}

QTEST_GUILESS_MAIN(TstLog)
#include "tst_log.moc"
