#include "gateway/focuskeeper.h"

namespace gateway {

FocusKeeper::FocusKeeper(const QWidget &window, QWidget &refuge)
    : m_window(window)
    , m_refuge(refuge)
    , m_focused(window.focusWidget())
{}

FocusKeeper::~FocusKeeper()
{
    if (!m_focused || m_window.focusWidget() == m_focused)
        return;
    QWidget &heir = m_focused->isEnabled() ? *m_focused : m_refuge;
    heir.setFocus();
}

} // namespace gateway
