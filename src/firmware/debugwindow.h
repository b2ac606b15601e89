#pragma once

#include <QVariant>
#include <QWidget>
#include <memory>

namespace Ui {
class DebugWindow;
}

/// The service panel with which a developer sends single FPGA commands and reads the debug texts. Nothing in
/// the program creates it.
class DebugWindow : public QWidget
{
    Q_OBJECT

public:
    explicit DebugWindow(QWidget *parent = nullptr);
    ~DebugWindow() override;

public slots:
    void appendTextToDebugBox(QString text);
    void Slot_FPGAStart();
    void Slot_FPGAStop();

    /// Erases page 0.
    void Slot_FPGAerasePage();

    /// Writes an empty block 0.
    void Slot_ProgramBlock();

signals:
    /// An FPGAfwCommand to be queued; sent only while the queue of these commands is being worked off.
    void Signal_FpgaCmd(QVariant command);

private:
    const std::unique_ptr<Ui::DebugWindow> m_ui;
};
