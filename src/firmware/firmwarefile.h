#pragma once

#include <QByteArray>
#include <QString>

/// The file of an FPGA image on the disk. Only regular files are opened: a pipe would block the program.

/// What reading an image gave.
struct FirmwareFile
{
    enum class Result {
        Read,
        NotReadable, ///< not there, no regular file, no permission, or it could not be read whole
        TooLarge     ///< above firmwareimage::kMaximumSize; was not read
    };

    Result result = Result::NotReadable;
    QByteArray image; ///< empty unless the result is Read
};

/// Whether the file can be opened for reading.
bool isFirmwareFileReadable(const QString &path);

FirmwareFile readFirmwareFile(const QString &path);
