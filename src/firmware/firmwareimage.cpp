#include "firmware/firmwareimage.h"

#include "firmware/firmwarename.h"

#include <array>

namespace firmwareimage {

namespace {

constexpr quint8 kThirdByte = 1;
constexpr char kFiller = '\xFF';  ///< what erased memory holds
constexpr int kFixedCommands = 3; ///< start, stop, reset

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

QVector<FPGAfwCommand> commands(Target target, const QByteArray &image)
{
    QVector<FPGAfwCommand> commands;
    commands.reserve(commandCount(image.size()));
    commands.append(plainCommand(target, FpgaCommandCode::Start));
    for (int page = 0; page < pageCount(image.size()); ++page) {
        FPGAfwCommand erase = plainCommand(target, FpgaCommandCode::ErasePage);
        erase.w1 = quint16(page);
        commands.append(erase);
    }
    for (int block = 0; block < blockCount(image.size()); ++block)
        commands.append(blockCommand(target, quint16(block), image.mid(block * kBlockSize, kBlockSize)));
    commands.append(plainCommand(target, FpgaCommandCode::Stop));
    commands.append(plainCommand(target, FpgaCommandCode::Reset));
    return commands;
}

} // namespace firmwareimage
