#include "base/gui/lampbase.h"

#include <QLineEdit>

void setLampBase(QLineEdit &lamp, const QColor &colour)
{
    QPalette palette = lamp.palette();
    palette.setColor(QPalette::Base, colour);
    lamp.setPalette(palette);
}
