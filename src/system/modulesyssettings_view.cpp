#include "system/modulesyssettings_view.h"

#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "gateway/gatewayzrt.h"
#include "link/tcpsock.h"
#include "modules/common/channelstyles.h"
#include "modules/common/widgetstyle.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/devicecodes.h"
#include "protocol/records/moduletypes.h"
#include "system/vx_samplingrates.h"
#include "ui_modulesyssettings_view.h"

namespace {

// The address of a request that reaches all channels.
constexpr quint32 kFirstModule = 1;
constexpr quint8 kFirstChannel = 1;

/// A rate that the device reported. A text that is too long shows its beginning.
void showRate(QLineEdit &field, const QString &text)
{
    field.setText(text);
    field.setCursorPosition(0);
    setStyleIfChanged(field, channelstyles::confirmed());
}

} // namespace

ModuleSysSettings_View::ModuleSysSettings_View(TimeSource &time, QWidget *parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::ModuleSysSettings_View>())
    , m_ratesDialog(new VX_SamplingRates(this))
    , m_gateway(new GatewayZRT(time, std::make_unique<TcpComm>(time, std::make_unique<TcpSock>(time)), this))
{
    setFont(fonts::text());
    m_ui->setupUi(this);
    m_ui->label_Titel->setFont(fonts::title());
    connectRates();
    connectGateway();
    connect(m_ui->loadPreselBtn, &QPushButton::clicked, this, &ModuleSysSettings_View::setPreselExec);
    connect(m_ui->loadPreselBtn_off, &QPushButton::clicked, this, &ModuleSysSettings_View::clearPreselExec);
}

ModuleSysSettings_View::~ModuleSysSettings_View() = default;

void ModuleSysSettings_View::connectRates()
{
    connect(m_ui->bitrateConfigBtn, &QPushButton::clicked, this, &ModuleSysSettings_View::bitRateExec);
    connect(m_ratesDialog, &VX_SamplingRates::setSamplingRate, this, &ModuleSysSettings_View::samplingRates);
    connect(m_ratesDialog, &VX_SamplingRates::setGatewaySampling, m_gateway,
            &GatewayZRT::Slot_setBitRateSettings);
    connect(m_gateway, &GatewayZRT::Signal_SetVXsamplingRate, m_ratesDialog,
            &VX_SamplingRates::Slot_SetVXbitrateSettings);
    connect(this, &ModuleSysSettings_View::Signal_EnableSamplingRate, m_ratesDialog,
            &VX_SamplingRates::Slot_EnableAllBtns);
    connect(this, &ModuleSysSettings_View::Signal_DisableSamplingRate, m_ratesDialog,
            &VX_SamplingRates::Slot_disableAllBtns);
}

void ModuleSysSettings_View::connectGateway()
{
    // Opening the panel connects.
    connect(m_ui->tvxGateway, &QPushButton::clicked, m_gateway, &GatewayZRT::connectToTcp);
    connect(m_ui->tvxGateway, &QPushButton::clicked, this, &ModuleSysSettings_View::showGateway);
    connect(m_gateway, &GatewayZRT::connectToGateway, this, &ModuleSysSettings_View::Signal_ZrtGateway);
    connect(m_gateway, &GatewayZRT::Signal_debugMessage, this, &ModuleSysSettings_View::debugMessage);
    connect(this, &ModuleSysSettings_View::Signal_loadGateway, m_gateway, &GatewayZRT::Slot_loadTcpAddr);
}

void ModuleSysSettings_View::setModulesNumber(int modules)
{
    m_ui->label_ModulesNumber->setText(QString::number(modules));
}

void ModuleSysSettings_View::setChannelsNumber(int channels)
{
    m_ui->label_ChannelsNumber->setText(QString::number(channels));
}

void ModuleSysSettings_View::setBitRate(const QString &text)
{
    m_ratesDialog->showCurrentRate(text);
    m_bitRateText = text;
    showRate(*m_ui->lineEdit_BitRate, text);
}

void ModuleSysSettings_View::setSamplingRate(const QString &text)
{
    m_samplingRateText = text;
    showRate(*m_ui->lineEdit_SamplingRate, text);
}

void ModuleSysSettings_View::setPoweringMode(const QString &text)
{
    m_ui->label_PoweringMode->setText(text);
}

void ModuleSysSettings_View::setDataTransmission(const QString &text)
{
    m_ui->label_DataTransmission->setText(text);
}

void ModuleSysSettings_View::bitRateExec(bool)
{
    showModal(*m_ratesDialog);
}

void ModuleSysSettings_View::showGateway()
{
    showModal(*m_gateway);
}

void ModuleSysSettings_View::setPreselExec()
{
    switchShunts(GroupAction::ActivatePreselected, wireCode(ChannelAction::PreselectedOnEverywhere));
}

void ModuleSysSettings_View::clearPreselExec()
{
    switchShunts(GroupAction::DeactivateShunts, wireCode(ChannelAction::ShuntsOffEverywhere));
}

void ModuleSysSettings_View::switchShunts(GroupAction shown, quint8 action)
{
    GroupCommand command;
    command.moduleType = wireCode(ModuleType::StrainGauge);
    command.command = static_cast<qint32>(shown);
    emit Signal_ldPresel(command);
    DatagramT1 request;
    request.module = kFirstModule;
    request.channel = kFirstChannel;
    request.data.selector = wireCode(ChannelSelector::Shunt);
    request.data.shuntState = action;
    emit Signal_SendChannelT1Data(QVariant::fromValue(request));
}
