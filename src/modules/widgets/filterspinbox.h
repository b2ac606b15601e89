#pragma once

#include <QSpinBox>
#include <chrono>

class TimeSource;
class Timer;

/// The filter frequency of a channel, in Hz. The arrows go from one multiple of 100 to the next, and
/// report only when they have come to rest. The wheel does not give the box the focus: another box would
/// lose it, and send.
class FilterSpinBox : public QSpinBox
{
    Q_OBJECT

public:
    /// `time` must outlive the box. `rest` is how long the arrows must be left alone before a step is
    /// reported.
    explicit FilterSpinBox(TimeSource &time, QWidget *parent = nullptr,
                           std::chrono::milliseconds rest = std::chrono::milliseconds(1200));
    ~FilterSpinBox() override;

public slots:
    /// One step up goes to the next multiple of 100, one step down to 100 below the multiple that is not
    /// above the value. Any other count is a step of the spin box, which is not reported.
    void stepBy(int steps) override;

    /// The Return key: nothing stays selected.
    void returnPress();
    void Slot_Timeout();

signals:
    /// Emitted once when the arrows have come to rest after one or more steps.
    void stepChanged();

    /// Emitted when Return or Enter is pressed; not while the key is held and repeats.
    void enterPress();

    /// Emitted each time the operator edits the text; a step or setValue() does not.
    void textAltered(QString text);

    /// Emitted when Return or Enter is pressed with Shift, whatever other keys are held, in place of
    /// enterPress().
    void Signal_ShiftEnter();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::chrono::milliseconds m_rest;
    Timer *m_timer; // child of this box
};
