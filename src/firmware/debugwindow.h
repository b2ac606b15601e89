#pragma once

#include "firmware/firmwareimage.h"

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
    /// Adds a line; the oldest go when there are too many.
    void appendTextToDebugBox(QString text);

    // Each sends one command for the module and the FPGA that are checked.
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
    firmwareimage::Target target() const;
    void send(const FPGAfwCommand &command);

    const std::unique_ptr<Ui::DebugWindow> m_ui;
};
