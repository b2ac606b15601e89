#include "modules/widgets/qspinboxnowheel.h"

QSpinBoxNoWheel::QSpinBoxNoWheel(QWidget *parent)
    : WheelWithFocus(parent)
{}
