#include "firmware/firmwareimage.h"

#include "firmware/firmwarename.h"

#include <array>

namespace firmwareimage {

namespace {

constexpr quint8 kThirdByte = 1;
constexpr char kFiller = '\xFF';  ///< what erased memory holds
constexpr int kFixedCommands = 3; ///< start, stop, reset
constexpr int kPagesBegin = 1;    ///< behind the start command

struct Chip
{
    const char *word; ///< in the names of files
    const char *name; ///< as the image names it
};
constexpr std::array<Chip, 2> kChips{{{"FPGA4", "iCE5LP4K-SG48"}, {"FPGA5", "iCE40UP5K-SG48"}}};

/// A size of whole pages has one page more than it needs; that is on purpose.
int pageCount(qint64 size)
{
    return int(size / kPageSize) + 1;
}

int blockCount(qint64 size)
{
    return int((size + kBlockSize - 1) / kBlockSize);
}

} // namespace

QString chipOfName(const QString &fileName)
{
    for (const Chip &chip : kChips) {
        if (fileName.contains(QLatin1String(chip.word)))
            return QLatin1String(chip.name);
    }
    return QString(15, QLatin1Char('0'));
}

QString chipInContents(const QByteArray &image)
{
    for (const Chip &chip : kChips) {
        if (image.contains(chip.name))
            return QLatin1String(chip.name);
    }
    return QString();
}

Target targetOf(const FirmwareName &name)
{
    Target target;
    if (name.moduleWord == QLatin1String("ANA"))
        target.module = 1;
    else if (name.moduleWord == QLatin1String("GTW"))
        target.module = 2;
    target.fpga = name.fpgaWord == QLatin1String("FPGA5") ? 2 : 1;
    return target;
}

FPGAfwCommand plainCommand(Target target, FpgaCommandCode code)
{
    FPGAfwCommand command;
    command.b0 = target.module;
    command.b1 = target.fpga;
    command.b2 = kThirdByte;
    command.b3 = quint8(code);
    return command;
}

FPGAfwCommand blockCommand(Target target, quint16 number, const QByteArray &block)
{
    FPGAfwCommand command = plainCommand(target, FpgaCommandCode::ProgramBlock);
    command.w1 = number;
    command.w2 = kBlockSize;
    command.data = block.leftJustified(kBlockSize, kFiller);
    return command;
}

int commandCount(qint64 size)
{
    return kFixedCommands + pageCount(size) + blockCount(size);
}

Sequence::Sequence(Target target, const QByteArray &image)
    : m_target(target)
    , m_image(image)
    , m_blocksBegin(kPagesBegin + pageCount(image.size()))
    , m_blocksEnd(m_blocksBegin + blockCount(image.size()))
    , m_count(commandCount(image.size()))
{}

FPGAfwCommand Sequence::at(int index) const
{
    if (index < kPagesBegin)
        return plainCommand(m_target, FpgaCommandCode::Start);
    if (index < m_blocksBegin) {
        FPGAfwCommand erase = plainCommand(m_target, FpgaCommandCode::ErasePage);
        erase.w1 = quint16(index - kPagesBegin);
        return erase;
    }
    if (index < m_blocksEnd) {
        const int block = index - m_blocksBegin;
        return blockCommand(m_target, quint16(block), m_image.mid(block * kBlockSize, kBlockSize));
    }
    return plainCommand(m_target, index == m_blocksEnd ? FpgaCommandCode::Stop : FpgaCommandCode::Reset);
}

QVector<FPGAfwCommand> commands(Target target, const QByteArray &image)
{
    const Sequence sequence(target, image);
    QVector<FPGAfwCommand> commands;
    commands.reserve(sequence.count());
    for (int index = 0; index < sequence.count(); ++index)
        commands.append(sequence.at(index));
    return commands;
}

} // namespace firmwareimage
