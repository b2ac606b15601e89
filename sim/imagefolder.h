#pragma once

#include "sim/fpgaimages.h"

namespace sim {

/// A folder with the FPGA images that were flashed, a file for each target.
class ImageFolder
{
public:
    explicit ImageFolder(const QString &path)
        : m_path(path)
    {}

    /// Makes the folder if it is not there. False with the reason.
    [[nodiscard]] bool create(QString *error) const;
    /// Replaces the target's file. False with the reason; the file then stays as it was.
    [[nodiscard]] bool write(const FpgaTarget &target, const QByteArray &image, QString *error) const;

private:
    const QString m_path;
};

} // namespace sim
