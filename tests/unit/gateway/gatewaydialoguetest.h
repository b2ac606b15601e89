#pragma once

#include "gateway/gatewaydialogue.h"
#include "support/virtualtime.h"

#include <QByteArrayList>
#include <QObject>
#include <QStringList>
#include <memory>

/// Base of the tests of the dialogue: each has a new dialogue, in time that stands still, and what came out
/// of it.
class GatewayDialogueTest : public QObject
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    void makeDialogue(std::chrono::milliseconds period = GatewayDialogue::kPollPeriod);

    /// The lines that went out, and forgets them.
    QByteArrayList takeLines();

    /// What was shown, and forgets it.
    QString takeShown();

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<GatewayDialogue> m_dialogue;
    QStringList m_events; ///< what was emitted, in order: "line", "text", "status", "address"
    QByteArrayList m_lines;
    QString m_shown;
    QList<bool> m_follows;
    QList<gateway::Status> m_statuses;
    QStringList m_addresses;
};
