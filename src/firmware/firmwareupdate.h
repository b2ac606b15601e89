#pragma once

#include "firmware/firmwareimage.h"

#include <QDialog>
#include <QPointer>
#include <QVariant>
#include <functional>
#include <memory>
#include <optional>

class QFileDialog;
class TimeSource;
class Timer;

namespace Ui {
class FirmwareUpdate;
}

/// The window with which the operator writes an FPGA image into the modules of one kind. It checks the file,
/// hands all commands over before the first is sent, and counts the replies. Closing it does not stop what
/// runs. It does not stay on top: it would hide boxes of the program that must be answered before it can be
/// used again.
class FirmwareUpdate : public QDialog
{
    Q_OBJECT

public:
    /// Where the update stands.
    enum class State {
        Idle,
        Running, ///< each reply counts
        Stalled  ///< commands were dropped: replies do not count any more, only the abort ends this
    };
    Q_ENUM(State)

    /// `time` must outlive the window.
    explicit FirmwareUpdate(TimeSource &time, QWidget *parent = nullptr);
    ~FirmwareUpdate() override;

    /// Looks at the file again that was chosen last, and sets the button by it. Sends nothing, and leaves an
    /// update that runs alone.
    void beginOperation();

    /// How the window asks whether commands still wait to be sent; without it none wait. It is asked at each
    /// reply.
    void setCommandsWaiting(std::function<bool()> commandsWait);

    /// The commands that waited were dropped: the progress of an update that runs stands from now on.
    void stopCounting();

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    /// The action of the button: starts, or asks whether to abort. The button itself starts nothing shortly
    /// after an update was complete, and with a press that was begun when it meant something else: that one
    /// was to abort.
    void Slot_UpdateOrAbortFirmw();
    void Slot_SelectFilePath();

    /// Checks the chosen file and, if nothing speaks against it, emits all commands and then
    /// Signal_SaveFile(). If there are more than 1280, which is above 325632 bytes, only so many; the rest
    /// follows in the next turns of the event loop. Returns whether it did; if not, a box tells why, and
    /// nothing was emitted. Does nothing while an update runs.
    bool ReadFileAndSendCommands();

    /// The device answered once more. Does nothing unless an update runs. Replies to other requests may be
    /// among them, so the progress stands one below its end as long as commands wait.
    void Slot_incrementProgress(QVariant data);

    /// The settings name the file that was flashed last. While an update runs it is kept for afterwards.
    void Slot_UpdateFirmwrFilePath(QString path);

signals:
    /// An FPGAfwCommand to be queued.
    void Signal_commandMsg(QVariant command);

    /// The device answered; carries what Slot_incrementProgress() gets.
    void Signal_IncrementCntr(QVariant data);

    /// The file at this path is being flashed.
    void Signal_SaveFile(QString path);

    /// The commands that wait are to be dropped. A stop and a reset command follow.
    void Signal_AbortFrmwr();

    /// The commands that wait are to be sent. Emitted at each press of "Read and Flash File", when the last
    /// command was emitted, and also if the file was refused. But not if it was refused while commands of an
    /// abort wait: then nothing is sent.
    void Signal_StartProcedure();

private:
    /// What a press of the button means.
    enum class Press { Nothing, Start, Abort };

    Press pressNow() const;
    void notePress(const QEvent &event);
    void endPress();
    bool commandsWait() const;
    void setState(State state);
    void setButtonText(const QString &text);
    void setWidths();
    void keepLastMessageInView();
    QString path() const;
    void takePath(const QString &path);
    void takeNextPath();
    void checkFile();
    void refuse(const QString &reason);
    void append(const QStringList &texts);
    void showStatus(const QString &text);
    void startProgress(int commandCount);
    void sendImage(const QByteArray &image);
    bool isQueueing() const;
    void queuePortion();
    void queueCommand(int index);
    void endQueueing();
    void complete();
    void askToAbort();
    void dismissQuestion();
    void abort();

    const std::unique_ptr<Ui::FirmwareUpdate> m_ui;
    Timer *const m_restTimer;    ///< runs after an update was complete
    Timer *const m_portionTimer; ///< runs while commands are still to be queued
    std::function<bool()> m_commandsWait;
    State m_state = State::Idle;
    std::optional<Press> m_press;       ///< as it was begun by mouse or key, until it ends
    firmwareimage::Target m_target;     ///< of the image that was sent last
    firmwareimage::Sequence m_sequence; ///< the commands that are being queued; empty when all are
    int m_queued = 0;                   ///< how many of them are queued
    bool m_startWhenQueued = false;     ///< they are to be sent then
    std::optional<QString> m_nextPath;  ///< came while an update was running, to be taken afterwards
    QPointer<QFileDialog> m_fileDialog; ///< child of this window
};
