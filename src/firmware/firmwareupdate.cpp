#include "firmware/firmwareupdate.h"

#include "base/gui/buttonkeys.h"
#include "base/gui/confirmation.h"
#include "base/gui/dialogs.h"
#include "base/gui/heldkeys.h"
#include "base/timesource.h"
#include "firmware/firmwarefile.h"
#include "firmware/firmwarename.h"
#include "firmware/firmwaretexts.h"
#include "ui_firmwareupdate.h"

#include <QDebug>
#include <QFileDialog>
#include <QFileInfo>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

namespace {

const QLatin1String kStartText("Read and Flash File");
const QLatin1String kAbortText("Abort");
const QLatin1String kAbortBox("abortBox");

/// How long the button starts nothing after an update was complete.
constexpr std::chrono::milliseconds kRest(500);

/// How many commands are queued in one turn of the event loop: queueing the largest image at once would hold
/// the window for the better part of a second. All of an image of 300000 bytes.
constexpr int kPortion = 1280;
constexpr std::chrono::milliseconds kNextTurn(0);

/// Return presses the default button of a dialog only, and there is none.
bool isPressOfAButton(const QKeyEvent &event)
{
    return isButtonKey(event) && !isReturn(event);
}

/// Judges the words of the name, and logs what is wrong with them.
bool isAccepted(const FirmwareName &name)
{
    if (!name.hasKnownModule())
        qDebug() << "Error incorrect module type in filename";
    if (!name.hasKnownFpga())
        qDebug() << "Error incorrect FPGA type in filename";
    switch (name.verdict()) {
    case FirmwareName::Verdict::Invalid:
        return false;
    case FirmwareName::Verdict::FewPieces:
        qDebug() << "Warning parameters count is low";
        return true;
    case FirmwareName::Verdict::Complete:
        return true;
    }
    return false;
}

} // namespace

FirmwareUpdate::FirmwareUpdate(TimeSource &time, QWidget *parent)
    : QDialog(parent, dialogFlags() & ~Qt::WindowFlags(Qt::WindowStaysOnTopHint))
    , m_ui(std::make_unique<Ui::FirmwareUpdate>())
    , m_restTimer(time.createTimer(this))
    , m_portionTimer(time.createTimer(this))
{
    m_restTimer->setSingleShot(true);
    connect(m_portionTimer, &Timer::timeout, this, &FirmwareUpdate::queuePortion);
    m_ui->setupUi(this);
    setButtonText(kStartText);
    setWidths();
    keepLastMessageInView();
    connect(m_ui->selectFileButton, &QPushButton::clicked, this, &FirmwareUpdate::Slot_SelectFilePath);
    connect(m_ui->flashButton, &QPushButton::clicked, this, &FirmwareUpdate::endPress);
    m_ui->flashButton->installEventFilter(this);
    ignoreHeldKeys(*this);
}

FirmwareUpdate::~FirmwareUpdate() = default;

bool FirmwareUpdate::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->flashButton)
        notePress(*event);
    return QDialog::eventFilter(watched, event);
}

FirmwareUpdate::Press FirmwareUpdate::pressNow() const
{
    if (m_state != State::Idle)
        return Press::Abort;
    return m_restTimer->isActive() ? Press::Nothing : Press::Start;
}

void FirmwareUpdate::notePress(const QEvent &event)
{
    // Not by the button's own signal: it comes again when the mouse is dragged out of it and back.
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        if (static_cast<const QMouseEvent &>(event).button() == Qt::LeftButton)
            m_press = pressNow();
        break;
    case QEvent::MouseButtonRelease: { // outside, it presses nothing
        const auto &mouse = static_cast<const QMouseEvent &>(event);
        if (mouse.button() == Qt::LeftButton && !m_ui->flashButton->rect().contains(mouse.pos()))
            m_press.reset();
        break;
    }
    case QEvent::MouseButtonDblClick: // its first click was for what was here before
        if (static_cast<const QMouseEvent &>(event).button() == Qt::LeftButton)
            m_press = Press::Nothing;
        break;
    case QEvent::FocusOut: // the button lets go of what it was pressed for
        m_press.reset();
        break;
    case QEvent::KeyPress:
        if (isPressOfAButton(static_cast<const QKeyEvent &>(event)))
            m_press = pressNow();
        break;
    default:
        break;
    }
}

void FirmwareUpdate::endPress()
{
    const Press now = pressNow();
    const Press begun = std::exchange(m_press, std::nullopt).value_or(now);
    if (begun == now && now != Press::Nothing)
        Slot_UpdateOrAbortFirmw();
}

void FirmwareUpdate::beginOperation()
{
    if (m_state == State::Idle)
        checkFile();
}

void FirmwareUpdate::setCommandsWaiting(std::function<bool()> commandsWait)
{
    m_commandsWait = std::move(commandsWait);
}

bool FirmwareUpdate::commandsWait() const
{
    return m_commandsWait && m_commandsWait();
}

void FirmwareUpdate::stopCounting()
{
    if (m_state == State::Running)
        setState(State::Stalled);
}

