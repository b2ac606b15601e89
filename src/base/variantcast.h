#pragma once

#include <QVariant>

/// The record of type T that a signal carried. A variant of another type is converted if that is possible;
/// otherwise the result is T's default, all zero, which consumers treat as absent.
template <typename T>
T recordFromVariant(const QVariant &variant)
{
    if (variant.userType() == qMetaTypeId<T>())
        return *static_cast<const T *>(variant.constData());
    return variant.value<T>();
}
