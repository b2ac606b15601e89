#include "base/log.h"

QDebug debugLine(const char *signature)
{
    return qDebug() << signature << ":";
}

QDebug criticalLine(const char *signature)
{
    return qCritical() << signature << ":";
}