void FirmwareUpdate::setState(State state)
{
    if (state == m_state)
        return;
    qDebug() << "Firmware update:" << m_state << "to" << state;
    m_state = state;
    if (state != State::Running)
        endQueueing();
    const bool isIdle = state == State::Idle;
    setButtonText(isIdle ? kStartText : kAbortText);
    m_ui->selectFileButton->setEnabled(isIdle);
    if (state == State::Running)
        connect(this, &FirmwareUpdate::Signal_IncrementCntr, this, &FirmwareUpdate::Slot_incrementProgress,
                Qt::UniqueConnection);
    else
        disconnect(this, &FirmwareUpdate::Signal_IncrementCntr, this,
                   &FirmwareUpdate::Slot_incrementProgress);
    if (!isIdle)
        m_ui->flashButton->setEnabled(true);
}

void FirmwareUpdate::setButtonText(const QString &text)
{
    m_ui->flashButton->setText(text);
    m_ui->flashButton->setAccessibleName(text);
}

void FirmwareUpdate::setWidths()
{
    QLineEdit &edit = *m_ui->filePathEdit;
    const int frame = edit.minimumSizeHint().width(); // that of one letter
    edit.setMinimumWidth(edit.fontMetrics().horizontalAdvance(edit.placeholderText()) + frame);
    // The buttons stay where they are when the text changes.
    m_ui->flashButton->setMinimumWidth(m_ui->flashButton->sizeHint().width());
}

void FirmwareUpdate::keepLastMessageInView()
{
    // Not after each message: the progress and the status take their room later, when they are laid out. And
    // not if the operator looks at earlier ones.
    QScrollBar *bar = m_ui->messageBox->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, bar, [bar, end = bar->maximum()](int, int maximum) mutable {
        if (bar->value() >= std::exchange(end, maximum))
            bar->setValue(maximum);
    });
}

QString FirmwareUpdate::path() const
{
    return m_ui->filePathEdit->text();
}

void FirmwareUpdate::takePath(const QString &path)
{
    if (m_state != State::Idle) {
        m_nextPath = path;
        return;
    }
    m_ui->filePathEdit->setText(path);
    checkFile();
}

void FirmwareUpdate::takeNextPath()
{
    takePath(m_nextPath.value_or(path()));
    m_nextPath.reset();
}

void FirmwareUpdate::checkFile()
{
    const bool isReadable = isFirmwareFileReadable(path());
    m_ui->flashButton->setEnabled(isReadable);
    if (!isReadable)
        qDebug() << qUtf8Printable(firmwaretexts::cannotOpen());
}

