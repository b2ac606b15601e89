#pragma once

#include <QObject>

/// The child of `root` with this class and object name. There must be exactly one.
template <typename T>
T *childByName(const QObject *root, const char *name)
{
    const auto found = root->findChildren<T *>(QString::fromLatin1(name));
    if (found.size() != 1)
        qFatal("%d children are named %s", static_cast<int>(found.size()), name);
    return found.first();
}
