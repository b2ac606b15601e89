#include "modules/channels/amplifierchannel_view.h"

#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "base/timesource.h"
#include "modules/channels/stripgeometry.h"
#include "modules/common/channelstyles.h"
#include "modules/common/gestures.h"
#include "modules/common/widgetstyle.h"
#include "modules/widgets/filterspinbox.h"
#include "modules/widgets/qcomboboxnowheel.h"

#include <QCursor>
#include <QDebug>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QToolTip>

namespace {

constexpr Timer::Period kAutozeroPoll{1000}; // how often a held button is looked at
constexpr int kUndisturbedFilter = 200;      // Hz; a lower filter may spoil the response
constexpr int kLevelPrecision = 6;           // digits

QString autozeroToolTip()
{
    return QStringLiteral(
        "<html><head/><body><p>Tooltip for AutoZero:</p><p>Left click: AutoZero command <br/><br/>Long "
        "press: "
        "AutoZero reset<br/><br/>Shift+click: AutoZero at all<br/>matching channels<br/><br/>Ctrl+click: "
        "AutoZero at all<br/>Ranges (takes some time)</p></body></html>");
}

void showAutoResetSent()
{
    QToolTip::showText(QCursor::pos(), QStringLiteral("AutoReset Sent"));
}

} // namespace

AmplifierChannel_View::AmplifierChannel_View(TimeSource &time, QWidget *parent)
    : Channel_View(parent)
    , m_time(time)
    , m_autozeroTimer(time.createTimer(this))
{
    connect(m_autozeroTimer, &Timer::timeout, this, &AmplifierChannel_View::tmrSlot);
}

void AmplifierChannel_View::setAmplifierControls(const Controls &controls, const rowcolumns::Columns &columns)
{
    using Own = AmplifierChannel_View;
    setUpFilterBox(controls, columns);
    connect(&controls.typeBox, qOverload<int>(&QComboBox::activated), this,
            &Own::on_comboBox_BridgeType_activated);
    connect(&controls.rangeBox, &QComboBoxNoWheel::Signal_ShiftClick, this, &Own::Slot_RangeShiftClick);

    m_autozeroButton = &controls.autozeroButton;
    connect(m_autozeroButton, &QPushButton::pressed, this, &Own::on_pushButton_Autozero_pressed);
    connect(m_autozeroButton, &QPushButton::released, this, &Own::on_pushButton_Autozero_released);
    setFontIfChanged(*m_autozeroButton, fonts::text());
    m_autozeroButton->setToolTip(autozeroToolTip());
    m_autozeroButton->installEventFilter(this);
    setAutozero(false); // styled before it is shown: the first status finds nothing to change
    stripgeometry::placeHigh(*m_autozeroButton, columns.autozero);

    m_polarityButton = &controls.polarityButton;
    setStyleIfChanged(*m_polarityButton, channelstyles::off());
    stripgeometry::placePicture(*m_polarityButton, columns.revPol);
    setTabOrder(m_filterSpinBox, m_polarityButton);

    m_levelEdit = &controls.levelEdit;
}

void AmplifierChannel_View::setUpFilterBox(const Controls &controls, const rowcolumns::Columns &columns)
{
    m_filterSpinBox = new FilterSpinBox(m_time, this);
    m_filterSpinBox->setObjectName(QStringLiteral("filterSpinBox"));
    m_filterSpinBox->setAccessibleName(QStringLiteral("Filter frequency"));
    setSharedControls(controls.typeBox, controls.rangeBox, *m_filterSpinBox, columns);
    connect(m_filterSpinBox, &FilterSpinBox::enterPress, this,
            &AmplifierChannel_View::Slot_spinBoxEnterPress);
    connect(m_filterSpinBox, &FilterSpinBox::stepChanged, this,
            &AmplifierChannel_View::filterSpinBox_EditingFinished);
    connect(m_filterSpinBox, &FilterSpinBox::textAltered, this,
            &AmplifierChannel_View::Slot_filterBoxTextAltered);
    connect(m_filterSpinBox, &FilterSpinBox::Signal_ShiftEnter, this,
            &AmplifierChannel_View::Slot_FilterShiftEnter);
}

bool AmplifierChannel_View::isAutozeroButton(const QObject *object) const
{
    return object == m_autozeroButton;
}

void AmplifierChannel_View::setLevel(double percent)
{
    m_levelEdit->setText(QString::number(percent, 'g', kLevelPrecision));
}

void AmplifierChannel_View::setAutozero(bool running)
{
    setStyleIfChanged(*m_autozeroButton, running ? channelstyles::sent() : channelstyles::confirmed());
}

