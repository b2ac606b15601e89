#include "modules/channels/bridgechannel_view.h"

#include "base/gui/dialogs.h"
#include "base/timesource.h"
#include "modules/channels/stripgeometry.h"
#include "modules/common/channelstyles.h"
#include "modules/common/gestures.h"
#include "modules/common/offsettext.h"
#include "modules/common/widgetstyle.h"
#include "modules/widgets/dialog_manualoffset.h"
#include "ui_bridgechannel_view.h"

namespace {

constexpr Timer::Period kShuntPeriod{20000}; // after which the module switches a shunt off by itself

void showPreselection(QPushButton &button, bool on)
{
    setStyleIfChanged(button, on ? channelstyles::on() : channelstyles::off());
}

} // namespace

const BridgeChannel_View::ShuntCodes BridgeChannel_View::kPositiveCodes{
    ChannelAction::PositiveShuntOn,
    ChannelAction::PositiveShuntOff,
    ChannelAction::PositiveShuntOnEverywhere,
    ChannelAction::PositiveShuntOffEverywhere,
    ChannelAction::PreselectPositiveShunt,
    ChannelAction::DeselectPositiveShunt,
    GroupAction::PositiveShuntOn,
    GroupAction::PositiveShuntOff};
const BridgeChannel_View::ShuntCodes BridgeChannel_View::kNegativeCodes{
    ChannelAction::NegativeShuntOn,
    ChannelAction::NegativeShuntOff,
    ChannelAction::NegativeShuntOnEverywhere,
    ChannelAction::NegativeShuntOffEverywhere,
    ChannelAction::PreselectNegativeShunt,
    ChannelAction::DeselectNegativeShunt,
    GroupAction::NegativeShuntOn,
    GroupAction::NegativeShuntOff};

BridgeChannel_View::BridgeChannel_View(TimeSource &time, QWidget *parent)
    : AmplifierChannel_View(time, parent)
    , m_ui(std::make_unique<Ui::BridgeChannel_View>())
{
    m_ui->setupUi(this);
    m_positive = {kPositiveCodes, m_ui->label, m_ui->checkBox_Shunt_Pos, m_ui->checkBox_Shunt_Pos_Presel,
                  time.createTimer(this)};
    m_negative = {kNegativeCodes, m_ui->label_2, m_ui->checkBox_Shunt_Neg, m_ui->checkBox_Shunt_Neg_Presel,
                  time.createTimer(this)};
    const rowcolumns::Columns columns = rowcolumns::columns(HeaderForm::StrainGauge);
    setAmplifierControls({*m_ui->comboBox_BridgeType, *m_ui->comboBox_Gain, *m_ui->pushButton_Autozero,
                          *m_ui->polarityButton, *m_ui->lineEdit_Level},
                         columns);
    stripgeometry::placeBox(*m_ui->pushButton_ManualOffset, columns.manualOffset);
    setOffset(automaticOffset());
    connectControls();
    setUpShunt(m_positive, 0);
    setUpShunt(m_negative, 1);
}

BridgeChannel_View::~BridgeChannel_View() = default;

void BridgeChannel_View::connectControls()
{
    using Own = BridgeChannel_View;
    connect(m_ui->comboBox_BridgeType, &QComboBoxNoWheel::Signal_ShiftClick, this,
            &Own::Slot_BridgeShiftClick);
    connect(m_ui->comboBox_Gain, qOverload<int>(&QComboBox::activated), this,
            &Own::on_comboBox_Gain_activated);
    connect(m_ui->pushButton_ManualOffset, &QPushButton::clicked, this,
            &Own::on_pushButton_ManualOffset_clicked);
    connect(m_positive.button, &QPushButton::clicked, this, &Own::on_checkBox_Shunt_Pos_clicked);
    connect(m_negative.button, &QPushButton::clicked, this, &Own::on_checkBox_Shunt_Neg_clicked);
    connect(m_positive.preselect, &QPushButton::clicked, this, &Own::on_checkBox_Shunt_Pos_Presel_clicked);
    connect(m_negative.preselect, &QPushButton::clicked, this, &Own::on_checkBox_Shunt_Neg_Presel_clicked);
    connect(m_positive.timer, &Timer::timeout, this, &Own::Slot_ShuntPostivTmr);
    connect(m_negative.timer, &Timer::timeout, this, &Own::Slot_ShuntNegativTmr);
}

