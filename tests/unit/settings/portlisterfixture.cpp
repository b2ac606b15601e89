#include "portlisterfixture.h"

#include "settings/comconfigbox.h"

#include <QLabel>
#include <QTimer>
#include <QtTest>

void PortListerFixture::init()
{
    m_ports = std::make_unique<PortFolder>();
    m_time = std::make_unique<VirtualTime>();
    m_lister = std::make_unique<PortLister>(*m_time, m_ports->directory());
    resetSignals();
    connect(m_lister.get(), &PortLister::setSerialPortConfig, this,
            [this](const Settings &settings) { m_serial.append(settings); });
    connect(m_lister.get(), &PortLister::setNetworkConfig, this,
            [this](const Settings &settings) { m_network.append(settings); });
    connect(m_lister.get(), &PortLister::Signal_ActivateMode, this,
            [this](const Settings &settings) { m_activated.append(settings); });
}

void PortListerFixture::cleanup()
{
    m_lister.reset();
    m_time.reset();
    m_ports.reset();
}

model_Namespace::Settings PortListerFixture::freshRecord()
{
    Settings settings;
    settings.dataBits = 8;
    settings.parity = 2;
    settings.baudRate = 115200;
    settings.stopBits = 1;
    settings.serialConfig = QStringLiteral("115200,E,8,1");
    return settings;
}

QStringList PortListerFixture::words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char('|'));
}

QString PortListerFixture::number(int n) const
{
    return child<QLabel>(qPrintable(QStringLiteral("portNumber%1").arg(n)))->text();
}

void PortListerFixture::show()
{
    m_lister->show();
    QVERIFY(QTest::qWaitForWindowActive(m_lister.get()));
}

void PortListerFixture::click(const char *name)
{
    QTest::mouseClick(button(name), Qt::LeftButton, {}, QPoint(8, 8));
}

void PortListerFixture::whenBoxRuns(const std::function<void(ComConfigBox &)> &action)
{
    auto *box = child<ComConfigBox>("comConfigBox");
    QTimer::singleShot(0, box, [box, action] { action(*box); });
}

void PortListerFixture::resetSignals()
{
    m_serial.clear();
    m_network.clear();
    m_activated.clear();
}
