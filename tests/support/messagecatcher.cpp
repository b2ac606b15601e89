#include "support/messagecatcher.h"

#include <QMutexLocker>

namespace {

QBasicMutex mutex; ///< guards the catcher and its messages: lines may come from any thread
MessageCatcher *catcher = nullptr;

} // namespace

MessageCatcher::MessageCatcher()
    : m_previous(nullptr)
{
    const QMutexLocker locker(&mutex);
    Q_ASSERT(!catcher);
    catcher = this;
    m_previous = qInstallMessageHandler(handle);
}

MessageCatcher::~MessageCatcher()
{
    const QMutexLocker locker(&mutex);
    qInstallMessageHandler(m_previous);
    catcher = nullptr;
}

void MessageCatcher::handle(QtMsgType type, const QMessageLogContext &context, const QString &line)
{
    QMutexLocker locker(&mutex);
    if (!catcher)
        return;
    const QtMessageHandler previous = catcher->m_previous;
    if (type != QtFatalMsg)
        catcher->m_messages.append({type, line});
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    locker.unlock();
    if (type == QtFatalMsg)
        qInstallMessageHandler(previous);
    previous(type, context, line);
}

QStringList MessageCatcher::lines() const
{
    const QMutexLocker locker(&mutex);
    QStringList lines;
    for (const Message &message : m_messages)
        lines.append(message.line);
    return lines;
}

QStringList MessageCatcher::lines(QtMsgType type) const
{
    const QMutexLocker locker(&mutex);
    QStringList lines;
    for (const Message &message : m_messages) {
        if (message.type == type)
            lines.append(message.line);
    }
    return lines;
}

void MessageCatcher::clear()
{
    const QMutexLocker locker(&mutex);
    m_messages.clear();
}
