#include "support/appfixture.h"

#include "app/initmodulenotfound_view.h"
#include "link/portdirectory.h"
#include "protocol/records/systemstatus.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

AppFixture::AppFixture()
{
    QDir().mkpath(settingsFolder());
    deployment.host.clear();
}

AppFixture::~AppFixture() = default;

void AppFixture::writeSettings(const QByteArray &text)
{
    QFile file(settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
}

QByteArray AppFixture::readSettings() const
{
    QFile file(settingsFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

AppEnvironment AppFixture::environment()
{
    const PortDirectory ports(settingsFolder());
    const auto createLinks = [this, ports] {
        CommLinks links;
        auto fakeSerial = std::make_unique<FakeSerialComm>(time, ports);
        auto fakeTcp = std::make_unique<FakeTcpSock>(time);
        serial = fakeSerial.get();
        tcp = fakeTcp.get();
        serial->opens = serialOpens;
        tcp->connects = tcpConnects;
        links.serial = std::move(fakeSerial);
        links.tcp = std::move(fakeTcp);
        return links;
    };
    const ConfigPaths paths{settingsFolder(), m_folder.path() + QStringLiteral("/desktop"),
                            QStringLiteral("/opt/vxconfig/vxconfig")};
    return {time, ports, paths, deployment, createLinks, CommPeriods()};
}

void AppFixture::start()
{
    app = std::make_unique<Framework_Ctrllr>(environment());
}

QString AppFixture::statusText() const
{
    return child<QLabel>("statusLabel")->text().trimmed();
}

QColor AppFixture::lamp() const
{
    return child<QLineEdit>("connectionLamp")->palette().color(QPalette::Base);
}

QStringList AppFixture::placeholders() const
{
    QStringList texts;
    const auto views = window()->findChildren<InitModuleNotFound_View *>();
    for (const auto *view : views)
        texts.append(view->findChild<QLabel *>()->text());
    texts.sort();
    return texts;
}

System_Status systemStatus(const std::vector<int> &types, bool withController, bool withPower)
{
    System_Status status;
    status.nModules = static_cast<quint16>(types.size());
    for (std::size_t i = 0; i < types.size() && i < status.analogModuleTypes.size(); ++i)
        status.analogModuleTypes.at(i) = static_cast<quint8>(types.at(i));
    if (withController)
        status.sModules.at(3) = 0x64;
    if (withPower)
        status.sModules.at(7) = 0x78;
    return status;
}
