#pragma once

#include <QElapsedTimer>
#include <algorithm>
#include <vector>

inline double elapsedMs(const QElapsedTimer &clock)
{
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

/// How long the step takes.
template <typename Step>
double measureMs(Step step)
{
    QElapsedTimer clock;
    clock.start();
    step();
    return elapsedMs(clock);
}

inline double medianMs(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

inline double worstMs(const std::vector<double> &times)
{
    return *std::max_element(times.begin(), times.end());
}
