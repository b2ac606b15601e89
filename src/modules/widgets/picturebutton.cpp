#include "modules/widgets/picturebutton.h"

#include <QPainter>

namespace {

constexpr int kFrameWidth = 2; // pixels

} // namespace

PictureButton::PictureButton(QWidget *parent)
    : PlacedButton(parent)
{}

void PictureButton::paintEvent(QPaintEvent *event)
{
    PlacedButton::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    QPen pen(palette().color(QPalette::Highlight), kFrameWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    const int inset = kFrameWidth / 2;
    painter.drawRect(rect().adjusted(inset, inset, -inset, -inset));
}
