#include "program.h"

#include "gateway/dialogueview.h"
#include "protocol/communication.h"
#include "settings/portlister.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QWindow>

namespace storm {

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

/// An image of this size for the FPGA5.
QByteArray image(int size)
{
    QByteArray bytes(size, '\x5A');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 256);
    const QByteArray chip("iCE40UP5K-SG48");
    return bytes.replace(100, chip.size(), chip);
}

} // namespace

CommPeriods stormPeriods()
{
    CommPeriods periods;
    periods.cyclic = std::chrono::milliseconds(20);
    periods.comm = std::chrono::milliseconds(800);
    periods.initSequence = std::chrono::milliseconds(760);
    return periods;
}

QString folderPattern()
{
    const QString memory = QStringLiteral("/dev/shm");
    const bool isThere = QFileInfo(memory).isWritable();
    return (isThere ? memory : QDir::tempPath()) + QStringLiteral("/storm-XXXXXX");
}

Program::Program(const Addresses &addresses, const CommPeriods &periods)
    : m_addresses(addresses)
    , m_periods(periods)
{
    QDir().mkpath(portFolder());
    writeImages();
    if (!QDir::setCurrent(folder())) // where dialogs for files begin
        qFatal("%s is no folder", qPrintable(folder()));
}

Program::~Program() = default;

void Program::writeImages() const
{
    constexpr int kSmall = 2000;
    constexpr int kLarge = 120000;
    writeFile(m_folder.filePath(smallImage()), image(kSmall));
    writeFile(m_folder.filePath(largeImage()), image(kLarge));
    writeFile(m_folder.filePath(wrongImage()), image(kSmall));
}

void Program::start(quint16 gatewayPort, quint16 webPort)
{
    m_gatewayPort = gatewayPort;
    const QString settings = QStringLiteral("MainServer=%1:%2\r\nPORT1=COM%3:115200,E,8,1\r\nMode=TCP\r\n"
                                            "ZrtGateway=%4:%5\r\n")
                                 .arg(m_addresses.device)
                                 .arg(kDevicePort)
                                 .arg(kLivePort)
                                 .arg(m_addresses.gateway)
                                 .arg(gatewayPort);
    writeFile(folder() + QStringLiteral("/vxconfig.ini"), settings.toUtf8());
    const PortDirectory ports(folder());
    const auto createLinks = [this, ports] {
        CommLinks links;
        links.serial = std::make_unique<SerialComm>(m_time, ports);
        links.tcp = std::make_unique<TcpSock>(m_time, nullptr, kConnect);
        return links;
    };
    const ConfigPaths paths{folder(), folder() + QStringLiteral("/desktop"), QString()};
    QDir().mkpath(paths.desktopFolder);
    Deployment deployment;
    deployment.host = QStringLiteral("127.0.0.1");
    deployment.port = webPort;
    VersionPeriods versions;
    versions.delay = std::chrono::milliseconds(200);
    m_app = std::make_unique<Framework_Ctrllr>(
        AppEnvironment{m_time, ports, paths, deployment, createLinks, m_periods, kReconnect, versions});
    m_link.commType = Comm_Type::Ethernet; // as the settings file has it
    m_link.ipAddress = m_addresses.device;
    const auto *portLister = window()->findChild<PortLister *>();
    const auto keepLink = [this](const model_Namespace::Settings &link) { m_link = link; };
    QObject::connect(portLister, &PortLister::setSerialPortConfig, portLister, keepLink);
    QObject::connect(portLister, &PortLister::setNetworkConfig, portLister, keepLink);
    const Communication *session = m_app->communication();
    QObject::connect(session, &Communication::Signal_SystemStatus, session, [this] {
        ++m_sessionsBegun;
        m_isBegun = true;
        m_walk.start();
    });
    QObject::connect(session, &Communication::stateInitialized, session, [this] {
        ++m_sessionsRead;
        ++m_sessionsByLink[m_link.commType];
        m_walkMs = static_cast<double>(m_walk.nsecsElapsed()) / 1e6;
    });
    QObject::connect(session, &Communication::Signal_CleanSlateProtocol, session, [this] {
        ++m_cleanSlates;
        m_isBegun = false;
    });
    QObject::connect(session, &Communication::Signal_FastModuleStatus, session, [this] { ++m_polls; });
    QObject::connect(session, &Communication::Signal_SamplingNBitRate, session, [this] {
        if (!m_isBegun)
            ++m_lateRefreshes;
    });
}

void Program::fillDialogue() const
{
    auto *view = window()->findChild<DialogueView *>(QStringLiteral("RxBox"));
    const QString line(DialogueView::kCharacters / DialogueView::kLines, QLatin1Char('.'));
    for (int i = 0; i < DialogueView::kLines; ++i)
        view->add(line + QLatin1Char('\n'), true);
}

bool Program::end()
{
    const bool isClosed = window()->windowHandle()->close() && !window()->isVisible();
    m_app.reset();
    return isClosed;
}

QString Program::statusBox() const
{
    return window()->findChild<QLineEdit *>(QStringLiteral("statusBox"))->text();
}

} // namespace storm
