#include "sim/imagefolder.h"

#include <QDir>
#include <QSaveFile>

namespace sim {

bool ImageFolder::create(QString *error) const
{
    if (QDir().mkpath(m_path))
        return true;
    *error = QStringLiteral("%1: the folder cannot be made").arg(m_path);
    return false;
}

bool ImageFolder::write(const FpgaTarget &target, const QByteArray &image, QString *error) const
{
    QSaveFile file(QDir(m_path).filePath(target.name() + QStringLiteral(".bin")));
    if (file.open(QIODevice::WriteOnly) && file.write(image) == image.size() && file.commit())
        return true;
    *error = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
    return false;
}

} // namespace sim
