#pragma once

#include "base/variantcast.h"
#include "firmware/firmwareupdate.h"
#include "support/childbyname.h"
#include "support/droppedprivileges.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QtTest>

/// The firmware window on the screen, a folder with images, and an operator's hands. Writes down what the
/// window says to others.
struct FirmwareWindow
{
    explicit FirmwareWindow(QWidget *parent = nullptr)
        : window(*new FirmwareUpdate(time, parent))
    {
        if (!folder.isValid() || !QFile::setPermissions(folder.path(), DroppedPrivileges::kOpenFolder))
            qFatal("no folder for the images");
        QObject::connect(&window, &FirmwareUpdate::Signal_commandMsg, [this](const QVariant &command) {
            commands.append(recordFromVariant<FPGAfwCommand>(command));
            events.append(text(commands.last()));
        });
        const auto note = [this](const QString &event) { events.append(event); };
        QObject::connect(&window, &FirmwareUpdate::Signal_SaveFile,
                         [note](const QString &path) { note("save " + path); });
        QObject::connect(&window, &FirmwareUpdate::Signal_AbortFrmwr, [note] { note("abort"); });
        QObject::connect(&window, &FirmwareUpdate::Signal_StartProcedure, [note] { note("start"); });
        show();
    }

    ~FirmwareWindow() { delete m_window; }

    FirmwareWindow(const FirmwareWindow &) = delete;
    FirmwareWindow &operator=(const FirmwareWindow &) = delete;

    MessageCatcher log;
    VirtualTime time;
    QTemporaryDir folder;
    FirmwareUpdate &window;
    QStringList events;
    QVector<FPGAfwCommand> commands;

    /// The four bytes and the two numbers.
    static QString text(const FPGAfwCommand &command)
    {
        return QStringLiteral("%1 %2 %3 %4 | %5 %6")
            .arg(command.b0)
            .arg(command.b1)
            .arg(command.b2)
            .arg(command.b3)
            .arg(command.w1)
            .arg(command.w2);
    }

    /// An image of so many bytes, which names the chip in its middle, behind zero bytes.
    static QByteArray image(int size, const QByteArray &chip = "iCE40UP5K-SG48")
    {
        QByteArray bytes;
        for (int i = 0; i < size; ++i)
            bytes.append(char(i % 251));
        return bytes.replace(size / 2, chip.size(), chip);
    }

    QString file(const QString &name, const QByteArray &contents) const
    {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            qFatal("no file for the image");
        return file.fileName();
    }

    void show()
    {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("the window does not become active");
    }

    QPushButton *button(const char *name) const { return childByName<QPushButton>(&window, name); }
    QPushButton *flashButton() const { return button("flashButton"); }
    QLineEdit *pathEdit() const { return childByName<QLineEdit>(&window, "filePathEdit"); }
    QProgressBar *bar() const { return childByName<QProgressBar>(&window, "progressBar"); }
    QLabel *status() const { return childByName<QLabel>(&window, "flashStatusLabel"); }
    QPlainTextEdit *messageBox() const { return childByName<QPlainTextEdit>(&window, "messageBox"); }
    QString messages() const { return messageBox()->toPlainText(); }

    void click(QAbstractButton *clicked) const { QTest::mouseClick(clicked, Qt::LeftButton); }
    void clickFlash() const { click(flashButton()); }

    /// The time for which the button starts nothing after an update was complete.
    static constexpr std::chrono::milliseconds kRest{500};

    /// Chooses a file as the settings do, and presses the button when it can start.
    void flash(const QString &path)
    {
        time.advance(kRest);
        window.Slot_UpdateFirmwrFilePath(path);
        clickFlash();
    }

    /// Flashes an image for the second FPGA of the analog modules.
    void flashImage(int size)
    {
        flash(file(QStringLiteral("x_ANA_FPGA5_v2.bin"), image(size)));
        if (!isRunning())
            qFatal("the update does not run");
    }

    /// Lets all commands be queued; those of the largest image take 52 turns of the event loop.
    void letQueue()
    {
        constexpr int kTurns = 60;
        for (int turn = 0; turn < kTurns; ++turn)
            time.turn();
    }

    /// Nothing runs, and the file can be flashed.
    bool isIdle() const
    {
        return flashButton()->text() == QStringLiteral("Read and Flash File") &&
               flashButton()->accessibleName() == flashButton()->text() && flashButton()->isEnabled() &&
               button("selectFileButton")->isEnabled() && !bar()->isVisible();
    }

    bool isRunning() const
    {
        return flashButton()->text() == QStringLiteral("Abort") &&
               flashButton()->accessibleName() == flashButton()->text() && flashButton()->isEnabled() &&
               !button("selectFileButton")->isEnabled() && !bar()->isHidden() && status()->isHidden();
    }

    /// The device answers so many commands.
    void answer(int replies = 1)
    {
        for (int i = 0; i < replies; ++i)
            emit window.Signal_IncrementCntr(QVariant());
    }

    /// Asks to abort, and says yes.
    void abort() const
    {
        clickFlash();
        click(childByName<QPushButton>(box("abortBox"), "proceedButton"));
    }

    /// The visible box of this name; there may be none.
    QMessageBox *box(const char *name) const
    {
        const auto boxes = window.findChildren<QMessageBox *>(QString::fromLatin1(name));
        QMessageBox *shown = nullptr;
        for (QMessageBox *candidate : boxes) {
            if (!candidate->isVisible())
                continue;
            if (shown)
                qFatal("%s is shown twice", name);
            shown = candidate;
        }
        return shown;
    }

    /// The text of the box that refuses the file; empty if there is none.
    QString refusal() const
    {
        const QMessageBox *shown = box("failureBox");
        return shown ? shown->text() : QString();
    }

    void leaveRefusal() const { click(childByName<QPushButton>(box("failureBox"), "okButton")); }

    /// The dialog that asks for a file; null if none is open.
    QFileDialog *fileDialog() const
    {
        const auto dialogs = window.findChildren<QFileDialog *>(QStringLiteral("firmwareFileDialog"));
        QFileDialog *shown = nullptr;
        for (QFileDialog *candidate : dialogs) {
            if (!candidate->isVisible())
                continue;
            if (shown)
                qFatal("two dialogs ask for a file");
            shown = candidate;
        }
        return shown;
    }

private:
    const QPointer<FirmwareUpdate> m_window{&window}; ///< a parent may have deleted it
};
