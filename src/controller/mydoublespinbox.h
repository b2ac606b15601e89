#pragma once

#include <QDoubleSpinBox>

/// A spin box that tells a change by the user from one by the program, so that a value which the device
/// reports does not travel back to it as a command.
///
/// On purpose: setting the value that the box already shows changes nothing, so no signal clears the mark of
/// the program's change, and the user's next change counts as the program's.
class MyDoubleSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit MyDoubleSpinBox(QWidget *parent = nullptr);
    ~MyDoubleSpinBox() override;

public slots:
    /// Shows a value that does not come from the user; it is brought into the range of the box.
    void setValueByCode(double value);

signals:
    void valueChangedByUser(double value); ///< after a change by the user: each typed digit, each step
    void valueChangedByCode(double value); ///< after setValueByCode(), if the value is a new one

private slots:
    void onValueChanged(double value);

private:
    bool m_changedByCode = false;
};
