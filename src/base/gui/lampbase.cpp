#include "base/gui/lampbase.h"

#include <QLineEdit>
#include <algorithm>

void setLampBase(QLineEdit &lamp, const QColor &colour)
{
    constexpr QPalette::ColorGroup kGroups[] = {QPalette::Active, QPalette::Inactive, QPalette::Disabled};
    QPalette palette = lamp.palette();
    if (std::all_of(std::begin(kGroups), std::end(kGroups), [&palette, &colour](QPalette::ColorGroup group) {
            return palette.color(group, QPalette::Base) == colour;
        }))
        return; // lamps are set far more often than they change
    palette.setColor(QPalette::Base, colour);
    lamp.setPalette(palette);
}
