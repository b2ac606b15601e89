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
    /// `look` tells of the threads that there are, and is given those of the last time.
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

/// How long the host of a virtual machine let a processor of it wait.
class HostTheft
{
public:
    /// `text` gives what the kernel tells of its processors, in lines; by default from now on.
    explicit HostTheft(std::function<std::string()> text = {}, long ticksPerSecond = 0);

    /// Nanoseconds so far, in steps of the kernel's tick. Of what passed since the last call it counts that
    /// of the processor which waited longest.
    qint64 total();

private:
    std::vector<qint64> look() const;

    const std::function<std::string()> m_text;
    const qint64 m_nsPerTick;
    std::vector<qint64> m_ticks; ///< of each processor at the last call
    qint64 m_total = 0;
};

/// What the host took since the first call; 0 where the kernel does not tell. For one thread alone.
qint64 stolenNs();
/// For how long that thread had no processor so far, by the kernel or the host.
qint64 deniedNs(const std::function<qint64()> &waited = waitedForProcessorNs,
                const std::function<qint64()> &stolen = stolenNs);

} // namespace kernelclocks
