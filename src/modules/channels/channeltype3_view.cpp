#include "modules/channels/channeltype3_view.h"

#include "base/gui/dialogs.h"
#include "modules/channels/stripgeometry.h"
#include "modules/widgets/customt3spinbox.h"
#include "ui_channeltype3_view.h"

#include <QDebug>
#include <QMessageBox>
#include <QPushButton>

namespace {

constexpr int kStandardRange = 0; // index; every other range is a special one

QString specialRangeText()
{
    return QStringLiteral(
        "You are trying to select one of the \"Special Ranges\". Please be aware that this action has NO "
        "EFFECT on the resolution of the measured value: the only effect is a multiplication of the output "
        "value by a fixed factor.\nThis only makes sense when you are using an analog decoder with +/-10 "
        "Volt "
        "output range.\nIn all other cases this will lead to strange and useless results.\n\nIf you really "
        "need one of the \"Special Ranges\", select \"I want to continue\".\nOtherwise choose \"back to "
        "Standard Functionality\".\n\n");
}

} // namespace

ChannelType3_View::ChannelType3_View(QWidget *parent)
    : Channel_View(parent)
    , m_ui(std::make_unique<Ui::ChannelType3_View>())
{
    m_ui->setupUi(this);
    m_filterSpinBox = new CustomT3SpinBox(this);
    m_filterSpinBox->setObjectName(QStringLiteral("filterSpinBox"));
    m_filterSpinBox->setAccessibleName(QStringLiteral("Filter"));
    setSharedControls(*m_ui->comboBox_ThermoDeviceType, *m_ui->comboBox_TemperatureRange, *m_filterSpinBox,
                      rowcolumns::columns(HeaderForm::Thermo));
    connect(m_filterSpinBox, &CustomT3SpinBox::stepChanged, this,
            &ChannelType3_View::filterSpinBox_EditingFinished);
    connect(m_ui->comboBox_ThermoDeviceType, &QComboBoxNoWheel::Signal_ShiftClick, this,
            &ChannelType3_View::Slot_FilterShiftClick);
    connect(m_ui->comboBox_TemperatureRange, &QComboBoxNoWheel::Signal_ShiftClick, this,
            &ChannelType3_View::Slot_RangeShiftClick);
    connect(m_ui->comboBox_ThermoDeviceType, qOverload<int>(&QComboBox::activated), this,
            &ChannelType3_View::on_comboBox_ThermoDeviceType_activated);
    connect(m_ui->comboBox_TemperatureRange, qOverload<int>(&QComboBox::activated), this,
            &ChannelType3_View::on_comboBox_TemperatureRange_activated);
}

ChannelType3_View::~ChannelType3_View() = default;

void ChannelType3_View::on_comboBox_ThermoDeviceType_activated(int index)
{
    typeActivated(index);
}

void ChannelType3_View::emitTypeIndex(int index)
{
    emit Signal_SendThermoDeviceTypeIndex(index);
}

void ChannelType3_View::emitRangeIndex(int index)
{
    emit Signal_SendTemperatureRangeIndex(index);
}

void ChannelType3_View::applyGroupRange(int index)
{
    setRangeIndex(index);
    sendRange(index);
}

void ChannelType3_View::on_comboBox_TemperatureRange_activated(int index)
{
    if (index == kStandardRange)
        rangeActivated(index);
    else
        askForSpecialRange(index);
}

void ChannelType3_View::askForSpecialRange(int index)
{
    if (m_warningBox && m_warningBox->isVisible())
        return;
    auto *box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Warning"), specialRangeText(),
                                QMessageBox::Yes | QMessageBox::No, this);
    m_warningBox = box;
    box->setObjectName(QStringLiteral("specialRangeBox"));
    box->button(QMessageBox::Yes)->setText(QStringLiteral("I know what I'm doing, I want to continue"));
    box->button(QMessageBox::No)->setText(QStringLiteral("Abort, and back to Standard Functionality"));
    box->setDefaultButton(QMessageBox::No);
    connect(box, &QDialog::finished, this, [this, box, index] {
        if (box->clickedButton() == box->button(QMessageBox::Yes))
            takeSpecialRange(index);
        else
            leaveSpecialRange();
    });
    showModalOnce(*box);
}

void ChannelType3_View::takeSpecialRange(int index)
{
    if (!acceptsInput())
        return;
    m_ui->comboBox_TemperatureRange->setCurrentIndex(index); // a status may have moved it meanwhile
    rangeActivated(index);
}

void ChannelType3_View::leaveSpecialRange()
{
    // Whatever the guard says, and even if the standard range is in force already.
    m_ui->comboBox_TemperatureRange->setCurrentIndex(kStandardRange);
    sendRange(kStandardRange);
}

void ChannelType3_View::filterSpinBox_EditingFinished()
{
    if (!acceptsInput())
        return;
    const bool toAll = m_filterSpinBox->isShiftClicked();
    qDebug() << "ShiftClick Value:" << toAll;
    if (toAll)
        emitGroupCommand(GroupAction::Filter, m_filterSpinBox->value());
    else
        sendFilter();
}

void ChannelType3_View::Slot_FilterShiftClick()
{
    noteTypeShiftClick();
}

void ChannelType3_View::Slot_RangeShiftClick()
{
    noteRangeShiftClick();
}
