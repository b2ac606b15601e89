#include "modules/widgets/ignorewheel.h"

#include <QEvent>
#include <QWidget>

namespace {

class WheelFilter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel)
            return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }
};

} // namespace

void ignoreWheel(QWidget &widget)
{
    widget.installEventFilter(new WheelFilter(&widget));
}
