#pragma once

#include <QSpinBox>

/// Sets the value, or what the range of the box makes of it.
inline void setBoundedValue(QSpinBox &box, qint64 value)
{
    box.setValue(static_cast<int>(qBound<qint64>(box.minimum(), value, box.maximum())));
}
