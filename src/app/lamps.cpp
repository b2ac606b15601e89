#include "app/lamps.h"

#include "base/gui/lampbase.h"

#include <QLineEdit>

namespace {

struct LampEntry
{
    LampColour colour;
    QColor base;
};

const LampEntry *findLamp(int code)
{
    static const LampEntry kLamps[] = {
        {LampColour::PaleGreen, QColor(154, 237, 191)},
        {LampColour::Gray, Qt::gray},
        {LampColour::Yellow, Qt::yellow},
        {LampColour::Dark, QColor(240, 240, 240)},
        {LampColour::Green, Qt::green},
    };
    for (const LampEntry &entry : kLamps) {
        if (static_cast<int>(entry.colour) == code)
            return &entry;
    }
    return nullptr;
}

} // namespace

void setLampColour(QLineEdit *lamp, int code)
{
    const LampEntry *entry = findLamp(code);
    if (!entry)
        return;
    setLampBase(*lamp, entry->base);
}

void setLampColour(QLineEdit *lamp, LampColour colour)
{
    setLampColour(lamp, static_cast<int>(colour));
}
