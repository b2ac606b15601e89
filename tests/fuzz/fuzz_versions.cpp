// The two files of the web server that name the current versions, up to the notices that they lead to.

#include "app/versionnotice.h"
#include "controller/modulecontroller_ctrllr.h"
#include "firmware/versionfiles.h"
#include "fuzztarget.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"
#include "support/virtualtime.h"

#include <QApplication>
#include <QDate>
#include <QTextCodec>
#include <QVector>
#include <memory>

using fuzz::require;

namespace {

const char kInstalled[] = "1.1.62";
const char kControllerFirmware[] = "1.4.2";
constexpr int kLines = 10;

/// Found byte by byte: the first line that names the product, else what no line end closes.
QByteArray configuratorLine(const QByteArray &contents)
{
    int begin = 0;
    for (int at = 0; at < contents.size(); ++at) {
        if (contents.at(at) != '\r' && contents.at(at) != '\n')
            continue;
        const QByteArray line = contents.mid(begin, at + 1 - begin);
        if (line.contains("vxconfig"))
            return line;
        begin = at + 1;
    }
    return contents.mid(begin);
}

/// The groups of digits in a text; those that no 64 bits hold are 0.
QVector<quint64> numbersOf(const QString &text)
{
    QVector<quint64> numbers;
    QString digits;
    const auto finish = [&] {
        if (!digits.isEmpty())
            numbers.append(digits.toULongLong());
        digits.clear();
    };
    for (const QChar character : text) {
        if (character >= QLatin1Char('0') && character <= QLatin1Char('9'))
            digits.append(character);
        else
            finish();
    }
    finish();
    return numbers;
}

bool isNoticeDue(const QString &remote)
{
    const QVector<quint64> ours{1, 1, 62};
    const QVector<quint64> theirs = numbersOf(remote);
    if (theirs.size() != ours.size())
        return true;
    for (int i = 0; i < ours.size(); ++i) {
        if (theirs.at(i) > ours.at(i))
            return true;
    }
    return false;
}

void checkConfiguratorFile(const QByteArray &contents)
{
    const QByteArray bytes = configuratorLine(contents);
    const QString line = QString::fromUtf8(bytes.constData(), bytes.size());
    require(versionfiles::configuratorLine(contents) == line, "the line of the product is found");
    const auto version = versionfiles::configuratorVersion(line);
    const int mark = line.indexOf(QLatin1String("vxconfig v"));
    require(version.has_value() == (mark >= 0), "a line with a version has one");
    if (!version)
        return;
    require(!version->contains(QLatin1Char('\n')), "a version is one line");
    require(line.startsWith(*version), "a version is the beginning of its line");
    require(version->size() + mark == line.size() - line.count(QLatin1Char('\n')) ||
                version->size() + mark == line.size(),
            "it is as long as what stands behind the mark");
    require(isNewVersionNoticeDue(QLatin1String(kInstalled), *version) == isNoticeDue(*version),
            "a greater number, or another count of them, is told");
}

/// The lines as the file has them, the first ones. A character that the end of the file cuts is none.
QStringList firstLines(const QByteArray &contents)
{
    const std::unique_ptr<QTextDecoder> decoder(QTextCodec::codecForName("UTF-8")->makeDecoder());
    QStringList lines = decoder->toUnicode(contents).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    lines = lines.mid(0, kLines);
    for (QString &line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    return lines;
}

/// The row of the controller, whose firmware is compared. It is kept from input to input.
class Row
{
public:
    Row()
        : m_controller(1, 1, true, m_time)
    {
        QObject::connect(&m_controller, &ModuleController_Ctrllr::Signal_FirmwareMismatch, &m_controller,
                         [this](const QString &origin, int flag) {
                             ++m_told;
                             require(origin == QLatin1String("remote"), "the web is told as the origin");
                             m_flag = flag;
                         });
        Module_Status status;
        status.moduleType = wireCode(ModuleType::Controller);
        status.serialNumber = QStringLiteral("CT-1");
        status.firmware1Version = QLatin1String(kControllerFirmware);
        m_controller.Slot_StaticModuleStatus(QVariant::fromValue(status));
    }

    void check(const versionfiles::FirmwareEntry &entry)
    {
        m_told = 0;
        m_controller.Slot_CheckFrmwrVersion(entry.version, entry.flag);
        require(m_told == (isNewer(entry.version) ? 1 : 0), "a greater number is told once");
        require(m_told == 0 || m_flag == entry.flag, "the mark goes along");
    }

private:
    static bool isNewer(const QString &remote)
    {
        const QVector<int> ours{1, 4, 2};
        QStringList theirs = remote.split(QLatin1Char('.'));
        theirs.removeAll(QString());
        for (int i = 0; i < ours.size(); ++i) {
            if (theirs.value(i).toInt() > ours.at(i))
                return true;
        }
        return false;
    }

    VirtualTime m_time;
    ModuleController_Ctrllr m_controller;
    int m_told = 0;
    int m_flag = 0;
};

Row *row = nullptr; // lives until the process ends

void checkFirmwareFile(const QByteArray &contents)
{
    const auto entries = versionfiles::firmwareEntries(contents);
    QStringList expected;
    for (const QString &line : firstLines(contents)) {
        const QStringList parts = line.split(QStringLiteral("  "));
        if (parts.size() > 2 && QDate::fromString(parts.at(0), QStringLiteral("dd.MM.yy")).isValid())
            expected.append(line);
    }
    require(entries.size() == expected.size(), "each line with a date is an entry");
    for (int i = 0; i < entries.size(); ++i) {
        const versionfiles::FirmwareEntry &entry = entries.at(i);
        require(entry.line == expected.at(i), "an entry has its line");
        require(!entry.version.contains(QLatin1String("  ")) && entry.line.contains(entry.version),
                "a version is a part of its line");
        require(entry.flag == 0 || (entry.flag == 1 && entry.line.contains(QLatin1Char('*'))),
                "a mark stands in the line");
        row->check(entry);
    }
}

} // namespace

void fuzz::begin(int &argc, char **argv)
{
    new QApplication(argc, argv);
    row = new Row;
}

void fuzz::tryInput(const QByteArray &contents)
{
    checkConfiguratorFile(contents);
    checkFirmwareFile(contents);
}
