// The check of a firmware file, by its name and its contents, and what is sent of it: the simulated modules
// must hold the image afterwards, byte for byte.

#include "firmware/firmwareimage.h"
#include "firmware/firmwarename.h"
#include "firmware/firmwareupdate.h"
#include "fuzzinput.h"
#include "fuzztarget.h"
#include "protocol/commandpacking.h"
#include "protocol/records/fpgafwcommand.h"
#include "sim/fpgaimages.h"
#include "support/virtualtime.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <algorithm>
#include <iterator>

using fuzz::require;

namespace {

// An input is u8 repetitions, a short block with the name, and the contents, which are repeated from this
// number on, so that some inputs reach the second page of the memory.
constexpr int kFirstRepetition = 240;
constexpr int kMostBytes = 70000;

struct Chip
{
    const char *word;
    const char *name;
};
constexpr Chip kChips[] = {{"FPGA4", "iCE5LP4K-SG48"}, {"FPGA5", "iCE40UP5K-SG48"}};

/// What stands behind the last folder.
QString fileOf(const QString &path)
{
    QString file;
    for (const QChar character : path) {
        file.append(character);
        if (QStringLiteral("\\/|'").contains(character))
            file.clear();
    }
    return file;
}

/// Whether the file may be flashed: one chip, in the words of the name and in the contents; a known module.
bool isAcceptable(const QString &file, const QByteArray &contents)
{
    const QStringList words = file.split(QLatin1Char('_'));
    const bool knowsModule = QStringList{"CON", "ANA", "GTW"}.contains(words.value(1));
    for (const Chip &chip : kChips) {
        if (words.value(2) != QLatin1String(chip.word))
            continue;
        const Chip &first = file.contains(QLatin1String(kChips[0].word)) ? kChips[0] : kChips[1];
        const bool hasFirst = contents.contains(kChips[0].name);
        const Chip &inside = hasFirst ? kChips[0] : kChips[1];
        return knowsModule && first.word == chip.word && inside.name == chip.name &&
               contents.contains(chip.name);
    }
    return false;
}

void checkName(const QString &path)
{
    const FirmwareName name = firmwareName(path);
    const QStringList words = name.file.split(QLatin1Char('_'));
    require(name.file == fileOf(path), "the name of a file has no folders");
    require(name.pieces == words.size(), "the pieces of a name are counted");
    require(name.moduleWord == words.value(1) && name.fpgaWord == words.value(2), "its words are found");
    require(name.moduleText().isEmpty() != name.hasKnownModule(), "a known module has a text");
    const bool isKnown = name.hasKnownModule() && name.hasKnownFpga();
    require((name.verdict() == FirmwareName::Verdict::Invalid) != isKnown, "only known words are valid");
}

/// The same by the parts of the program's own decision.
void checkDecision(const QString &path, const QByteArray &contents)
{
    const FirmwareName name = firmwareName(path);
    const QString ofName = firmwareimage::chipOfName(name.file);
    const QString inContents = firmwareimage::chipInContents(contents);
    const auto named = std::find_if(std::begin(kChips), std::end(kChips), [&name](const Chip &chip) {
        return name.file.contains(QLatin1String(chip.word));
    });
    const auto inside = std::find_if(std::begin(kChips), std::end(kChips),
                                     [&contents](const Chip &chip) { return contents.contains(chip.name); });
    require(ofName == QLatin1String(named == std::end(kChips) ? "000000000000000" : named->name),
            "the first chip in the name counts");
    require(inContents == QLatin1String(inside == std::end(kChips) ? "" : inside->name),
            "the first chip in the contents counts");
    const bool isAccepted = ofName == inContents && name.verdict() != FirmwareName::Verdict::Invalid &&
                            firmwareimage::chipOfName(name.fpgaWord) == ofName;
    require(isAccepted == isAcceptable(name.file, contents), "a file is accepted if all names fit");
}

/// What the commands leave in the modules is the image.
void checkCommands(const QVector<FPGAfwCommand> &commands, const QByteArray &image)
{
    require(commands.size() == firmwareimage::commandCount(image.size()), "the commands are counted");
    sim::FpgaImages memory;
    sim::FpgaTarget target;
    for (const FPGAfwCommand &command : commands) {
        if (command.b3 == quint8(FpgaCommandCode::Reset))
            continue; // another request on the wire
        target = {command.b0, command.b1};
        memory.take(command::packFpgaCommand(command));
    }
    require(memory.breachCount() == 0, "the commands come in the order of a flash");
    require(memory.finishedRuns(target) == 1, "they end the run");
    const QByteArray written = memory.image(target);
    require(written.startsWith(image), "the image is written");
    require(written.size() - image.size() < firmwareimage::kBlockSize, "and no more than its last block");
    require(written.count('\xFF') - image.count('\xFF') == written.size() - image.size(),
            "which is filled up");
}

/// The window, which is kept from input to input.
class Window
{
public:
    Window()
        : m_window(m_time)
        , m_folder(QDir::homePath() + QStringLiteral("/images"))
    {
        require(QDir().mkpath(m_folder), "the disk works");
        QObject::connect(
            &m_window, &FirmwareUpdate::Signal_commandMsg, &m_window,
            [this](const QVariant &command) { m_commands.append(command.value<FPGAfwCommand>()); });
    }

