#include "logwatch.h"

#include <QMutex>
#include <QRegularExpression>
#include <cstdio>

namespace storm {

namespace {

QBasicMutex mutex; ///< guards the watch and what it keeps
LogWatch *watch = nullptr;

/// The lines that are meant, each with its reason.
const QRegularExpression &meantLines()
{
    static const QRegularExpression lines(
        // The link: a frame broke off.
        QStringLiteral("^void Communication_Aux::RcvTimeOver\\(\\) : +Receive Timeout!$"
                       // The session: a damaged frame got through to it.
                       "|^An Invalid DataStream was received over : (ETHERNET|SERIAL) communication\\.$"
                       // The library's page of printer properties asks for a quarter of a font's points,
                       // and the program's fonts are in pixels.
                       "|^QFont::setPointSizeF: Point size <= 0 \\(-0\\.250000\\), must be greater than 0$"
                       // Its print dialog tries the file to print to, also where none was named.
                       "|^QFSFileEngine::open: No file name specified$"
                       // What the platform of the tests cannot do, and says so.
                       "|^This plugin does not support "));
    return lines;
}

} // namespace

LogWatch::LogWatch()
    : m_previous(nullptr)
{
    const QMutexLocker locker(&mutex);
    watch = this;
    m_previous = qInstallMessageHandler(handle);
}

LogWatch::~LogWatch()
{
    const QMutexLocker locker(&mutex);
    qInstallMessageHandler(m_previous);
    watch = nullptr;
}

bool LogWatch::isMeant(const QString &line)
{
    return meantLines().match(line).hasMatch();
}

QStringList LogWatch::complaints() const
{
    const QMutexLocker locker(&mutex);
    return m_complaints;
}

void LogWatch::handle(QtMsgType type, const QMessageLogContext &context, const QString &line)
{
    {
        const QMutexLocker locker(&mutex);
        if (!watch)
            return;
        if (type != QtFatalMsg) {
            watch->take(type, line);
            return;
        }
    }
    if (watch->m_previous)
        watch->m_previous(type, context, line);
    else
        std::fprintf(stderr, "%s\n", qPrintable(line));
}

void LogWatch::take(QtMsgType type, const QString &line)
{
    ++m_lines;
    if (m_echo)
        std::fprintf(stderr, "%s\n", qPrintable(line));
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    if (isMeant(line)) {
        ++m_meant;
        return;
    }
    ++m_complaintCount;
    if (m_complaints.size() < kKept)
        m_complaints.append(line);
}

} // namespace storm
