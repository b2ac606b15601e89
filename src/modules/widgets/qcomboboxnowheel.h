#pragma once

#include "modules/widgets/wheelwithfocus.h"

#include <QComboBox>

/// A combo box whose wheel acts only with the focus, and whose list knows a pick with the Shift key.
class QComboBoxNoWheel : public WheelWithFocus<QComboBox>
{
    Q_OBJECT

public:
    explicit QComboBoxNoWheel(QWidget *parent = nullptr);

    void showPopup() override;

signals:
    /// Emitted when a mouse button is pressed on the open list with Shift and no other key. The item is
    /// picked by the release that follows, so activated() comes after this signal.
    void Signal_ShiftClick();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
