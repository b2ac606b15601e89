#include "support/externaltool.h"

#include <QProcess>
#include <QtTest>

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool hasEnded = process.waitForFinished();
    const QByteArray errors = process.readAllStandardError();
    const bool isGood = hasEnded && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!isGood)
        QTest::qFail(qPrintable(program + QStringLiteral(": ") + process.errorString() + u' ' + errors),
                     __FILE__, __LINE__);
    return isGood ? process.readAllStandardOutput() : QByteArray();
}
