#include "kernelclocks.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sstream>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace kernelclocks {

namespace {

/// A small file of the kernel, which may be read again and again.
class KernelFile
{
public:
    explicit KernelFile(const std::string &name)
        : m_file(::open(name.c_str(), O_RDONLY | O_CLOEXEC))
    {}
    ~KernelFile()
    {
        if (m_file >= 0)
            ::close(m_file);
    }

    KernelFile(const KernelFile &) = delete;
    KernelFile &operator=(const KernelFile &) = delete;

    /// Empty if there is no such file.
    std::string text() const
    {
        std::array<char, 4096> buffer;
        const ssize_t size = m_file < 0 ? -1 : ::pread(m_file, buffer.data(), buffer.size(), 0);
        return size <= 0 ? std::string() : std::string(buffer.data(), static_cast<size_t>(size));
    }

private:
    const int m_file;
};

struct ThreadTimes
{
    unsigned long long ran = 0;
    unsigned long long waited = 0;
};

ThreadTimes timesOf(const KernelFile &file)
{
    ThreadTimes times;
    if (std::sscanf(file.text().c_str(), "%llu %llu", &times.ran, &times.waited) != 2)
        return {};
    return times;
}

int ownThread()
{
    return static_cast<int>(syscall(SYS_gettid));
}

std::string fileOfThread(int thread, const char *name)
{
    return "/proc/self/task/" + std::to_string(thread) + "/" + name;
}

ThreadTimes ownTimes()
{
    static thread_local const KernelFile file(fileOfThread(ownThread(), "schedstat"));
    return timesOf(file);
}

} // namespace

qint64 nowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

qint64 waitedForProcessorNs()
{
    return static_cast<qint64>(ownTimes().waited);
}

qint64 ranNs()
{
    return static_cast<qint64>(ownTimes().ran);
}

qint64 shortageNs()
{
    static const KernelFile file("/proc/pressure/cpu");
    constexpr qint64 kNsPerUs = 1000;
    const std::string text = file.text();
    const size_t at = text.find("total=");
    return at == std::string::npos ? 0 : std::atoll(text.c_str() + at + 6) * kNsPerUs;
}

namespace {

ThreadWaits::Thread threadOf(int number, const std::string &leftOut, const ThreadWaits::Threads &before)
{
    const auto known = before.find(number);
    // A thread gives itself its name when it first runs.
    const bool isLeftOut = (known != before.end() && known->second.isLeftOut) ||
                           KernelFile(fileOfThread(number, "comm")).text() == leftOut + '\n';
    if (isLeftOut)
        return {true, 0};
    return {false, static_cast<qint64>(timesOf(KernelFile(fileOfThread(number, "schedstat"))).waited)};
}

/// Those of the process, without one.
ThreadWaits::Threads threadsBeside(int own, const std::string &leftOut, const ThreadWaits::Threads &before)
{
    ThreadWaits::Threads threads;
    DIR *const folder = ::opendir("/proc/self/task");
    while (const dirent *entry = folder ? ::readdir(folder) : nullptr) {
        const int number = std::atoi(entry->d_name);
        if (number != 0 && number != own)
            threads.emplace(number, threadOf(number, leftOut, before));
    }
    if (folder)
        ::closedir(folder);
    return threads;
}

} // namespace

ThreadWaits::ThreadWaits(std::string leftOut, std::function<qint64()> shortage)
    : ThreadWaits([own = ownThread(), leftOut = std::move(leftOut)](
                      const Threads &before) { return threadsBeside(own, leftOut, before); },
                  std::move(shortage))
{}

ThreadWaits::ThreadWaits(std::function<Threads(const Threads &)> look, std::function<qint64()> shortage)
    : m_look(std::move(look))
    , m_shortage(std::move(shortage))
{
    (void)total();
    m_total = 0;
}

qint64 ThreadWaits::total()
{
    Threads threads = m_look(m_threads);
    const qint64 shortage = m_shortage();
    qint64 most = 0;
    for (const auto &[number, before] : m_threads) {
        if (!before.isLeftOut && threads.find(number) == threads.end())
            most = shortage - m_shortageThen;
    }
    for (const auto &[number, now] : threads) {
        const auto before = m_threads.find(number);
        most = std::max(most, now.waited - (before != m_threads.end() ? before->second.waited : 0));
    }
    m_total += most;
    m_shortageThen = shortage;
    m_threads = std::move(threads);
    return m_total;
}

namespace {

constexpr qint64 kNsPerSecond = 1000000000;

std::string textOfProcessors()
{
    static const KernelFile file("/proc/stat");
    return file.text();
}

} // namespace

HostTheft::HostTheft(std::function<std::string()> text, long ticksPerSecond)
    : m_text(text ? std::move(text) : textOfProcessors)
    , m_nsPerTick(kNsPerSecond / (ticksPerSecond > 0 ? ticksPerSecond : ::sysconf(_SC_CLK_TCK)))
    , m_ticks(look())
{}

std::vector<qint64> HostTheft::look() const
{
    std::vector<qint64> found;
    std::istringstream lines(m_text());
    for (std::string line; std::getline(lines, line);) {
        long long ticks = 0;
        if (std::sscanf(line.c_str(), "cpu%*d %*s %*s %*s %*s %*s %*s %*s %lld", &ticks) == 1)
            found.push_back(ticks);
    }
    return found;
}

qint64 HostTheft::total()
{
    const std::vector<qint64> ticks = look();
    qint64 most = 0;
    for (size_t i = 0; i < std::min(ticks.size(), m_ticks.size()); ++i)
        most = std::max(most, ticks[i] - m_ticks[i]);
    m_ticks = ticks;
    m_total += most * m_nsPerTick;
    return m_total;
}

qint64 stolenNs()
{
    static HostTheft theft;
    return theft.total();
}

qint64 deniedNs(const std::function<qint64()> &waited, const std::function<qint64()> &stolen)
{
    return waited() + stolen();
}

} // namespace kernelclocks
