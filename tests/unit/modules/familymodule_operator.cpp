#include "familymodule.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QStyleOptionSpinBox>

void clickArrow(QSpinBox *box, bool up, Qt::KeyboardModifiers keys)
{
    QStyleOptionSpinBox option;
    option.initFrom(box);
    option.subControls = QStyle::SC_All;
    option.frame = box->hasFrame();
    const auto arrow = up ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown;
    const QRect place = box->style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, box);
    QTest::mouseClick(box, Qt::LeftButton, keys, place.center());
}

void clickRadio(const QDialog *dialog, const char *name)
{
    // Only the circle and the text beside it take a click, not the whole width.
    auto *button = childByName<QRadioButton>(dialog, name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void FamilyModule::change(ChannelParameter parameter, Channel channel, int value, Qt::KeyboardModifiers keys)
{
    switch (parameter) {
    case ChannelParameter::TypeIndex:
    case ChannelParameter::RangeIndex:
        pick(box(parameter, channel), value, keys);
        if (isThermo() && parameter == ChannelParameter::RangeIndex && value != 0)
            continueInWarning();
        return;
    case ChannelParameter::Filter:
        changeFilter(channel, value, keys);
        return;
    case ChannelParameter::ManualOffset:
        changeOffset(channel, offsetText(value));
        return;
    case ChannelParameter::Autozero:
        pressAutozero(channel, value == 2, keys);
        return;
    case ChannelParameter::ReversePolarity:
        if (polarityButton(channel)->isChecked() == (value != 0))
            qFatal("The polarity has this value already");
        QTest::mouseClick(polarityButton(channel), Qt::LeftButton, keys);
        return;
    case ChannelParameter::Shunt:
        QTest::mouseClick(button(channel, "checkBox_Shunt_Pos"), Qt::LeftButton, keys);
        return;
    }
}

void FamilyModule::pick(QComboBox *box, int index, Qt::KeyboardModifiers keys)
{
    box->showPopup();
    const QModelIndex item = box->model()->index(index, box->modelColumn());
    QWidget *list = box->view()->viewport();
    // An item may be wider than what can be seen of it.
    const QPoint place = (box->view()->visualRect(item) & list->rect()).center();
    QMouseEvent move(QEvent::MouseMove, place, list->mapToGlobal(place), Qt::NoButton, Qt::NoButton, keys);
    QCoreApplication::sendEvent(list, &move);
    QTest::mouseClick(list, Qt::LeftButton, keys, place);
}

void FamilyModule::changeOffset(Channel channel, const QString &text)
{
    QTest::mouseClick(button(channel, "pushButton_ManualOffset"), Qt::LeftButton);
    const auto open = openDialogs();
    if (open.isEmpty())
        return;
    QDialog *dialog = open.first();
    if (text == QLatin1String("Auto")) {
        clickRadio(dialog, "radioButton_OptionAuto");
    } else {
        clickRadio(dialog, "radioButton_OptionManual");
        auto *edit = dialog->findChild<QLineEdit *>();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    auto *buttons = childByName<QDialogButtonBox>(dialog, "buttonBox");
    QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    time.turn();
}

void FamilyModule::typeFilter(Channel channel, const QString &text)
{
    filterBox(channel)->setFocus();
    filterBox(channel)->selectAll();
    QTest::keyClicks(filterBox(channel), text);
}

void FamilyModule::changeFilter(Channel channel, int value, Qt::KeyboardModifiers keys)
{
    if (!isThermo()) {
        typeFilter(channel, filterText(value));
        QTest::keyClick(filterBox(channel), Qt::Key_Return, keys);
        return;
    }
    clickArrow(filterBox(channel), filterText(value).toInt() > filterBox(channel)->value(), keys);
}

void FamilyModule::pressAutozero(Channel channel, bool isLong, Qt::KeyboardModifiers keys)
{
    QTest::mousePress(autozeroButton(channel), Qt::LeftButton, keys);
    if (isLong)
        time.advance(2000);
    QTest::mouseRelease(autozeroButton(channel), Qt::LeftButton, keys);
}

void FamilyModule::continueInWarning()
{
    for (QDialog *dialog : openDialogs()) {
        if (auto *box = qobject_cast<QMessageBox *>(dialog))
            QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    }
    time.turn();
}
