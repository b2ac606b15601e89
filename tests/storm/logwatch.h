#pragma once

#include <QAtomicInteger>
#include <QStringList>
#include <QtGlobal>

class QMessageLogContext;

namespace storm {

/// Reads the log while it lives, in place of its writing: counts the lines, and keeps the warnings and errors
/// that nobody means to write. Lines of every thread. One at a time.
class LogWatch
{
public:
    LogWatch();
    ~LogWatch();

    LogWatch(const LogWatch &) = delete;
    LogWatch &operator=(const LogWatch &) = delete;

    /// Whether the program, or what it stands on, means to write this line of a level above "debug".
    static bool isMeant(const QString &line);

    qint64 lineCount() const { return m_lines; }
    /// Lines above "debug" that were meant.
    qint64 meantCount() const { return m_meant; }
    /// The others; the first ones of them.
    QStringList complaints() const;
    qint64 complaintCount() const { return m_complaintCount; }

    /// Writes all lines to the standard error as well.
    void setEcho(bool echo) { m_echo = echo; }

    static constexpr int kKept = 20;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &line);
    void take(QtMsgType type, const QString &line);

    QAtomicInteger<qint64> m_lines = 0;
    QAtomicInteger<qint64> m_meant = 0;
    QAtomicInteger<qint64> m_complaintCount = 0;
    QStringList m_complaints;
    bool m_echo = false;
    QtMessageHandler m_previous;
};

} // namespace storm
