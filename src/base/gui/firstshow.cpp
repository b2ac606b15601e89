#include "base/gui/firstshow.h"

#include <QEvent>
#include <QWidget>
#include <utility>

namespace {

/// A child of the widget that watches its window. The first show begins with making a window for the screen;
/// the polish event is no sign of it, since what is hidden gets it as well.
class FirstShowFilter : public QObject
{
public:
    FirstShowFilter(QWidget &widget, std::function<void()> step)
        : QObject(&widget)
        , m_step(std::move(step))
    {
        widget.window()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::WinIdChange) {
            watched->removeEventFilter(this);
            deleteLater();
            m_step();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const std::function<void()> m_step;
};

} // namespace

void beforeFirstShow(QWidget &widget, const std::function<void()> &step)
{
    new FirstShowFilter(widget, step);
}
