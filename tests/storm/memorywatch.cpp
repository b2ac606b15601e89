#include "memorywatch.h"

#include "support/sanitizers.h"

#include <QThread>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <malloc.h>
#include <mutex>
#include <unistd.h>
#include <unordered_set>

#ifdef VX_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#endif

// The table in which Qt lets tools be told of objects; the same in all versions of Qt 5.
extern Q_CORE_EXPORT quintptr qtHookData[];

namespace storm {

namespace {

constexpr int kAddQObject = 3;    // place of the function that is told of a new object
constexpr int kRemoveQObject = 4; // and of one that goes

thread_local bool isCounted = false;
std::mutex mutex; ///< guards the objects: one may be destroyed in another thread than it was made in

std::unordered_set<QObject *> &liveObjects()
{
    static std::unordered_set<QObject *> objects;
    return objects;
}

void objectMade(QObject *object)
{
    if (!isCounted)
        return;
    const std::lock_guard<std::mutex> lock(mutex);
    liveObjects().insert(object);
}

void objectGone(QObject *object)
{
    const std::lock_guard<std::mutex> lock(mutex);
    liveObjects().erase(object);
}

template <typename Value>
Value most(const QVector<MemorySample> &samples, Value MemorySample::*value)
{
    Value found = samples.constFirst().*value;
    for (const MemorySample &sample : samples)
        found = std::max(found, sample.*value);
    return found;
}

} // namespace

qint64 allocatedBytes()
{
#ifdef VX_ADDRESS_SANITIZER
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
#endif
}

qint64 residentBytes()
{
    std::FILE *file = std::fopen("/proc/self/statm", "r");
    if (!file)
        return 0;
    long whole = 0;
    long resident = 0;
    const int fields = std::fscanf(file, "%ld %ld", &whole, &resident);
    std::fclose(file);
    return fields == 2 ? qint64(resident) * sysconf(_SC_PAGESIZE) : 0;
}

void objectcount::start()
{
    isCounted = true;
    qtHookData[kAddQObject] = reinterpret_cast<quintptr>(&objectMade);
    qtHookData[kRemoveQObject] = reinterpret_cast<quintptr>(&objectGone);
}

qint64 objectcount::now()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return static_cast<qint64>(liveObjects().size());
}

QMap<QString, int> objectcount::byClass()
{
    const std::lock_guard<std::mutex> lock(mutex);
    QMap<QString, int> counts;
    for (const QObject *object : liveObjects()) {
        if (object->thread() == QThread::currentThread()) // another thread may be destroying it
            ++counts[QString::fromLatin1(object->metaObject()->className())];
    }
    return counts;
}

Trend trendOf(const QVector<MemorySample> &samples, qint64 MemorySample::*value)
{
    const auto count = static_cast<double>(samples.size());
    double meanSession = 0;
    double meanValue = 0;
    for (const MemorySample &sample : samples) {
        meanSession += sample.sessions / count;
        meanValue += static_cast<double>(sample.*value) / count;
    }
    double sessionSquares = 0;
    double products = 0;
    for (const MemorySample &sample : samples) {
        sessionSquares += std::pow(sample.sessions - meanSession, 2);
        products += (sample.sessions - meanSession) * (static_cast<double>(sample.*value) - meanValue);
    }
    const double slope = products / sessionSquares;
    double rest = 0;
    for (const MemorySample &sample : samples) {
        const double onTheLine = meanValue + slope * (sample.sessions - meanSession);
        rest += std::pow(static_cast<double>(sample.*value) - onTheLine, 2);
    }
    return {slope, std::sqrt(rest / (count - 2) / sessionSquares)};
}

QString complaint(const QVector<MemorySample> &samples, const MemoryRule &rule)
{
    if (samples.size() < qMax(3, rule.fewest))
        return QStringLiteral("%1 samples are too few to tell").arg(samples.size());
    const int sessions = samples.constLast().sessions - samples.constFirst().sessions;
    if (sessions < qMax(1, rule.sessions))
        return QStringLiteral("%1 sessions are too few to tell").arg(sessions);
    const auto tooFast = [&](const char *what, qint64 MemorySample::*value, double each, double once) {
        const Trend trend = trendOf(samples, value);
        const double limit = each + once / sessions;
        if (trend.upperEnd() <= limit)
            return QString();
        return QStringLiteral("%1 may grow by %2 with each session (%3 with an error of %4), not %5")
            .arg(QLatin1String(what))
            .arg(trend.upperEnd(), 0, 'f', 1)
            .arg(trend.perSession, 0, 'f', 1)
            .arg(trend.error, 0, 'f', 1)
            .arg(limit, 0, 'f', 1);
    };
    const QString bytes = tooFast("bytes", &MemorySample::bytes, rule.bytesPerSession, rule.bytesOnce);
    if (!bytes.isEmpty())
        return bytes;
    const QString objects =
        tooFast("objects", &MemorySample::objects, rule.objectsPerSession, rule.objectsOnce);
    if (!objects.isEmpty())
        return objects;
    const auto before = samples.mid(0, samples.size() - 1);
    const MemorySample &last = samples.constLast();
    if (last.widgets > most(before, &MemorySample::widgets))
        return QStringLiteral("%1 widgets at the end, never more than %2 before")
            .arg(last.widgets)
            .arg(most(before, &MemorySample::widgets));
    if (last.topLevels > most(before, &MemorySample::topLevels))
        return QStringLiteral("%1 windows at the end, never more than %2 before")
            .arg(last.topLevels)
            .arg(most(before, &MemorySample::topLevels));
    return {};
}

} // namespace storm
