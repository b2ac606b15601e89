#pragma once

/// The pending display of one parameter of one channel: the screen holds the value that the user gave for
/// at least one second, so that it does not fight with status updates while the command is on its way.
/// This is the rule alone; PendingDisplay joins it to the timer and to those who do what the answers say.
class PendingParameter
{
public:
    /// What the end of the timer does.
    enum class TimeOver {
        ShowLatest, ///< shows a status that was held back, and asks for a new one in any case
        OnlyElapse, ///< neither: a held back status appears with the next one
    };

    /// What is to be done at the end of the timer, in this order.
    struct Outcome
    {
        bool showLatest = false;    ///< show the value of the data record, confirmed
        bool requestStatus = false; ///< ask for the module's status
    };

    explicit PendingParameter(TimeOver timeOver = TimeOver::ShowLatest)
        : m_timeOver(timeOver)
    {}

    /// The user's change was sent. An earlier elapsed time is not forgotten: if no status came since, the
    /// next one is shown at once.
    void userChanged() { m_pending = true; }

    /// A status value arrived and is in the data record. True: show it now, confirmed. False: hold it back.
    [[nodiscard]] bool statusArrived();

    /// The parameter's timer ended and was stopped.
    [[nodiscard]] Outcome timeOver();

    /// The value is written to the screen without asking: nothing is pending any more.
    void clear();

    bool isPending() const { return m_pending; }
    bool hasTimeElapsed() const { return m_timeElapsed; }
    bool hasStatusArrived() const { return m_statusArrived; }

private:
    TimeOver m_timeOver;
    bool m_pending = false;
    bool m_timeElapsed = false;
    bool m_statusArrived = false;
};
