#pragma once

#include "modules/common/pendingdisplay.h"

#include <functional>

/// A rate of the panel, which only the device reports: its text goes to the screen at once unless a change
/// by the user is pending. The table of rates announces no change, it waits for the report, so nothing is
/// pending in this program. The owner keeps the text and updates it before it reports.
class ReportedText
{
public:
    /// `show` puts the owner's text on the screen; called by this object only while it lives. `time` must
    /// outlive the object.
    ReportedText(TimeSource &time, std::function<void()> show);

    /// The user's change was sent and stands on the screen. For a second from now a report is held back;
    /// the first one after that is shown.
    void userChanged();

    /// The device's text is in the owner's record: shows it, or holds it back.
    void reported();

private:
    void showReport();

    const std::function<void()> m_show;
    PendingDisplay m_display;
    bool m_isLate = false; ///< the report at hand ends a change by the user
};
