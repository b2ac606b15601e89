#pragma once

#include <QByteArray>

struct ReportSheet;

/// The sheet as a whole XLSX file. Empty if that failed, with the reason in the log: then the folder for
/// temporary files is full or gone. What is returned was read back and is complete.
QByteArray workbook(const ReportSheet &sheet);
