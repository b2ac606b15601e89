#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class PowerSettingsDialog;
}

/// Lets the user choose how the power module protects itself when it gets too hot.
class PowerSettingsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit PowerSettingsDialog(QWidget *parent = nullptr);
    ~PowerSettingsDialog() override;

    /// The chosen mode: "standard", "derating" or "mission critical".
    QString selectedText() const;

private:
    void fillProtections();

    std::unique_ptr<Ui::PowerSettingsDialog> m_ui;
};
