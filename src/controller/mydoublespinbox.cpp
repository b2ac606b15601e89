#include "controller/mydoublespinbox.h"

#include "modules/common/widgetstyle.h"

MyDoubleSpinBox::MyDoubleSpinBox(QWidget *parent)
    : QDoubleSpinBox(parent)
{
    connect(this, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &MyDoubleSpinBox::onValueChanged);
}

MyDoubleSpinBox::~MyDoubleSpinBox()
{
    forgetStyleOfField(*this);
}

void MyDoubleSpinBox::setValueByCode(double value)
{
    m_changedByCode = true;
    setValue(value);
}

void MyDoubleSpinBox::onValueChanged(double value)
{
    if (m_changedByCode)
        emit valueChangedByCode(value);
    else
        emit valueChangedByUser(value);
    m_changedByCode = false;
}
