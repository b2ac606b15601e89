#pragma once

#include <QWheelEvent>

/// A control in a list that scrolls: the wheel changes its value only while it has the focus, which the
/// wheel alone does not give. Without the focus the event is ignored, so that the list scrolls.
template <typename Control>
class WheelWithFocus : public Control
{
public:
    explicit WheelWithFocus(QWidget *parent)
        : Control(parent)
    {
        this->setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override
    {
        if (this->hasFocus())
            Control::wheelEvent(event);
        else
            event->ignore();
    }
};
