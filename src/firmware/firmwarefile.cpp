#include "firmware/firmwarefile.h"

#include "firmware/firmwareimage.h"

#include <QFile>
#include <QFileInfo>

namespace {

bool open(QFile &file)
{
    return QFileInfo(file.fileName()).isFile() && file.open(QIODevice::ReadOnly);
}

} // namespace

bool isFirmwareFileReadable(const QString &path)
{
    QFile file(path);
    return open(file);
}

FirmwareFile readFirmwareFile(const QString &path)
{
    QFile file(path);
    if (!open(file))
        return {};
    const qint64 size = file.size();
    if (size > firmwareimage::kMaximumSize)
        return {FirmwareFile::Result::TooLarge, {}};
    const QByteArray image = file.read(firmwareimage::kMaximumSize + 1);
    if (file.error() != QFileDevice::NoError || image.size() != size)
        return {};
    return {FirmwareFile::Result::Read, image};
}
