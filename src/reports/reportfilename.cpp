#include "reports/reportfilename.h"

#include "reports/moduletexts.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

namespace reportfilename {

namespace {

bool isForbiddenInFileName(QChar c)
{
    return QStringLiteral("\\/:*?\"<>|.").contains(c) || c.category() == QChar::Other_Control;
}

QString fileNamePart(QString text)
{
    std::replace_if(text.begin(), text.end(), isForbiddenInFileName, QChar(u'_'));
    return text;
}

QString timedProposal(const QString &folder, const QDateTime &now)
{
    const QString time = QLocale::c().toString(now, QStringLiteral("yyyyMMddHHmmss"));
    return folder.isEmpty() ? time : folder + u'/' + time;
}

} // namespace

QString systemProposal(const QString &folder, const QDateTime &now)
{
    return timedProposal(folder, now) + QStringLiteral("_VX_SystemReport_");
}

QString moduleProposal(const QString &folder, const QDateTime &now, const QString &serialNumber,
                       quint8 typeCode)
{
    return timedProposal(folder, now) + u'_' + fileNamePart(moduletexts::nineDigits(serialNumber)) +
           QStringLiteral("_VX_") + moduletexts::shortTypeName(typeCode) + u'_';
}

QString baseName(const QString &path)
{
    static const QRegularExpression kSeparator(QStringLiteral("/|''"));
    return path.split(kSeparator).last();
}

} // namespace reportfilename
