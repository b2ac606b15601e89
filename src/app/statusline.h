#pragma once

#include <QString>
#include <chrono>

class QDateTime;
class QLabel;
class QStatusBar;
class TimeSource;
class Timer;

/// The text at the bottom of the window, which goes after some seconds, and the clock beside it. The labels
/// are children of the status bar, which must outlive this object.
class StatusLine
{
public:
    enum class Colour { Black, Red };

    /// `time` must outlive the bar.
    StatusLine(QStatusBar *bar, TimeSource &time);

    /// Shows the text for `ticks` seconds in the colour that the line has; only the bar becomes black.
    void showPlain(const QString &text, int ticks);

    /// Shows the text for `ticks` seconds; -1 lets it stay.
    void show(const QString &text, int ticks, Colour colour);

    /// Shows a passing message in front of the line. The next one takes its place.
    void showPassing(const QString &text, std::chrono::milliseconds time);

    /// One second is over: takes the text away if its time had run out before, and shows the time of day.
    void tick(const QDateTime &now);

private:
    void setText(const QString &text, int ticks);

    QStatusBar *const m_bar;
    Timer *const m_passingTimer; // child of the bar
    QLabel *const m_statusLabel;
    QLabel *const m_clockLabel;
    int m_statusLineTicks = 0; // seconds left; below 0 the text stays
};
