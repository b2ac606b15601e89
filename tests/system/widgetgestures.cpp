#include "widgetgestures.h"

#include "waiting.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QStyleOptionSpinBox>

namespace gestures {

void check(QAbstractButton *radioButton)
{
    constexpr int kInTheMark = 8;
    QTest::mouseClick(radioButton, Qt::LeftButton, Qt::NoModifier,
                      QPoint(kInTheMark, radioButton->height() / 2));
}

void openList(QComboBox *box)
{
    constexpr int kLeftOfTheArrow = 4;
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(kLeftOfTheArrow, box->height() / 2));
    WAIT_VERIFY(box->view()->isVisible());
}

void pick(QComboBox *box, int index, Qt::KeyboardModifiers keys)
{
    openList(box);
    QWidget *list = box->view()->viewport();
    const QRect row = box->view()->visualRect(box->model()->index(index, box->modelColumn()));
    const QPoint item = row.intersected(list->rect()).center();
    QMouseEvent move(QEvent::MouseMove, item, list->mapToGlobal(item), Qt::NoButton, Qt::NoButton, keys);
    QCoreApplication::sendEvent(list, &move);
    QTest::mouseClick(list, Qt::LeftButton, keys, item);
    WAIT_VERIFY(!box->view()->isVisible());
}

void clickArrow(QAbstractSpinBox *box, Arrow arrow, Qt::KeyboardModifiers keys)
{
    QStyleOptionSpinBox option;
    option.initFrom(box);
    option.subControls = QStyle::SC_All;
    option.frame = box->hasFrame();
    const QStyle::SubControl part = arrow == Arrow::Up ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown;
    const QRect place = box->style()->subControlRect(QStyle::CC_SpinBox, &option, part, box);
    QTest::mouseClick(box, Qt::LeftButton, keys, place.center());
}

void type(QAbstractSpinBox *box, const QString &text)
{
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, text);
}

} // namespace gestures
