// Writes a line of each level while the log is caught, and ends by the last.

#include "support/messagecatcher.h"

#include <QtGlobal>

int main()
{
    const MessageCatcher catcher;
    qDebug("a debug line");
    qInfo("a line of information");
    qWarning("a warning");
    qCritical("a critical line");
    qFatal("this cannot go on");
}
