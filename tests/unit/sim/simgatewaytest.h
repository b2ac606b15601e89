#pragma once

#include "fakelink.h"
#include "sim/gatewayserver.h"

#include <QtTest>
#include <memory>

/// The simulated gateway behind a scripted link, on virtual time, with the lines of its log.
class SimGatewayTest : public QObject
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    void load(const char *rules);

    /// A peer whose greeting is over.
    FakeConnection *plugIn();

    QByteArray status() const { return m_server->gateway().statusLine(sim::Milliseconds(0)); }

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<sim::GatewayServer> m_server;
    std::unique_ptr<FakeLink> m_link;
    QStringList m_lines;
};
