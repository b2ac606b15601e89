#include "support/messagecatcher.h"

#include <QtGlobal>

namespace {

QStringList *collected = nullptr;

void collect(QtMsgType, const QMessageLogContext &, const QString &line)
{
    collected->append(line);
}

} // namespace

MessageCatcher::MessageCatcher()
    : m_previous(qInstallMessageHandler(collect))
{
    Q_ASSERT(!collected);
    collected = &m_lines;
}

MessageCatcher::~MessageCatcher()
{
    qInstallMessageHandler(m_previous);
    collected = nullptr;
}
