#include "base/gui/firstshow.h"

#include <QEvent>
#include <QWidget>
#include <utility>

namespace {

using Step = std::function<void()>;

/// A child of the widget that waits for the first show. It watches the widget and all that it is part of, as
/// each of them may be put elsewhere before.
class FirstShow : public QObject
{
public:
    FirstShow(QWidget &widget, Step step)
        : QObject(&widget)
        , m_widget(widget)
        , m_step(std::move(step))
    {
        watch();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!m_step)
            return false;
        if (event->type() == QEvent::ParentChange)
            watch();
        else if (isFirstShow(*static_cast<QWidget *>(watched), *event))
            run();
        return false;
    }

private:
    void watch()
    {
        m_widget.installEventFilter(this);
        for (QWidget *part = &m_widget; !part->isWindow() && part->parentWidget();) {
            part = part->parentWidget();
            part->installEventFilter(this);
        }
    }

    /// What the widget was taken from is watched still, but does not count.
    bool isFirstShow(const QWidget &watched, const QEvent &event) const
    {
        const bool isPart = &watched == &m_widget || watched.isAncestorOf(&m_widget);
        if (event.type() == QEvent::Show)
            return isPart;
        // The show of a window begins with making a window for the screen, unless somebody has asked for its
        // number before. Polishing is no sign of a show: what is hidden is polished as well.
        return event.type() == QEvent::WinIdChange && isPart && watched.isWindow() &&
               watched.testAttribute(Qt::WA_WState_ExplicitShowHide);
    }

    void run()
    {
        deleteLater();
        std::exchange(m_step, nullptr)();
    }

    QWidget &m_widget; ///< the parent
    Step m_step;       ///< empty once it ran
};

/// A child of the widget that runs a step soon after the first paint.
class FirstPaint : public QObject
{
public:
    FirstPaint(QWidget &widget, Step step)
        : QObject(&widget)
        , m_step(std::move(step))
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            deleteLater();
            QMetaObject::invokeMethod(watched, m_step, Qt::QueuedConnection);
        }
        return false;
    }

private:
    const Step m_step;
};

} // namespace

void beforeFirstShow(QWidget &widget, const std::function<void()> &step)
{
    new FirstShow(widget, step);
}

void afterFirstPaint(QWidget &widget, const std::function<void()> &step)
{
    new FirstPaint(widget, step);
}
