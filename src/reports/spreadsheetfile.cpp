#include "reports/spreadsheetfile.h"

#include "reports/librarypath.h"

#include <QXmlStreamReader>
#include <memory>
#include <minizip/unzip.h>
#include <optional>

namespace {

constexpr int kBlockSize = 64 * 1024; ///< bytes
constexpr int kLongestName = 256;     ///< of a part, bytes

struct ArchiveCloser
{
    void operator()(void *archive) const { unzClose(archive); }
};

/// The contents of the archive's current part; none if it cannot be read or its checksum is wrong.
std::optional<QByteArray> currentPart(unzFile archive)
{
    if (unzOpenCurrentFile(archive) != UNZ_OK)
        return std::nullopt;
    QByteArray contents;
    QByteArray block(kBlockSize, Qt::Uninitialized);
    int count = 0;
    while ((count = unzReadCurrentFile(archive, block.data(), kBlockSize)) > 0)
        contents.append(block.constData(), count);
    const bool isSound = unzCloseCurrentFile(archive) == UNZ_OK && count == 0;
    return isSound ? std::make_optional(contents) : std::nullopt;
}

QString currentPartName(unzFile archive)
{
    char name[kLongestName] = {};
    unzGetCurrentFileInfo64(archive, nullptr, name, sizeof name - 1, nullptr, 0, nullptr, 0);
    return QString::fromUtf8(name);
}

QString xmlFault(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    return reader.errorString();
}

QString currentPartFault(unzFile archive)
{
    const std::optional<QByteArray> part = currentPart(archive);
    const QString fault = part ? xmlFault(*part) : QStringLiteral("it cannot be read");
    return fault.isEmpty() ? QString() : currentPartName(archive) + QStringLiteral(": ") + fault;
}

} // namespace

QString spreadsheetFault(const QString &path)
{
    const std::unique_ptr<void, ArchiveCloser> archive(unzOpen64(libraryPath(path).constData()));
    int position = archive ? unzGoToFirstFile(archive.get()) : UNZ_BADZIPFILE;
    if (position != UNZ_OK)
        return QStringLiteral("no readable archive");
    for (; position == UNZ_OK; position = unzGoToNextFile(archive.get())) {
        const QString fault = currentPartFault(archive.get());
        if (!fault.isEmpty())
            return fault;
    }
    return position == UNZ_END_OF_LIST_OF_FILE ? QString() : QStringLiteral("the list of parts is damaged");
}
