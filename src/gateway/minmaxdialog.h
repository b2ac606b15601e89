#pragma once

#include <QDialog>
#include <QStringList>
#include <memory>

namespace Ui {
class MinMaxDialog;
}

/// Asks for the smallest or largest number of samples in a block.
class MinMaxDialog : public QDialog
{
    Q_OBJECT

public:
    explicit MinMaxDialog(QWidget *parent = nullptr);
    ~MinMaxDialog() override;

public slots:
    /// Shows the dialog over all windows of the program and returns at once. The list holds label, value and
    /// title; a list with fewer texts does nothing.
    void Slot_Execute(QStringList items);
    void Slot_AcceptValue();

signals:
    /// OK was pressed: the label's text and the value.
    void Signal_setMinMaxValue(QStringList answer);

private:
    std::unique_ptr<Ui::MinMaxDialog> m_ui;
};
