#include "reports/textviewer.h"

#include "base/log.h"

#include <QDir>
#include <QProcess>

void showTextFile(const QString &path, QObject *owner)
{
    auto *editor = new QProcess(owner);
    QObject::connect(editor, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), editor,
                     &QObject::deleteLater);
    QObject::connect(editor, &QProcess::errorOccurred, editor, [editor, path](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return; // it ran; its end is told by the other signal
        criticalLine("void showTextFile(QString,QObject *)")
            << "No editor for" << path << "-" << editor->errorString();
        editor->deleteLater();
    });
    editor->start(QStringLiteral("notepad.exe"), {QDir::toNativeSeparators(path)}, QIODevice::ReadWrite);
}
