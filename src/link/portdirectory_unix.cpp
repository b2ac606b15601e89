#include "link/portdirectory.h"

#include "link/permissionadvice.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <array>

namespace {

constexpr int kNumbersPerKind = 32;

/// The kinds of serial devices in the order of their COM numbers.
constexpr std::array<const char *, 3> kKinds{"ttyS", "ttyUSB", "ttyACM"};

/// The number of a COM name, or 0 if the text is no COM name.
int comNumber(const QString &comName)
{
    static const QRegularExpression pattern(QStringLiteral("\\ACOM([1-9][0-9]{0,8})\\z"));
    return pattern.match(comName).captured(1).toInt();
}

QString comNameOf(int number)
{
    return QStringLiteral("COM%1").arg(number);
}

/// "ttyUSB0" for COM33; empty for a number beyond all kinds.
QString systemName(int number)
{
    const int kind = (number - 1) / kNumbersPerKind;
    if (number < 1 || kind >= int(kKinds.size()))
        return QString();
    return QLatin1String(kKinds[std::size_t(kind)]) + QString::number((number - 1) % kNumbersPerKind);
}

/// False for a device node of the system without hardware behind it. The serial core makes such nodes in
/// advance and calls their type 0; the serial library leaves them out of its list as well.
bool hasHardware(const QString &systemRoot, const QString &name)
{
    QFile type(systemRoot + QStringLiteral("/sys/class/tty/") + name + QStringLiteral("/type"));
    return !type.open(QIODevice::ReadOnly) || type.readAll().trimmed() != "0";
}

} // namespace

PortDirectory::PortDirectory(const QString &settingsFolder, const QString &systemRoot)
    : m_aliasFolder(settingsFolder + QStringLiteral("/ports/"))
    , m_systemRoot(systemRoot)
{}

QString PortDirectory::deviceOf(const QString &comName) const
{
    const int number = comNumber(comName);
    if (number == 0)
        return pathOf(comName);
    const QFileInfo alias(m_aliasFolder + comName);
    if (alias.exists())
        return alias.canonicalFilePath(); // the device's own path, under which programs lock it
    if (alias.isSymLink())
        return alias.filePath();
    const QString name = systemName(number);
    return pathOf(name.isEmpty() ? comName : name);
}

QString PortDirectory::pathOf(const QString &name) const
{
    return QDir::isAbsolutePath(name) ? name : m_systemRoot + QStringLiteral("/dev/") + name;
}

bool PortDirectory::isAvailable(const QString &comName) const
{
    const QFileInfo device(deviceOf(comName));
    return device.exists() && !device.isDir() && hasHardware(m_systemRoot, device.fileName());
}

QStringList PortDirectory::availablePorts() const
{
    QMap<int, QString> ports;
    const auto add = [this, &ports](const QString &comName) {
        if (isAvailable(comName))
            ports.insert(comNumber(comName), comName);
    };
    for (int number = 1; number <= kNumbersPerKind * int(kKinds.size()); ++number)
        add(comNameOf(number));
    const QStringList aliases = QDir(m_aliasFolder).entryList(QDir::Files | QDir::System);
    for (const QString &alias : aliases) {
        if (comNumber(alias) != 0)
            add(alias);
    }
    return ports.values();
}

QString PortDirectory::permissionAdvice(const QString &comName) const
{
    const QFileInfo device(deviceOf(comName));
    if (!device.exists() || (device.isReadable() && device.isWritable()))
        return QString();
    return ::permissionAdvice(comName, device.filePath(), device.group(), device.groupId());
}
