#pragma once

#include "modules/common/faketimer.h"
#include "modules/common/pendingparameter.h"

#include <functional>
#include <memory>

/// One parameter of one channel on the screen: joins the rule of PendingParameter to the timer of one
/// second and to those who show the value and fetch the status. The owner keeps the value in its data
/// record and updates that before it reports a status.
class PendingDisplay
{
public:
    using TimeOver = PendingParameter::TimeOver;

    /// What the owner does; called by this object only while it lives.
    struct Callbacks
    {
        std::function<void()> showLatest;    ///< show the value of the data record, confirmed; needed
        std::function<void()> requestStatus; ///< ask for the module's status; needed but with OnlyElapse

        /// Taken in place of timeOver() if set, by an owner with a slot of its own for the end of the time;
        /// that slot calls timeOver().
        std::function<void()> atTimeOver = nullptr;
    };

    /// `time` must outlive the display. Autozero is the one parameter with TimeOver::OnlyElapse.
    PendingDisplay(TimeSource &time, Callbacks callbacks, TimeOver timeOver = TimeOver::ShowLatest);

    /// The user's change was sent and stands on the screen: holds it for a second from now.
    void userChanged();

    /// A status value is in the data record: shows it at once, or keeps it for the end of the second.
    void statusArrived();

    /// The second is over: stops the timer, shows a value that was held back and asks for the status.
    void timeOver();

    /// The value is written to the screen without asking: nothing is pending any more. A timer that runs
    /// keeps running and asks for the status.
    void clear() { m_parameter.clear(); }

    /// Nothing is pending any more, and a timer that runs ends without a word.
    void cancel();

    bool isPending() const { return m_parameter.isPending(); }

private:
    FakeTimer &timer();

    TimeSource &m_time;
    const Callbacks m_callbacks;
    PendingParameter m_parameter;
    std::unique_ptr<FakeTimer> m_timer; ///< made for the first change: most parameters are never changed
};
