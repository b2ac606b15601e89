#pragma once

#include <QSpinBox>

/// The filter of a thermo channel, a power of two that only the arrows change. The wheel does not give the
/// box the focus: another box would lose it, and send.
class CustomT3SpinBox : public QSpinBox
{
    Q_OBJECT

public:
    explicit CustomT3SpinBox(QWidget *parent = nullptr);
    ~CustomT3SpinBox() override;

    /// True once the arrows have been clicked with Shift and no other key; it stays true from then on, on
    /// purpose: each later step is for all thermo modules too.
    bool isShiftClicked() const { return m_shiftClicked; }

public slots:
    /// One step up doubles the value, one step down halves it. Any other count is a step of the spin box,
    /// which is not reported.
    void stepBy(int steps) override;

signals:
    /// Emitted after each single step, also if the range left the value as it was.
    void stepChanged();

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    bool m_shiftClicked = false;
};
