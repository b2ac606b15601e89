#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class VoltageSettingsDialog;
}

/// The form for an auxiliary voltage, kept in reserve: nothing in the program shows it.
class VoltageSettingsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit VoltageSettingsDialog(QWidget *parent = nullptr);
    ~VoltageSettingsDialog() override;

private:
    std::unique_ptr<Ui::VoltageSettingsDialog> m_ui;
};
