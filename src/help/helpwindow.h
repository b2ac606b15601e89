#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class HelpWindow;
}

/// The short help: one fixed text about connecting to a system, and a link to the complete manual.
class HelpWindow : public QDialog
{
    Q_OBJECT

public:
    explicit HelpWindow(QWidget *parent = nullptr);
    ~HelpWindow() override;

signals:
    /// The user followed the link to the complete manual.
    void manualRequested();

private:
    const std::unique_ptr<Ui::HelpWindow> m_ui;
};
