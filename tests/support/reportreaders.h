#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>

/// Reads report files by programs that have nothing to do with ours.
namespace readers {

/// What the program printed. A program that is missing, fails or hangs fails the test.
QByteArray output(const QString &program, const QStringList &arguments);

/// Text of a PDF in reading order, with plain blanks.
QString pdfText(const QString &path);

/// A spreadsheet; rows and columns count from 1.
struct Sheet
{
    QJsonArray rows;

    int rowCount() const { return rows.size(); }
    QVariant cell(int row, int column) const { return rows.at(row - 1).toArray().at(column - 1).toVariant(); }
};

Sheet sheet(const QString &path);

} // namespace readers