    /// As the settings file may name it.
    void showPath(const QString &path) { m_window.Slot_UpdateFirmwrFilePath(path); }

    void flash(const QString &fileName, const QByteArray &contents)
    {
        const QString path = m_folder + QLatin1Char('/') + fileName;
        QFile file(path);
        require(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size(), "the disk works");
        file.close();
        m_window.Slot_UpdateFirmwrFilePath(path);
        const bool isAccepted = m_window.ReadFileAndSendCommands();
        require(isAccepted == isAcceptable(fileOf(fileName), contents), "a file is flashed if all names fit");
        if (isAccepted)
            checkCommands(m_commands, contents);
        require(isAccepted || m_commands.isEmpty(), "of a file that is refused nothing is sent");
        for (int reply = m_commands.size(); reply > 0; --reply)
            emit m_window.Signal_IncrementCntr(QVariant());
        m_commands.clear();
        file.remove();
        m_time.advance(1000);
        clean();
    }

private:
    /// Leaves the boxes that tell of a refusal.
    void clean()
    {
        const auto boxes = m_window.findChildren<QMessageBox *>();
        for (QMessageBox *box : boxes)
            box->reject();
        m_time.turn();
        require(m_window.findChildren<QMessageBox *>().isEmpty(), "a box is gone once it was left");
    }

    VirtualTime m_time;
    FirmwareUpdate m_window;
    const QString m_folder;
    QVector<FPGAfwCommand> m_commands;
};

Window *window = nullptr; // lives until the process ends

bool isNameOfAFile(const QByteArray &name)
{
    constexpr int kLongest = 200; // bytes
    return !name.isEmpty() && name.size() <= kLongest && !name.contains('/') && !name.contains('\0') &&
           name != "." && name != "..";
}

} // namespace

void fuzz::begin(int &argc, char **argv)
{
    new QApplication(argc, argv);
    window = new Window;
}

void fuzz::tryInput(const QByteArray &bytes)
{
    Input input(bytes);
    const int number = input.u8();
    const QByteArray nameBytes = input.shortBlock();
    const QByteArray part = input.rest();
    const QByteArray contents = part.repeated(number < kFirstRepetition ? 1 : number).left(kMostBytes);
    const QString name = QString::fromUtf8(nameBytes.constData(), nameBytes.size());

    checkName(name);
    checkDecision(name, contents);
    if (!nameBytes.contains('\0')) // the settings name no such path
        window->showPath(name);
    checkCommands(firmwareimage::commands(firmwareimage::targetOf(firmwareName(name)), contents), contents);
    // A refusal opens a box, which takes its time: not for each input.
    constexpr int kOneOf = 8;
    const bool isTried = isAcceptable(fileOf(name), contents) || number % kOneOf == 0;
    if (isTried && isNameOfAFile(nameBytes) && name.toUtf8() == nameBytes)
        window->flash(name, contents);
}
