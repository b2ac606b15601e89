#include "modules/channels/channeltype2_view.h"

#include "modules/channels/stripgeometry.h"
#include "ui_channeltype2_view.h"

ChannelType2_View::ChannelType2_View(TimeSource &time, QWidget *parent)
    : AmplifierChannel_View(time, parent)
    , m_ui(std::make_unique<Ui::ChannelType2_View>())
{
    m_ui->setupUi(this);
    setAmplifierControls({*m_ui->comboBox_BridgeType, *m_ui->comboBox_RangeGain, *m_ui->pushButton_Autozero,
                          *m_ui->checkBox_RevPol, *m_ui->lineEdit_Level},
                         rowcolumns::columns(HeaderForm::Voltage));
    connect(m_ui->comboBox_BridgeType, &QComboBoxNoWheel::Signal_ShiftClick, this,
            &ChannelType2_View::Slot_FilterShiftClick);
    connect(m_ui->comboBox_RangeGain, qOverload<int>(&QComboBox::activated), this,
            &ChannelType2_View::on_comboBox_RangeGain_activated);
    connect(m_ui->checkBox_RevPol, &QPushButton::clicked, this,
            &ChannelType2_View::on_checkBox_RevPol_clicked);
}

ChannelType2_View::~ChannelType2_View() = default;

void ChannelType2_View::on_comboBox_RangeGain_activated(int index)
{
    rangeActivated(index);
}

void ChannelType2_View::emitRangeIndex(int index)
{
    emit Signal_SendRangeGainIndex(index);
}

void ChannelType2_View::on_checkBox_RevPol_clicked(bool checked)
{
    polarityClicked(checked);
}

void ChannelType2_View::Slot_FilterShiftClick()
{
    noteTypeShiftClick();
}
