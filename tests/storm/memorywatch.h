#pragma once

#include <QMap>
#include <QString>
#include <QVector>
#include <QtGlobal>

namespace storm {

/// Bytes that the process has allocated and not freed, by its allocator's own count.
qint64 allocatedBytes();
/// Bytes of the process that are in memory; 0 where the kernel does not tell.
qint64 residentBytes();

/// Counts the objects of the thread that calls start(), from then on.
namespace objectcount {
void start();
/// Those that were made since and are still there.
qint64 now();
/// The same by their classes. To be called in this thread.
QMap<QString, int> byClass();
} // namespace objectcount

/// What the process holds at a moment that can be compared: the chain has been read anew, no dialog is open.
struct MemorySample
{
    double seconds = 0; ///< since the start
    int sessions = 0;   ///< begun since then; each makes all rows anew
    qint64 bytes = 0;
    qint64 resident = 0;
    qint64 objects = 0;
    int widgets = 0;
    int topLevels = 0;
};

/// A straight line through the values of samples over the sessions.
struct Trend
{
    double perSession = 0; ///< slope
    double error = 0;      ///< its standard error
    /// The slope is not above this but in one case of forty.
    double upperEnd() const { return perSession + 2 * error; }
};

/// Least squares; needs three samples, and sessions between them.
Trend trendOf(const QVector<MemorySample> &samples, qint64 MemorySample::*value);

/// What may be, of samples that were taken after the warm-up.
struct MemoryRule
{
    int fewest = 6;    ///< samples
    int sessions = 12; ///< between the first and the last of them
    /// No faster growth with each session; and so much once, spread over all: fonts, what text fields
    /// remember.
    double bytesPerSession = 4 * 1024;
    double bytesOnce = 256 * 1024;
    double objectsPerSession = 0.5;
    double objectsOnce = 40;
};

/// Empty if the memory stayed flat, else why that cannot be said. It must be shown: the upper end of the
/// trend has to be below the limit, so that few samples, or samples that jump about, do not pass. Widgets and
/// windows that are left over show in the number of the last sample alone.
QString complaint(const QVector<MemorySample> &samples, const MemoryRule &rule);

} // namespace storm
