#pragma once

#include <QList>
#include <QStringList>
#include <QtGlobal>

/// Collects the lines of the log while it lives, in place of writing them; lines of every thread. A fatal
/// line is written all the same, before it ends the program, and so are warnings and critical lines, which
/// fail the test unless that announced them by QTest::ignoreMessage(). One catcher at a time.
class MessageCatcher
{
public:
    MessageCatcher();
    ~MessageCatcher();

    MessageCatcher(const MessageCatcher &) = delete;
    MessageCatcher &operator=(const MessageCatcher &) = delete;

    QStringList lines() const;

    /// Those of one level.
    QStringList lines(QtMsgType type) const;

    /// True if exactly this line was written.
    bool contains(const QString &line) const { return lines().contains(line); }
    bool contains(QtMsgType type, const QString &line) const { return lines(type).contains(line); }

    /// True if a line was written that holds this text.
    bool containsText(const QString &text) const { return !lines().filter(text).isEmpty(); }
    void clear();

private:
    struct Message
    {
        QtMsgType type;
        QString line;
    };

    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &line);

    QList<Message> m_messages;
    QtMessageHandler m_previous;
};