void BridgeChannel_View::setUpShunt(Shunt &shunt, int line)
{
    const rowcolumns::ShuntColumns columns = rowcolumns::shuntColumns();
    stripgeometry::placeInShuntLine(*shunt.sign, columns.sign, line);
    stripgeometry::placeInShuntLine(*shunt.button, columns.button, line);
    stripgeometry::placeInShuntLine(*shunt.preselect, columns.preselect, line);
    showInactive(shunt);
    showPreselection(*shunt.preselect, false);
    shunt.button->installEventFilter(this);
}

QPushButton &BridgeChannel_View::polarityButton()
{
    return *m_ui->polarityButton;
}

void BridgeChannel_View::setBridgeControlsVisible(bool visible)
{
    for (const Shunt *shunt : {&m_positive, &m_negative}) {
        shunt->sign->setVisible(visible);
        shunt->button->setVisible(visible);
        shunt->preselect->setVisible(visible);
    }
    m_ui->pushButton_ManualOffset->setVisible(visible);
}

void BridgeChannel_View::setOffset(const QString &text)
{
    m_manualOffset = text.toStdString();
    m_ui->pushButton_ManualOffset->setText(text);
    setStyleIfChanged(*m_ui->pushButton_ManualOffset, text == automaticOffset()
                                                          ? channelstyles::offsetAuto()
                                                          : channelstyles::offsetConfirmed());
}

void BridgeChannel_View::setOffsetRange(double minimum, double maximum, double step)
{
    m_offsetMin = minimum;
    m_offsetMax = maximum;
    m_offsetStep = step;
}

void BridgeChannel_View::setPreselection(bool positive, bool negative)
{
    m_positive.preselect->setChecked(positive);
    showPreselection(*m_positive.preselect, positive);
    m_negative.preselect->setChecked(negative);
    showPreselection(*m_negative.preselect, negative);
}

void BridgeChannel_View::on_comboBox_Gain_activated(int index)
{
    rangeActivated(index);
}

void BridgeChannel_View::emitRangeIndex(int index)
{
    emit Signal_SendGainIndex(index);
}

void BridgeChannel_View::Slot_BridgeShiftClick()
{
    noteTypeShiftClick();
}

void BridgeChannel_View::on_pushButton_ManualOffset_clicked()
{
    const bool isOpen = m_offsetDialog && m_offsetDialog->isVisible();
    if (!acceptsInput() || isOpen)
        return;
    m_offsetDialog = new Dialog_ManualOffset(QString::fromStdString(m_manualOffset), m_offsetMin, m_offsetMax,
                                             m_offsetStep, this);
    connect(m_offsetDialog, &QDialog::accepted, this, &BridgeChannel_View::takeOffset);
    showModalOnce(*m_offsetDialog);
}

void BridgeChannel_View::takeOffset()
{
    const QString value = m_offsetDialog->value();
    m_manualOffset = value.toStdString();
    m_ui->pushButton_ManualOffset->setText(value);
    setStyleIfChanged(*m_ui->pushButton_ManualOffset, channelstyles::offsetSent());
    emit Signal_SendManualOffset(m_manualOffset);
}

void BridgeChannel_View::noteShuntClick(bool) {}

void BridgeChannel_View::on_checkBox_Shunt_Pos_clicked(bool checked)
{
    noteShuntClick(true);
    shuntClicked(m_positive, checked);
}

void BridgeChannel_View::on_checkBox_Shunt_Neg_clicked(bool checked)
{
    noteShuntClick(false);
    shuntClicked(m_negative, checked);
}

