#pragma once

#include <QString>
#include <Qt>

/// A row of the report dialog's table.
struct SensorInf
{
    QString typeName;     ///< long form
    QString serialNumber; ///< as the module sent it
    Qt::CheckState checkState = Qt::Unchecked;
    quint8 address = 0; ///< 0 the controller, 1 to 128 analog modules, 129 the power module
};
