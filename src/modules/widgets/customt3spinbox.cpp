#include "modules/widgets/customt3spinbox.h"

#include "modules/common/channelstyles.h"
#include "modules/common/widgetstyle.h"
#include "modules/widgets/boundedvalue.h"
#include "modules/widgets/fixedplaces.h"

#include <QDebug>
#include <QLineEdit>
#include <QMouseEvent>

CustomT3SpinBox::CustomT3SpinBox(QWidget *parent)
    : QSpinBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setLayout(new FixedPlaces); // of the line edit
    lineEdit()->setReadOnly(true);
}

CustomT3SpinBox::~CustomT3SpinBox()
{
    forgetStyleOfField(*this);
}

void CustomT3SpinBox::stepBy(int steps)
{
    setStyleIfChanged(*this, channelstyles::sent());
    if (steps != 1 && steps != -1) {
        QSpinBox::stepBy(steps);
        return;
    }
    const qint64 current = value();
    setBoundedValue(*this, steps > 0 ? current * 2 : current / 2);
    emit stepChanged();
}

void CustomT3SpinBox::mousePressEvent(QMouseEvent *event)
{
    // Before the base class takes the step.
    if (event->modifiers() == Qt::ShiftModifier) {
        qDebug() << "Thermo Click + UP/Down";
        m_shiftClicked = true;
    }
    QSpinBox::mousePressEvent(event);
}
