#include "simgatewaytest.h"

void SimGatewayTest::init()
{
    m_time = std::make_unique<VirtualTime>();
    m_server = std::make_unique<sim::GatewayServer>(*m_time);
    m_link = std::make_unique<FakeLink>(*m_time);
    m_server->addLink(m_link.get());
    m_lines.clear();
    m_server->log().setSink([this](const QString &line) { m_lines.append(line); });
}

void SimGatewayTest::cleanup()
{
    m_link.reset();
    m_server.reset();
    m_time.reset();
}

void SimGatewayTest::load(const char *rules)
{
    QString error;
    QVERIFY2(m_server->faults().parse(QString::fromLatin1(rules), &error), qPrintable(error));
}

FakeConnection *SimGatewayTest::plugIn()
{
    FakeConnection *peer = m_link->plugIn();
    m_time->advance(0);
    peer->pieces.clear();
    return peer;
}
