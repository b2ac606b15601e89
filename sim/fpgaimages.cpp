#include "sim/fpgaimages.h"

#include "sim/bytes.h"
#include "sim/payloadlayout.h"

namespace sim {

namespace {

enum FpgaCommand { Stop = 0, Start = 1, ErasePage = 0xE0, ProgramBlock = 0xE1 };

constexpr int kModuleAt = 1;
constexpr int kFpgaAt = 2;
constexpr int kThirdAt = 3;
constexpr int kThird = 1;
constexpr int kBlocksPerPage = FpgaImages::kPageSize / FpgaImages::kBlockSize;
constexpr char kErased = '\xFF';

QStringList moduleNames()
{
    return {QStringLiteral("controller"), QStringLiteral("analog"), QStringLiteral("gateway")};
}

} // namespace

bool FpgaTarget::isKnown() const
{
    return module < moduleNames().size() && (fpga == 1 || fpga == 2);
}

QString FpgaTarget::name() const
{
    return QStringLiteral("%1-fpga%2").arg(moduleNames().value(module, QString::number(module))).arg(fpga);
}

QString FpgaImages::take(const QByteArray &payload)
{
    m_told.clear();
    const Command command{{u8At(payload, kModuleAt), u8At(payload, kFpgaAt)},
                          u16At(payload, kFpgaFirstNumberAt),
                          u16At(payload, kFpgaSecondNumberAt),
                          payload.mid(kFpgaDataAt)};
    const int third = u8At(payload, kThirdAt);
    const int code = u8At(payload, kArgumentAt);
    if (third != kThird)
        breach(command.target, QStringLiteral("third byte %1 in place of %2").arg(third).arg(kThird));
    if (!command.target.isKnown()) {
        breach(command.target, QStringLiteral("no such target"));
        return m_told.join(QStringLiteral("; "));
    }
    switch (code) {
    case Start:
        start(command);
        break;
    case ErasePage:
        erase(command);
        break;
    case ProgramBlock:
        program(command);
        break;
    case Stop:
        stop(command);
        break;
    default:
        breach(command.target, QStringLiteral("no such command: %1").arg(hexCode(code)));
    }
    return m_told.join(QStringLiteral("; "));
}

void FpgaImages::endRuns()
{
    for (Flash &flash : m_flashes)
        flash.isRunning = false;
}

QByteArray FpgaImages::image(const FpgaTarget &target) const
{
    const Flash flash = m_flashes.value(key(target));
    const int size = flash.writtenBlocks * kBlockSize;
    QByteArray image;
    image.reserve(size);
    for (int page = 0; image.size() < size; ++page) {
        const QByteArray contents = flash.pages.value(page, QByteArray(kPageSize, '\0'));
        image += contents.left(size - image.size());
    }
    return image;
}

void FpgaImages::start(const Command &command)
{
    checkPlain(command, QStringLiteral("start"));
    Flash &flash = m_flashes[key(command.target)];
    // No breach: a program that has lost its link can do nothing else.
    if (flash.isRunning)
        tell(command.target, QStringLiteral("a new start ends the run before"));
    flash.isRunning = true;
    flash.nextPage = 0;
    flash.nextBlock = 0;
    flash.writtenBlocks = 0;
    tell(command.target, QStringLiteral("flashing started"));
}

void FpgaImages::erase(const Command &command)
{
    const int page = command.first;
    const QString what = QStringLiteral("erasing page %1").arg(page);
    checkRunning(command, what);
    if (command.second != 0)
        breach(command.target, QStringLiteral("%1 with the number %2").arg(what).arg(command.second));
    if (!command.data.isEmpty())
        breach(command.target, QStringLiteral("%1 with %2 bytes of data").arg(what).arg(command.data.size()));
    Flash &flash = m_flashes[key(command.target)];
    if (flash.nextBlock > 0)
        breach(command.target, QStringLiteral("%1 behind a block").arg(what));
    if (page != flash.nextPage)
        breach(command.target, QStringLiteral("%1, expected %2").arg(what).arg(flash.nextPage));
    flash.nextPage = page + 1;
    if (page >= kPages) {
        breach(command.target, QStringLiteral("there is no page %1").arg(page));
        return;
    }
    flash.pages[page] = QByteArray(kPageSize, kErased);
    flash.blank[page] = QByteArray(kBlocksPerPage, '\1');
}

void FpgaImages::program(const Command &command)
{
    const int block = command.first;
    const QString what = QStringLiteral("block %1").arg(block);
    checkRunning(command, what);
    Flash &flash = m_flashes[key(command.target)];
    if (block != flash.nextBlock)
        breach(command.target, QStringLiteral("%1, expected %2").arg(what).arg(flash.nextBlock));
    flash.nextBlock = block + 1;
    if (command.second != kBlockSize)
        breach(command.target, QStringLiteral("%1 with the length %2").arg(what).arg(command.second));
    if (command.data.size() != kBlockSize) {
        breach(command.target, QStringLiteral("%1 with %2 bytes of data").arg(what).arg(command.data.size()));
        return;
    }
    const int page = block / kBlocksPerPage;
    const int inPage = block % kBlocksPerPage;
    QByteArray &blank = flash.blank[page];
    if (blank.isEmpty())
        blank.fill('\0', kBlocksPerPage);
    if (!blank.at(inPage))
        breach(command.target, QStringLiteral("%1 is not erased").arg(what));
    blank[inPage] = '\0';
    QByteArray &contents = flash.pages[page];
    if (contents.isEmpty())
        contents.fill('\0', kPageSize);
    for (int i = 0; i < kBlockSize; ++i) {
        const int at = inPage * kBlockSize + i;
        putU8(contents, at, u8At(contents, at) & u8At(command.data, i));
    }
    flash.writtenBlocks = qMax(flash.writtenBlocks, block + 1);
}

void FpgaImages::stop(const Command &command)
{
    checkPlain(command, QStringLiteral("stop"));
    checkRunning(command, QStringLiteral("stop"));
    Flash &flash = m_flashes[key(command.target)];
    if (!flash.isRunning)
        return;
    flash.isRunning = false;
    ++flash.finishedRuns;
    tell(command.target, QStringLiteral("flashing stopped, %1 blocks").arg(flash.writtenBlocks));
    if (m_sink)
        m_sink(command.target, image(command.target));
}

void FpgaImages::checkPlain(const Command &command, const QString &what)
{
    if (command.first != 0 || command.second != 0)
        breach(
            command.target,
            QStringLiteral("%1 with the numbers %2 and %3").arg(what).arg(command.first).arg(command.second));
    if (!command.data.isEmpty())
        breach(command.target, QStringLiteral("%1 with %2 bytes of data").arg(what).arg(command.data.size()));
}

void FpgaImages::checkRunning(const Command &command, const QString &what)
{
    if (!isRunning(command.target))
        breach(command.target, QStringLiteral("%1 without a start").arg(what));
}

void FpgaImages::breach(const FpgaTarget &target, const QString &text)
{
    tell(target, QStringLiteral("breach: ") + text);
    m_breaches.append(QStringLiteral("%1: %2").arg(target.name(), text));
    ++m_breachCount;
    if (m_breaches.size() > kRememberedBreaches)
        m_breaches.removeFirst();
}

void FpgaImages::tell(const FpgaTarget &target, const QString &text)
{
    m_told.append(QStringLiteral("%1: %2").arg(target.name(), text));
}

} // namespace sim
