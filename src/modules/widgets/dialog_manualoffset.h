#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class Dialog_ManualOffset;
}

/// Asks whether the offset of a channel is found by the module or is a value that the operator enters. Show
/// it with showModalOnce().
class Dialog_ManualOffset : public QDialog
{
    Q_OBJECT

public:
    /// `value` is the present offset, "Auto" if the module finds it. The range does not limit what can be
    /// entered: the module judges the text.
    Dialog_ManualOffset(const QString &value, double minimum, double maximum, double step,
                        QWidget *parent = nullptr);
    ~Dialog_ManualOffset() override;

    /// The offset as chosen so far: "Auto" or the text as it was entered.
    QString value() const { return m_value; }

public slots:
    void on_radioButton_OptionManual_clicked();
    void on_radioButton_OptionAuto_clicked();

    /// The text of the line edit changed: from now on it is the value.
    void manualValue(const QString &text);
    void on_buttonBox_accepted();
    void on_buttonBox_rejected();

private:
    std::unique_ptr<Ui::Dialog_ManualOffset> m_ui;
    QString m_value;
};
