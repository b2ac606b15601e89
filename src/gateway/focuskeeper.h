#pragma once

#include <QPointer>
#include <QWidget>

namespace gateway {

/// Holds the focus of a window, shown or hidden, while controls of it are disabled. The toolkit would hand
/// it on to whatever comes next, and the space bar would press a button that nobody went to. At the end of
/// its life the control that had the focus has it again, or, if that control is disabled, the refuge: a
/// control whose key does no harm by then.
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

} // namespace gateway