void FirmwareUpdate::Slot_SelectFilePath()
{
    if (m_fileDialog && m_fileDialog->isVisible())
        return;
    m_fileDialog = new QFileDialog(this, QStringLiteral("Firmware File"));
    QFileDialog &dialog = *m_fileDialog;
    dialog.setObjectName(QStringLiteral("firmwareFileDialog"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilter(QStringLiteral("Binary Files (*.bin)"));
    const QFileInfo current(path());
    if (!path().isEmpty() && current.dir().exists()) {
        dialog.setDirectory(current.dir());
        dialog.selectFile(current.fileName());
    }
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    connect(&dialog, &QFileDialog::fileSelected, this, &FirmwareUpdate::takePath);
    dialog.open();
}

void FirmwareUpdate::Slot_UpdateFirmwrFilePath(QString path)
{
    takePath(path);
}

void FirmwareUpdate::Slot_UpdateOrAbortFirmw()
{
    if (m_state != State::Idle) {
        askToAbort();
        return;
    }
    const bool isBegun = ReadFileAndSendCommands();
    if (isQueueing())
        m_startWhenQueued = true;
    else if (isBegun || !commandsWait())
        emit Signal_StartProcedure();
}

bool FirmwareUpdate::ReadFileAndSendCommands()
{
    if (m_state != State::Idle)
        return false;
    const QString path = this->path();
    const FirmwareName name = firmwareName(path);
    const QString chip = firmwareimage::chipOfName(name.file);
    const FirmwareFile file = readFirmwareFile(path);
    switch (file.result) {
    case FirmwareFile::Result::NotReadable:
        refuse(firmwaretexts::cannotOpen());
        return false;
    case FirmwareFile::Result::TooLarge:
        refuse(firmwaretexts::tooLarge());
        return false;
    case FirmwareFile::Result::Read:
        break;
    }
    if (chip != firmwareimage::chipInContents(file.image)) {
        refuse(firmwaretexts::mismatch());
        return false;
    }
    m_ui->messageBox->clear();
    append(firmwaretexts::fileInformation(name, chip));
    if (!isAccepted(name)) {
        refuse(firmwaretexts::invalidName());
        return false;
    }
    if (firmwareimage::chipOfName(name.fpgaWord) != chip) { // the name has the other word too
        refuse(firmwaretexts::mismatch());
        return false;
    }
    append(firmwaretexts::start(name, file.image.size()));
    m_target = firmwareimage::targetOf(name);
    sendImage(file.image);
    emit Signal_SaveFile(path);
    return true;
}

void FirmwareUpdate::refuse(const QString &reason)
{
    auto *box =
        new QMessageBox(QMessageBox::Critical, QStringLiteral("Failure"), reason, QMessageBox::Ok, this);
    box->setWindowFlags(dialogFlags()); // a message box would add some of its own
    box->setObjectName(QStringLiteral("failureBox"));
    box->setTextFormat(Qt::PlainText);
    QAbstractButton &ok = *box->button(QMessageBox::Ok);
    ok.setObjectName(QStringLiteral("okButton"));
    ok.setAccessibleName(QStringLiteral("OK"));
    ignoreHeldKeys(*box);
    showModalOnce(*box);
}

void FirmwareUpdate::append(const QStringList &texts)
{
    for (const QString &text : texts)
        m_ui->messageBox->appendPlainText(text);
}

void FirmwareUpdate::showStatus(const QString &text)
{
    m_ui->flashStatusLabel->setText(text);
    m_ui->flashStatusLabel->show();
}

void FirmwareUpdate::startProgress(int commandCount)
{
    m_ui->flashStatusLabel->hide();
    m_ui->progressBar->show();
    m_ui->progressBar->reset(); // to one below its least value, so that the last reply reaches the greatest
    m_ui->progressBar->setRange(0, commandCount - 1);
    setState(State::Running);
}

void FirmwareUpdate::sendImage(const QByteArray &image)
{
    m_sequence = firmwareimage::Sequence(m_target, image);
    m_queued = 0;
    startProgress(m_sequence.count());
    queuePortion();
}

bool FirmwareUpdate::isQueueing() const
{
    return m_queued < m_sequence.count();
}

void FirmwareUpdate::queuePortion()
{
    // A receiver may end the queueing, which empties the sequence.
    for (int left = kPortion; left > 0 && isQueueing(); --left)
        queueCommand(m_queued++);
    if (isQueueing()) {
        if (!m_portionTimer->isActive())
            m_portionTimer->start(kNextTurn);
        return;
    }
    const bool start = m_startWhenQueued;
    endQueueing();
    if (start)
        emit Signal_StartProcedure();
}

void FirmwareUpdate::queueCommand(int index)
{
    const int begin = m_sequence.blocksBegin();
    const int end = m_sequence.blocksEnd();
    const FPGAfwCommand command = m_sequence.at(index);
    if (index == begin) {
        const int size = m_sequence.imageSize();
        qDebug() << "Total no of bytes" << size << " No of Blocks:" << size / firmwareimage::kBlockSize;
    }
    if (index == end) {
        const int blocks = end - begin;
        qDebug() << "No of Block commands planned sent: " << blocks;
        qDebug() << "Total bytes packed and being sent: " << blocks * firmwareimage::kBlockSize;
    }
    emit Signal_commandMsg(QVariant::fromValue(command));
    if (index >= begin && index < end)
        qDebug() << "Block Size:" << command.data.size();
}

void FirmwareUpdate::endQueueing()
{
    m_portionTimer->stop();
    m_sequence = {};
    m_queued = 0;
    m_startWhenQueued = false;
}

void FirmwareUpdate::Slot_incrementProgress(QVariant)
{
    if (m_state != State::Running)
        return;
    QProgressBar &bar = *m_ui->progressBar;
    const int furthest = isQueueing() || commandsWait() ? bar.maximum() - 1 : bar.maximum();
    bar.setValue(std::min(bar.value() + 1, furthest));
    if (bar.value() == bar.maximum())
        complete();
}

void FirmwareUpdate::complete()
{
    m_restTimer->start(kRest);
    setState(State::Idle);
    m_ui->progressBar->hide();
    showStatus(QStringLiteral("FPGA flashing complete..."));
    append(firmwaretexts::completion());
    dismissQuestion();
    takeNextPath();
}

void FirmwareUpdate::askToAbort()
{
    Confirmation question;
    question.name = kAbortBox;
    question.title = QStringLiteral("Warning");
    question.question = QStringLiteral("Are you sure you want to Abort the Flashing Process");
    question.proceedText = QStringLiteral("Yes ,Abort Flashing");
    question.refusalText = QStringLiteral("No");
    confirm(question, *this, [this] { abort(); });
}

void FirmwareUpdate::dismissQuestion()
{
    const auto boxes = findChildren<QMessageBox *>(kAbortBox);
    for (QMessageBox *box : boxes) {
        if (box->isVisible()) // one that was answered may still be there
            box->reject();
    }
}

void FirmwareUpdate::abort()
{
    if (m_state == State::Idle)
        return;
    setState(State::Idle);
    emit Signal_AbortFrmwr();
    m_ui->progressBar->reset();
    m_ui->progressBar->hide();
    append({firmwaretexts::aborted()});
    showStatus(firmwaretexts::aborted());
    for (const FpgaCommandCode code : {FpgaCommandCode::Stop, FpgaCommandCode::Reset})
        emit Signal_commandMsg(QVariant::fromValue(firmwareimage::plainCommand(m_target, code)));
    takeNextPath(); // last, as the disk may be slow
}
