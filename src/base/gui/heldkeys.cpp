#include "base/gui/heldkeys.h"

#include "base/gui/buttonkeys.h"

#include <QDialog>

namespace {

class HeldKeyFilter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!isKeyRepeat(*event))
            return QObject::eventFilter(watched, event);
        return isButtonKey(static_cast<const QKeyEvent &>(*event));
    }
};

} // namespace

bool isKeyRepeat(const QEvent &event)
{
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent &>(event).isAutoRepeat();
}

void ignoreHeldKeys(QDialog &dialog)
{
    auto *filter = new HeldKeyFilter(&dialog);
    dialog.installEventFilter(filter);
    const auto parts = dialog.findChildren<QWidget *>();
    for (QWidget *part : parts) // the one with the focus hears of a key first
        part->installEventFilter(filter);
}
