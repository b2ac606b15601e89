#pragma once

#include <QDialog>
#include <QVariant>
#include <memory>

namespace Ui {
class FirmwareUpdate;
}

/// The window with which the operator writes an FPGA image into the modules of one kind. It checks the file,
/// hands all commands over at once, and counts the replies. Closing it does not stop what runs.
class FirmwareUpdate : public QDialog
{
    Q_OBJECT

public:
    explicit FirmwareUpdate(QWidget *parent = nullptr);
    ~FirmwareUpdate() override;

    /// Looks at the file again that was chosen last, and sets the button by it. Sends nothing, and leaves an
    /// update that runs alone.
    void beginOperation();

    /// The session with the device was lost, and with it the commands that wait. The progress stands from now
    /// on, unless nothing but the reply to the last command was missing.
    void stopCounting();

public slots:
    /// The action of the button: starts, or asks whether to abort.
    void Slot_UpdateOrAbortFirmw();
    void Slot_SelectFilePath();

    /// Checks the chosen file and, if nothing speaks against it, emits all commands. Returns whether it did;
    /// if not, a box tells why, and nothing was emitted.
    bool ReadFileAndSendCommands();

    /// One more command was answered.
    void Slot_incrementProgress(QVariant data);

    /// The settings name the file that was flashed last.
    void Slot_UpdateFirmwrFilePath(QString path);

signals:
    /// An FPGAfwCommand to be queued.
    void Signal_commandMsg(QVariant command);

    /// The device answered; carries what Slot_incrementProgress() gets.
    void Signal_IncrementCntr(QVariant data);

    /// The file at this path is being flashed.
    void Signal_SaveFile(QString path);

    /// The commands that wait are to be dropped.
    void Signal_AbortFrmwr();

    /// The commands that wait are to be sent.
    void Signal_StartProcedure();

private:
    const std::unique_ptr<Ui::FirmwareUpdate> m_ui;
};
