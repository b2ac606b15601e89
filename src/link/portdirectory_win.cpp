#include "link/portdirectory.h"

#include <QSerialPortInfo>
#include <algorithm>
#include <windows.h>

namespace {

int comNumber(const QString &comName)
{
    return comName.mid(QStringLiteral("COM").size()).toInt();
}

} // namespace

PortDirectory::PortDirectory(const QString &settingsFolder, const QString &systemRoot)
    : m_aliasFolder(settingsFolder)
    , m_systemRoot(systemRoot)
{}

QString PortDirectory::deviceOf(const QString &comName) const
{
    return comName;
}

bool PortDirectory::isAvailable(const QString &comName) const
{
    // The system answers for this one name; the serial library would list all ports for it. Without a name
    // the question would be for all of them.
    if (comName.isEmpty())
        return false;
    WCHAR target[MAX_PATH];
    return ::QueryDosDeviceW(qUtf16Printable(comName), target, MAX_PATH) != 0 ||
           ::GetLastError() == ERROR_INSUFFICIENT_BUFFER; // there, with a long target
}

QStringList PortDirectory::availablePorts() const
{
    QStringList ports;
    const auto infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos)
        ports.append(info.portName());
    std::sort(ports.begin(), ports.end(),
              [](const QString &a, const QString &b) { return comNumber(a) < comNumber(b); });
    return ports;
}

QString PortDirectory::permissionAdvice(const QString &comName) const
{
    // Ports have no owner here: one that is refused is in use, and the line of the failed open says so.
    Q_UNUSED(comName)
    return QString();
}