void AmplifierChannel_View::setPolarity(bool reversed)
{
    m_polarityButton->setChecked(reversed);
    setStyleIfChanged(*m_polarityButton, reversed ? channelstyles::on() : channelstyles::off());
}

void AmplifierChannel_View::applyGroupCommand(const GroupCommand &command)
{
    // Not guarded: one gesture reaches all matching channels.
    if (command.action() == GroupAction::Autozero)
        requestAutozero();
    else if (command.action() == GroupAction::AutoReset)
        requestAutoReset();
    else
        Channel_View::applyGroupCommand(command);
}

void AmplifierChannel_View::emitTypeIndex(int index)
{
    emit Signal_SendBridgeTypeIndex(index);
}

void AmplifierChannel_View::on_comboBox_BridgeType_activated(int index)
{
    typeActivated(index);
}

void AmplifierChannel_View::Slot_RangeShiftClick()
{
    noteRangeShiftClick();
}

void AmplifierChannel_View::on_pushButton_Autozero_pressed()
{
    m_autozeroPress.begin(m_time.now());
    m_autozeroTimer->start(kAutozeroPoll);
}

void AmplifierChannel_View::on_pushButton_Autozero_released()
{
    const bool click = m_autozeroPress.isClick(m_time.now());
    m_autozeroTimer->stop();
    if (!click || !acceptsInput())
        return;
    if (!m_autozeroShiftFlag) {
        requestAutozero();
        return;
    }
    m_autozeroShiftFlag = false;
    setStyleIfChanged(*m_autozeroButton, channelstyles::sent());
    emitGroupCommand(GroupAction::Autozero);
}

void AmplifierChannel_View::tmrSlot()
{
    if (!m_autozeroPress.isLong(m_time.now()))
        return;
    qDebug() << "Autozero released";
    m_autozeroTimer->stop();
    if (!m_autozeroShiftFlag) {
        requestAutoReset();
        return;
    }
    m_autozeroShiftFlag = false;
    setStyleIfChanged(*m_autozeroButton, channelstyles::sent());
    showAutoResetSent();
    emitGroupCommand(GroupAction::AutoReset);
}

void AmplifierChannel_View::requestAutozero()
{
    setStyleIfChanged(*m_autozeroButton, channelstyles::sent());
    emit Signal_SendAutozero(true);
}

void AmplifierChannel_View::requestAutoReset()
{
    setStyleIfChanged(*m_autozeroButton, channelstyles::sent());
    showAutoResetSent();
    emit Signal_SendAutoReset(true);
}

void AmplifierChannel_View::polarityClicked(bool checked)
{
    qDebug() << "****RevPolarity clicked";
    if (!acceptsInput())
        return;
    setStyleIfChanged(*m_polarityButton, checked ? channelstyles::switchedOn() : channelstyles::off());
    emit Signal_SendRevPolState(checked);
}

void AmplifierChannel_View::Slot_spinBoxEnterPress()
{
    sendFilter();
}

void AmplifierChannel_View::filterSpinBox_EditingFinished()
{
    if (acceptsInput())
        sendFilterWithWarning();
}

void AmplifierChannel_View::Slot_filterBoxTextAltered(QString)
{
    m_filterTextAltered = true;
}

void AmplifierChannel_View::Slot_FilterShiftEnter()
{
    if (acceptsInput())
        emitGroupCommand(GroupAction::Filter, m_filterSpinBox->value());
}

void AmplifierChannel_View::filterLeft()
{
    if (!m_filterTextAltered)
        return;
    m_filterTextAltered = false;
    if (acceptsInput())
        sendFilterWithWarning();
}

void AmplifierChannel_View::sendFilterWithWarning()
{
    const int value = m_filterSpinBox->value();
    sendFilter();
    if (value < kUndisturbedFilter)
        showFilterWarning();
}

void AmplifierChannel_View::showFilterWarning()
{
    if (m_filterWarning && m_filterWarning->isVisible())
        return;
    m_filterWarning = new QMessageBox(
        QMessageBox::Warning, QStringLiteral("Warning"),
        QStringLiteral("Warning: Filter response may be deteriorated below 200 Hz filter frequency."),
        QMessageBox::Ok, this);
    m_filterWarning->setWindowFlags(dialogFlags()); // a message box would add some of its own
    m_filterWarning->setObjectName(QStringLiteral("filterWarningBox"));
    showModalOnce(*m_filterWarning);
}

bool AmplifierChannel_View::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_filterSpinBox && event->type() == QEvent::FocusOut)
        filterLeft();
    else if (watched == m_autozeroButton && isPressWith(*event, Qt::ShiftModifier))
        m_autozeroShiftFlag = true;
    return Channel_View::eventFilter(watched, event);
}
