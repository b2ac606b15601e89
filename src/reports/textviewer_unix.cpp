#include "reports/textviewer.h"

#include "base/log.h"

#include <QDesktopServices>
#include <QUrl>

void showTextFile(const QString &path, QObject *)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        criticalLine("void showTextFile(QString,QObject *)") << "No program shows" << path;
}
