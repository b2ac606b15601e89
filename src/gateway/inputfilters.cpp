#include "gateway/inputfilters.h"

#include "base/gui/heldkeys.h"
#include "modules/common/gestures.h"

#include <QDialog>

namespace gateway {

namespace {

class HeldKeyFilter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!isKeyRepeat(*event))
            return QObject::eventFilter(watched, event);
        const auto &key = static_cast<const QKeyEvent &>(*event);
        return isReturn(key) || key.key() == Qt::Key_Space;
    }
};

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

void ignoreHeldKeys(QDialog &dialog)
{
    auto *filter = new HeldKeyFilter(&dialog);
    dialog.installEventFilter(filter);
    const auto parts = dialog.findChildren<QWidget *>();
    for (QWidget *part : parts) // the one with the focus hears of a key first
        part->installEventFilter(filter);
}

void ignoreWheel(QWidget &widget)
{
    widget.installEventFilter(new WheelFilter(&widget));
}

} // namespace gateway
