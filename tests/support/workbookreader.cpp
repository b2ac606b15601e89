#include "support/workbookreader.h"

#include "support/externaltool.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace {

/// Lets the program read the workbook: its path is the argument in the place of "%1".
QByteArray readBy(const QString &program, QStringList arguments, const QByteArray &workbook)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("report.xlsx")));
    if (!file.open(QIODevice::WriteOnly) || file.write(workbook) != workbook.size())
        return {};
    file.close();
    arguments.replaceInStrings(QStringLiteral("%1"), file.fileName());
    return outputOf(program, arguments);
}

// The interpreter of the distribution: the package of the library belongs to it.
const char kPython[] = "/usr/bin/python3";

} // namespace

QJsonObject readWorkbook(const QByteArray &workbook)
{
    const QByteArray json = readBy(QString::fromLatin1(kPython),
                                   {QStringLiteral(VX_WORKBOOK_READER), QStringLiteral("%1")}, workbook);
    return QJsonDocument::fromJson(json).object();
}

QByteArray partOf(const QByteArray &workbook, const char *name)
{
    const QString script = QStringLiteral("import sys, zipfile\n"
                                          "sys.stdout.buffer.write("
                                          "zipfile.ZipFile(sys.argv[1]).read(sys.argv[2]))");
    return readBy(QString::fromLatin1(kPython),
                  {QStringLiteral("-c"), script, QStringLiteral("%1"), QString::fromLatin1(name)}, workbook);
}
