#include "base/gui/tabtochecked.h"

#include <QAbstractButton>
#include <QButtonGroup>

namespace {

void letTabVisit(const QButtonGroup &group, const QAbstractButton &checked)
{
    const auto buttons = group.buttons();
    for (QAbstractButton *button : buttons) {
        const int policy = button->focusPolicy();
        const int visited = button == &checked ? policy | Qt::TabFocus : policy & ~Qt::TabFocus;
        button->setFocusPolicy(static_cast<Qt::FocusPolicy>(visited));
    }
}

} // namespace

void tabToChecked(QButtonGroup &group)
{
    QObject::connect(&group, qOverload<QAbstractButton *, bool>(&QButtonGroup::buttonToggled), &group,
                     [&group](const QAbstractButton *button, bool checked) {
                         if (checked)
                             letTabVisit(group, *button);
                     });
    if (const QAbstractButton *checked = group.checkedButton())
        letTabVisit(group, *checked);
}
