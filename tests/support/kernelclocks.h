#pragma once

#include <QtGlobal>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// What the kernel tells of the time for which threads had a processor, and for which they had none. Not on
/// Windows.
namespace kernelclocks {

/// Nanoseconds of a clock that never goes back.
qint64 nowNs();
/// Nanoseconds for which the kernel let the calling thread wait for a processor, since its start; 0 where the
/// kernel does not tell. Likewise those for which the thread ran.
qint64 waitedForProcessorNs();
qint64 ranNs();
/// Nanoseconds in which some thread of the machine waited for a processor; 0 where the kernel does not tell.
qint64 shortageNs();

/// How long threads of the process waited for a processor while the thread that made this object did other
/// things. To be used by that thread.
class ThreadWaits
{
public:
    struct Thread
    {
        bool isLeftOut = false; ///< does not count
        qint64 waited = 0;      ///< nanoseconds since its start
    };
    /// The threads by their numbers.
    using Threads = std::map<int, Thread>;

    /// Threads with the name `leftOut` do not count.
    explicit ThreadWaits(std::string leftOut, std::function<qint64()> shortage = shortageNs);
    /// `look` tells of the threads that there are, and is given those of the last time; `shortage`
    /// is in nanoseconds.
    ThreadWaits(std::function<Threads(const Threads &)> look, std::function<qint64()> shortage);

    /// Nanoseconds so far. Of what passed since the last call it counts that of the thread which waited
    /// longest: the others waited meanwhile. What a thread waited that ended since is not known any more; for
    /// it counts the time in which some thread of the machine waited.
    qint64 total();

private:
    const std::function<Threads(const Threads &)> m_look;
    const std::function<qint64()> m_shortage;
    Threads m_threads; ///< at the last call
    qint64 m_shortageThen = 0;
    qint64 m_total = 0;
};

/// Nanoseconds for which the host of a virtual machine let each of its processors wait, since the start of
/// the machine, in steps of the kernel's tick; nothing where the kernel does not tell.
using Stolen = std::vector<qint64>;
Stolen stolenNs();
/// The same from the kernel's text, which has a line for each processor; so many ticks are a second.
Stolen stolenNs(const std::string &text, long ticksPerSecond);
/// Adds what came to it between two readings, each processor by itself.
void addStolen(Stolen &sum, const Stolen &from, const Stolen &to);
/// That of the processor which waited longest.
qint64 longestNs(const Stolen &stolen);

/// For which the calling thread had no processor so far.
struct Denied
{
    qint64 waited = waitedForProcessorNs();
    Stolen stolen = stolenNs();
};

/// Nanoseconds between two readings of one thread for which it had no processor: that for which the kernel
/// let it wait, or that which the host took of one processor, whichever is more. They may have been at the
/// same time.
qint64 deniedNs(const Denied &from, const Denied &to);

} // namespace kernelclocks
