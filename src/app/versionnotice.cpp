#include "app/versionnotice.h"

#include <QRegularExpression>
#include <QStringList>

bool isNewVersionNoticeDue(const QString &local, const QString &remote)
{
    static const QRegularExpression notDigits(QStringLiteral("[^0-9]+"));
    const QStringList ours = local.split(QLatin1Char('.'));
    const QStringList theirs = remote.split(notDigits, Qt::SkipEmptyParts);
    if (ours.size() != theirs.size())
        return true;
    for (int i = 0; i < ours.size(); ++i) {
        if (theirs.at(i).toULongLong() > ours.at(i).toULongLong())
            return true;
    }
    return false;
}
