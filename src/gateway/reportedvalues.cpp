#include "gateway/reportedvalues.h"

#include <QComboBox>
#include <QLineEdit>

namespace gateway {

void showText(QLineEdit &field, const QString &text)
{
    if (field.text() == text)
        return;
    field.setText(text);
    field.setCursorPosition(0);
}

void showIndex(QComboBox &box, int index)
{
    const int shown = index >= 0 && index < box.count() ? index : -1;
    if (box.currentIndex() != shown)
        box.setCurrentIndex(shown);
}

void showIndex(QComboBox &box, const std::optional<int> &index)
{
    if (index)
        showIndex(box, *index);
}

} // namespace gateway
