#pragma once

#include <QPointer>
#include <QWidget>

class QButtonGroup;

/// Where the keys of a window go.
namespace gateway {

/// Holds the focus of a window, shown or hidden, while controls of it are disabled. The toolkit would hand
/// it on to whatever comes next, and the space bar would press a button that nobody went to. At the end of
/// its life the control that had the focus has it again, or the refuge if that control is disabled.
class FocusKeeper
{
public:
    /// Both must outlive the object.
    FocusKeeper(const QWidget &window, QWidget &refuge);
    ~FocusKeeper();
    FocusKeeper(const FocusKeeper &) = delete;
    FocusKeeper &operator=(const FocusKeeper &) = delete;

private:
    const QWidget &m_window;
    QWidget &m_refuge;
    QPointer<QWidget> m_focused;
};

/// Lets the Tab key visit the checked button of the group, now and whenever another one is checked. Until
/// one had the focus the toolkit goes to the first. Without a checked button it still does.
void tabToChecked(QButtonGroup &group);

} // namespace gateway
