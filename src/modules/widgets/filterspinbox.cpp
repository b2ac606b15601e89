#include "modules/widgets/filterspinbox.h"

#include "base/gui/buttonkeys.h"
#include "base/gui/heldkeys.h"
#include "base/timesource.h"
#include "modules/common/channelstyles.h"
#include "modules/common/widgetstyle.h"
#include "modules/widgets/boundedvalue.h"
#include "modules/widgets/fixedplaces.h"

#include <QLineEdit>

namespace {

constexpr qint64 kStep = 100; // Hz

} // namespace

FilterSpinBox::FilterSpinBox(TimeSource &time, QWidget *parent, std::chrono::milliseconds rest)
    : QSpinBox(parent)
    , m_rest(rest)
    , m_timer(time.createTimer(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setLayout(new FixedPlaces); // of the line edit
    connect(m_timer, &Timer::timeout, this, &FilterSpinBox::Slot_Timeout);
    connect(lineEdit(), &QLineEdit::returnPressed, this, &FilterSpinBox::returnPress);
    connect(lineEdit(), &QLineEdit::textChanged, this, &FilterSpinBox::textAltered);
}

FilterSpinBox::~FilterSpinBox()
{
    forgetStyleOfField(*this);
}

void FilterSpinBox::stepBy(int steps)
{
    setStyleIfChanged(*this, channelstyles::sent());
    if (steps != 1 && steps != -1) {
        QSpinBox::stepBy(steps);
        return;
    }
    const qint64 multiple = value() / kStep * kStep;
    setBoundedValue(*this, multiple + steps * kStep);
    m_timer->start(m_rest);
}

void FilterSpinBox::returnPress()
{
    lineEdit()->deselect();
    emit enterPress();
}

void FilterSpinBox::Slot_Timeout()
{
    m_timer->stop();
    emit stepChanged();
}

void FilterSpinBox::keyPressEvent(QKeyEvent *event)
{
    const bool isRepeat = isReturn(*event) && isKeyRepeat(*event);
    const bool isShiftReturn = isReturn(*event) && event->modifiers().testFlag(Qt::ShiftModifier);
    if (!isRepeat && !isShiftReturn) {
        QSpinBox::keyPressEvent(event);
        return;
    }
    event->accept();
    if (!isRepeat)
        emit Signal_ShiftEnter();
}
