#include "gatewaydialoguetest.h"

#include <utility>

void GatewayDialogueTest::init()
{
    m_time = std::make_unique<VirtualTime>();
    makeDialogue();
}

void GatewayDialogueTest::cleanup()
{
    m_dialogue.reset();
    m_time.reset();
}

void GatewayDialogueTest::makeDialogue(std::chrono::milliseconds period)
{
    m_dialogue = std::make_unique<GatewayDialogue>(*m_time, nullptr, period);
    m_events.clear();
    m_lines.clear();
    m_shown.clear();
    m_follows.clear();
    m_statuses.clear();
    m_addresses.clear();
    GatewayDialogue *dialogue = m_dialogue.get();
    connect(dialogue, &GatewayDialogue::lineReady, this, [this](const QByteArray &line) {
        m_events << QStringLiteral("line");
        m_lines << line;
    });
    connect(dialogue, &GatewayDialogue::textToShow, this, [this](const QString &text, bool follow) {
        m_events << QStringLiteral("text");
        m_shown += text;
        m_follows << follow;
    });
    connect(dialogue, &GatewayDialogue::statusRead, this, [this](const gateway::Status &status) {
        m_events << QStringLiteral("status");
        m_statuses << status;
    });
    connect(dialogue, &GatewayDialogue::addressChanged, this, [this](const QString &address) {
        m_events << QStringLiteral("address");
        m_addresses << address;
    });
}

QByteArrayList GatewayDialogueTest::takeLines()
{
    return std::exchange(m_lines, QByteArrayList());
}

QString GatewayDialogueTest::takeShown()
{
    return std::exchange(m_shown, QString());
}
