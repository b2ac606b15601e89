#pragma once

#include "protocol/records/fpgafwcommand.h"

#include <QByteArray>
#include <QString>
#include <QVector>

struct FirmwareName;

/// An FPGA image as bytes: which chip it is for, and the commands that write it.
namespace firmwareimage {

constexpr int kBlockSize = 256;
constexpr int kPageSize = 65536;

/// Blocks are numbered with 16 bits: what is larger could not be written.
constexpr qint64 kMaximumSize = qint64(65536) * kBlockSize;

/// The chip that a file name stands for; fifteen zeros if it names no FPGA. The name of the chip may stand
/// anywhere in it.
QString chipOfName(const QString &fileName);

/// The chip that the image names itself, wherever that stands in it; empty if none. If it names both, the
/// first of our list counts.
QString chipInContents(const QByteArray &image);

/// First bytes of all commands of one image or one service command.
struct Target
{
    quint8 module = 0; ///< 0 controller, 1 analog, 2 gateway
    quint8 fpga = 1;   ///< 1 or 2
};

/// The target of a valid name.
Target targetOf(const FirmwareName &name);

/// A command without numbers and data.
FPGAfwCommand plainCommand(Target target, FpgaCommandCode code);

/// Writes `block`, at most 256 bytes, which are filled up to 256 with 0xFF.
FPGAfwCommand blockCommand(Target target, quint16 number, const QByteArray &block);

/// Number of commands that write an image of so many bytes.
int commandCount(qint64 size);

/// The commands that write an image, in the order in which they are sent: start, erasing of each 64 KiB page,
/// blocks, stop, reset. Each is made when it is asked for.
class Sequence
{
public:
    /// No commands.
    Sequence() = default;

    /// `image`: at most kMaximumSize bytes.
    Sequence(Target target, const QByteArray &image);

    int count() const { return m_count; }
    int imageSize() const { return m_image.size(); }

    /// Index of the first block, or of what follows the pages.
    int blocksBegin() const { return m_blocksBegin; }
    int blocksEnd() const { return m_blocksEnd; }

    /// The command with this index, from 0 to count() - 1.
    FPGAfwCommand at(int index) const;

private:
    Target m_target;
    QByteArray m_image;
    int m_blocksBegin = 0;
    int m_blocksEnd = 0;
    int m_count = 0;
};

/// All commands of the sequence.
QVector<FPGAfwCommand> commands(Target target, const QByteArray &image);

} // namespace firmwareimage
