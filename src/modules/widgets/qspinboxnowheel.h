#pragma once

#include "modules/widgets/wheelwithfocus.h"

#include <QSpinBox>

/// A spin box whose wheel acts only with the focus.
class QSpinBoxNoWheel : public WheelWithFocus<QSpinBox>
{
    Q_OBJECT

public:
    explicit QSpinBoxNoWheel(QWidget *parent = nullptr);
};
