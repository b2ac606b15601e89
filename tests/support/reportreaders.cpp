#include "support/reportreaders.h"

#include <QJsonDocument>
#include <QProcess>
#include <QtTest>

namespace readers {

QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        const QByteArray errors = process.readAllStandardError();
        QTest::qFail(qPrintable(program + QLatin1Char(' ') + arguments.join(QLatin1Char(' ')) +
                                QStringLiteral(": ") + process.errorString() + QString::fromUtf8(errors)),
                     __FILE__, __LINE__);
        return {};
    }
    return process.readAllStandardOutput();
}

QString pdfText(const QString &path)
{
    const QByteArray text =
        output(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    return QString::fromUtf8(text).replace(QChar::Nbsp, QLatin1Char(' '));
}

Sheet sheet(const QString &path)
{
    const QByteArray json = output(QStringLiteral("python3"), {QStringLiteral(VX_READ_SHEET), path});
    return {QJsonDocument::fromJson(json).array()};
}

} // namespace readers
