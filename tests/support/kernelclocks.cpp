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

Stolen stolenNs(const std::string &text, long ticksPerSecond)
{
    constexpr qint64 kNsPerSecond = 1000000000;
    Stolen stolen;
    std::istringstream lines(text.substr(0, text.rfind('\n') + 1)); // the last may be cut
    for (std::string line; std::getline(lines, line);) {
        long long ticks = 0;
        // Digits: the first line, of all processors, has a blank there.
        if (std::sscanf(line.c_str(), "cpu%*[0-9] %*s %*s %*s %*s %*s %*s %*s %lld", &ticks) == 1)
            stolen.push_back(ticks * (kNsPerSecond / ticksPerSecond));
    }
    return stolen;
}

Stolen stolenNs()
{
    static const KernelFile file("/proc/stat");
    static const long ticksPerSecond = ::sysconf(_SC_CLK_TCK);
    return stolenNs(file.text(), ticksPerSecond);
}

void addStolen(Stolen &sum, const Stolen &from, const Stolen &to)
{
    const size_t processors = std::min(from.size(), to.size());
    sum.resize(std::max(sum.size(), processors));
    for (size_t i = 0; i < processors; ++i)
        sum[i] += to[i] - from[i];
}

qint64 longestNs(const Stolen &stolen)
{
    return stolen.empty() ? 0 : *std::max_element(stolen.cbegin(), stolen.cend());
}

qint64 deniedNs(const Denied &from, const Denied &to)
{
    Stolen stolen;
    addStolen(stolen, from.stolen, to.stolen);
    return std::max(to.waited - from.waited, longestNs(stolen));
}

} // namespace kernelclocks