void BridgeChannel_View::shuntClicked(Shunt &shunt, bool checked)
{
    if (!acceptsInput())
        return;
    if (shunt.shiftFlag) {
        shunt.shiftFlag = false;
        sendAction(checked ? shunt.codes.groupOn : shunt.codes.groupOff);
        emitGroupCommand(checked ? shunt.codes.groupOnAction : shunt.codes.groupOffAction);
        return;
    }
    if (shunt.altFlag) {
        shunt.altFlag = false;
        return;
    }
    if (checked)
        showActive(shunt);
    else
        showInactive(shunt); // the timer keeps running; its end changes nothing more
    sendAction(checked ? shunt.codes.on : shunt.codes.off);
}

void BridgeChannel_View::sendAction(ChannelAction action)
{
    emit Signal_SendShuntState(wireCode(action));
}

void BridgeChannel_View::showActive(Shunt &shunt)
{
    setStyleIfChanged(*shunt.button, channelstyles::shuntActive());
    shunt.timer->start(kShuntPeriod);
}

void BridgeChannel_View::showInactive(Shunt &shunt)
{
    setStyleIfChanged(*shunt.button, channelstyles::off());
}

void BridgeChannel_View::shuntTimeOver(Shunt &shunt)
{
    shunt.timer->stop();
    showInactive(shunt);
    shunt.button->setChecked(false);
}

void BridgeChannel_View::Slot_ShuntPostivTmr()
{
    shuntTimeOver(m_positive);
}

void BridgeChannel_View::Slot_ShuntNegativTmr()
{
    shuntTimeOver(m_negative);
}

void BridgeChannel_View::on_checkBox_Shunt_Pos_Presel_clicked(bool checked)
{
    preselectClicked(m_positive, checked);
}

void BridgeChannel_View::on_checkBox_Shunt_Neg_Presel_clicked(bool checked)
{
    preselectClicked(m_negative, checked);
}

void BridgeChannel_View::preselectClicked(Shunt &shunt, bool checked)
{
    if (!acceptsInput())
        return;
    showPreselection(*shunt.preselect, checked);
    sendAction(checked ? shunt.codes.preselect : shunt.codes.deselect);
}

void BridgeChannel_View::Slot_LoadPresel()
{
    if (acceptsInput())
        emitGroupCommand(GroupAction::ActivatePreselected);
}

void BridgeChannel_View::applyGroupCommand(const GroupCommand &command)
{
    switch (command.action()) {
    case GroupAction::PositiveShuntOn:
        showActive(m_positive);
        return;
    case GroupAction::PositiveShuntOff:
        showInactive(m_positive);
        return;
    case GroupAction::NegativeShuntOn:
        showActive(m_negative);
        return;
    case GroupAction::NegativeShuntOff:
        showInactive(m_negative);
        return;
    case GroupAction::ActivatePreselected:
        for (Shunt *shunt : {&m_positive, &m_negative}) {
            if (shunt->preselect->isChecked())
                showActive(*shunt);
        }
        return;
    case GroupAction::DeactivateShunts:
        for (Shunt *shunt : {&m_positive, &m_negative}) {
            shunt->timer->stop();
            showInactive(*shunt);
        }
        return;
    case GroupAction::TypeIndex:
    case GroupAction::RangeIndex:
    case GroupAction::Autozero:
    case GroupAction::Filter:
    case GroupAction::ChannelFunction:
    case GroupAction::AutoReset:
        break;
    }
    AmplifierChannel_View::applyGroupCommand(command);
}

bool BridgeChannel_View::eventFilter(QObject *watched, QEvent *event)
{
    for (Shunt *shunt : {&m_positive, &m_negative}) {
        if (watched != shunt->button)
            continue;
        if (isPressWith(*event, Qt::ShiftModifier))
            shunt->shiftFlag = true;
        else if (isPressWith(*event, Qt::AltModifier))
            shunt->altFlag = true;
    }
    return AmplifierChannel_View::eventFilter(watched, event);
}
