#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the benchmark, which then counts as failed.
[[noreturn]] inline void giveUp(const char *why)
{
    std::fprintf(stderr, "%s\n", why);
    std::exit(1);
}

/// Ends the benchmark if what it measures was not done: a number that nothing stands behind holds any limit.
inline void require(bool isDone, const char *otherwise)
{
    if (!isDone)
        giveUp(otherwise);
}
