#pragma once

#include <QDateTime>
#include <chrono>

/// Tells a click from a long press by the time for which a button is down. Between the two lies a press
/// that means nothing.
class LongPress
{
public:
    struct Limits
    {
        std::chrono::milliseconds click{1100};     ///< the longest press that is a click
        std::chrono::milliseconds longPress{2000}; ///< the shortest long press
    };

    LongPress() = default;
    explicit LongPress(Limits limits)
        : m_limits(limits)
    {}

    /// The button went down.
    void begin(const QDateTime &now) { m_begin = now; }

    bool isClick(const QDateTime &now) const { return lasted(now) <= m_limits.click; }
    bool isLong(const QDateTime &now) const { return lasted(now) >= m_limits.longPress; }

private:
    std::chrono::milliseconds lasted(const QDateTime &now) const
    {
        return std::chrono::milliseconds(m_begin.msecsTo(now));
    }

    Limits m_limits;
    QDateTime m_begin;
};
