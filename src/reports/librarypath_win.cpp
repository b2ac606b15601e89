#include "reports/librarypath.h"

#include <QDir>
#include <QFile>
#include <vector>
#include <windows.h>

QByteArray libraryPath(const QString &path)
{
    // A C library opens files by names of the local code page, which may lack characters of the user's name,
    // and so of the path of all temporary files. The short name has only characters of any code page.
    const QString native = QDir::toNativeSeparators(path);
    const DWORD size = ::GetShortPathNameW(qUtf16Printable(native), nullptr, 0);
    std::vector<WCHAR> name(size + 1);
    const DWORD length = ::GetShortPathNameW(qUtf16Printable(native), name.data(), size);
    const bool isFound = length > 0 && length < size; // else the volume has no short names
    return QFile::encodeName(isFound ? QString::fromWCharArray(name.data(), static_cast<int>(length)) : path);
}
