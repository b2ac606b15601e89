#pragma once

#include "reports/reporthead.h"

#include <QStringList>
#include <vector>

struct StatusStore;

/// The complete system report as a plain table, before it becomes a spreadsheet. Rows and columns count
/// from 1, as a reader sees them.
struct ReportSheet
{
    struct Row
    {
        int number;         ///< from 3
        QStringList values; ///< from column 1; one blank where a cell is empty
    };

    QString title;         ///< row 1
    QStringList headings;  ///< row 2
    std::vector<Row> rows; ///< rows of modules that were not chosen are missing
};

/// The controller in row 3, the analog modules from row 4 on by their addresses, the power module, if it is
/// present, in the row behind the last possible analog one.
ReportSheet reportSheet(const StatusStore &store, const ModuleFilter &isChosen, const ReportHead &head);

/// Whether a value is written as a number: it has no blank and stands in one of the number columns.
bool isNumberCell(int column, const QString &value);
