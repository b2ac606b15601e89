#pragma once

#include <QStringList>

/// Collects the lines of the log while it lives, in place of writing them. One at a time.
class MessageCatcher
{
public:
    MessageCatcher();
    ~MessageCatcher();

    MessageCatcher(const MessageCatcher &) = delete;
    MessageCatcher &operator=(const MessageCatcher &) = delete;

    const QStringList &lines() const { return m_lines; }

    /// True if exactly this line was written.
    bool contains(const QString &line) const { return m_lines.contains(line); }

    /// True if a line was written that holds this text.
    bool containsText(const QString &text) const { return !m_lines.filter(text).isEmpty(); }
    void clear() { m_lines.clear(); }

private:
    QStringList m_lines;
    QtMessageHandler m_previous;
};
