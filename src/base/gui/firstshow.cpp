#include "base/gui/firstshow.h"

#include <QEvent>
#include <QWidget>
#include <utility>

namespace {

/// A child of the widget that waits for the first event of a type at the widget or its window.
class FirstEvent : public QObject
{
public:
    using Step = std::function<void()>;

    FirstEvent(QWidget &widget, QWidget &watched, QEvent::Type type, Step step)
        : QObject(&widget)
        , m_type(type)
        , m_step(std::move(step))
    {
        watched.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == m_type) {
            watched->removeEventFilter(this);
            deleteLater();
            m_step();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const QEvent::Type m_type;
    const Step m_step;
};

} // namespace

void beforeFirstShow(QWidget &widget, const std::function<void()> &step)
{
    // The first show begins with making a window for the screen. Polishing is no sign of it: what is hidden
    // is polished as well.
    new FirstEvent(widget, *widget.window(), QEvent::WinIdChange, step);
}

void afterFirstPaint(QWidget &widget, const std::function<void()> &step)
{
    new FirstEvent(widget, widget, QEvent::Paint,
                   [&widget, step] { QMetaObject::invokeMethod(&widget, step, Qt::QueuedConnection); });
}
