#pragma once

#include <QtTest>
#include <csignal>
#include <sys/resource.h>

/// While it lives no file can grow beyond this size, as on a full disk.
class SizeLimit
{
public:
    explicit SizeLimit(rlim_t bytes)
        : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit small = m_before;
        small.rlim_cur = bytes;
        if (setrlimit(RLIMIT_FSIZE, &small) != 0)
            qFatal("The size of files cannot be limited");
    }

    ~SizeLimit()
    {
        if (setrlimit(RLIMIT_FSIZE, &m_before) != 0)
            qFatal("The size of files stays limited");
        std::signal(SIGXFSZ, m_oldHandler);
    }

    SizeLimit(const SizeLimit &) = delete;
    SizeLimit &operator=(const SizeLimit &) = delete;

private:
    rlimit m_before = {};
    void (*m_oldHandler)(int);
};
