#include "systemfixture.h"

#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"
#include "link/serialcomm.h"
#include "link/tcpsock.h"
#include "modules/moduledevice_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "sim/chainfile.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

const QString kPortName = QStringLiteral("COM40");

CommPeriods shortPeriods()
{
    CommPeriods periods;
    periods.cyclic = std::chrono::milliseconds(20);
    periods.comm = std::chrono::milliseconds(800);
    periods.initSequence = std::chrono::milliseconds(760);
    return periods;
}

} // namespace

SystemFixture::SystemFixture(LinkKind kind)
    : periods(shortPeriods())
    , m_kind(kind)
{
    deployment.host.clear();
}

SystemFixture::~SystemFixture() = default;

void SystemFixture::plug(const QString &chainText)
{
    sim::Chain chain;
    QString error;
    QVERIFY2(sim::parseChain(chainText, &chain, &error), qPrintable(error));
    answer(chain);
}

void SystemFixture::plugFile(const QString &name)
{
    sim::Chain chain;
    QString error;
    QVERIFY2(sim::readChainFile(QStringLiteral(VX_CHAINS "/") + name, &chain, &error), qPrintable(error));
    answer(chain);
}

void SystemFixture::answer(const sim::Chain &chain)
{
    QString error;
    device = std::make_unique<sim::Server>(time, chain);
    if (m_kind == LinkKind::Tcp) {
        QVERIFY2(device->listen(m_port, &error), qPrintable(error));
        m_port = device->tcpPort();
    } else {
        QVERIFY2(device->openTerminal(folder.path() + QStringLiteral("/ports/") + kPortName, &error),
                 qPrintable(error));
    }
}

void SystemFixture::unplug()
{
    device.reset();
}

void SystemFixture::useProductTimeouts()
{
    periods.comm = CommPeriods().comm;
    periods.initSequence = CommPeriods().initSequence;
}

void SystemFixture::usePatientTimeouts()
{
    periods.comm = std::chrono::minutes(1);
    periods.initSequence = std::chrono::minutes(1);
}

void SystemFixture::start()
{
    const QString mode = m_kind == LinkKind::Tcp ? QStringLiteral("TCP") : QStringLiteral("Serial");
    QString text = QStringLiteral("MainServer=127.0.0.1:%1\r\nPORT1=%2:115200,E,8,1\r\nMode=%3\r\n")
                       .arg(m_port)
                       .arg(kPortName, mode);
    if (!gatewayAddress.isEmpty())
        text += QStringLiteral("ZrtGateway=%1\r\n").arg(gatewayAddress);
    QFile file(settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    file.close();
    launch();
}

void SystemFixture::startAgain()
{
    app.reset();
    launch();
}

QString SystemFixture::savedSetting(const QString &key) const
{
    QFile file(settingsFile());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
    const QString start = key + QLatin1Char('=');
    for (const QString &line : lines) {
        if (line.startsWith(start))
            return line.mid(start.size());
    }
    return {};
}

void SystemFixture::launch()
{
    const PortDirectory ports(folder.path());
    const auto createLinks = [this, ports] {
        CommLinks links;
        links.serial = std::make_unique<SerialComm>(time, ports);
        links.tcp = std::make_unique<TcpSock>(time);
        return links;
    };
    const ConfigPaths paths{folder.path(), folder.path() + QStringLiteral("/desktop"), QString()};
    app = std::make_unique<Framework_Ctrllr>(
        AppEnvironment{time, ports, paths, deployment, createLinks, periods, reconnect});
}

model_Namespace::Settings SystemFixture::chosenConnection() const
{
    model_Namespace::Settings settings;
    settings.portName = kPortName;
    model_Namespace::setDefaultSerialParameters(settings);
    settings.ipAddress = QStringLiteral("127.0.0.1");
    settings.tcpPort = QString::number(m_port);
    settings.commType = m_kind == LinkKind::Tcp ? Comm_Type::Ethernet : Comm_Type::Serial;
    return settings;
}

QString SystemFixture::statusBox() const
{
    return window()->findChild<QLineEdit *>(QStringLiteral("statusBox"))->text();
}

QString SystemFixture::statusText() const
{
    return window()->findChild<QLabel *>(QStringLiteral("statusLabel"))->text().trimmed();
}

int SystemFixture::rowCount() const
{
    return window()->findChildren<ModuleDevice_View *>().size();
}

QString SystemFixture::rowText(int index, const char *label) const
{
    const auto &modules = app->analogModules();
    if (index >= static_cast<int>(modules.size()))
        return {};
    return modules.at(static_cast<std::size_t>(index))
        ->GetView()
        ->findChild<QLabel *>(QString::fromLatin1(label))
        ->text();
}

QString SystemFixture::controllerText(const char *label) const
{
    if (!app->controllerModule())
        return {};
    return app->controllerModule()->GetView()->findChild<QLabel *>(QString::fromLatin1(label))->text();
}

void addLinkKinds()
{
    QTest::addColumn<SystemFixture::LinkKind>("kind");
    QTest::newRow("tcp") << SystemFixture::LinkKind::Tcp;
    QTest::newRow("serial") << SystemFixture::LinkKind::Serial;
}
