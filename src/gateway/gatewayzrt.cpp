#include "gateway/gatewayzrt.h"

#include "base/gui/buttonkeys.h"
#include "base/gui/confirmation.h"
#include "base/gui/dialogs.h"
#include "base/gui/fonts.h"
#include "base/gui/heldkeys.h"
#include "base/gui/tabtochecked.h"
#include "gateway/changegatewaydialog.h"
#include "gateway/externipandport.h"
#include "gateway/focuskeeper.h"
#include "gateway/gatewaydialogue.h"
#include "gateway/gatewaylamp.h"
#include "gateway/gatewayrates.h"
#include "gateway/minmaxdialog.h"
#include "gateway/reportedvalues.h"
#include "modules/widgets/ignorewheel.h"
#include "ui_gatewayzrt.h"

#include <QCloseEvent>
#include <QDebug>
#include <QGuiApplication>
#include <utility>

namespace {

// Places in the modes' list that the panel itself has to know.
constexpr int kTcpServer = 3;
constexpr int kOff = 5;

// Places in the answer of the value dialog.
constexpr int kAnsweredLabel = 0;
constexpr int kAnsweredValue = 1;

// The label of the value dialog. It comes back with the answer and tells which value it is.
QString minimumLabel()
{
    return QStringLiteral("Set Minimum");
}

QString maximumLabel()
{
    return QStringLiteral("Set Maximum");
}

bool pressesButton(const QEvent &event)
{
    return event.type() == QEvent::KeyPress && !isKeyRepeat(event) &&
           isButtonKey(static_cast<const QKeyEvent &>(event));
}

} // namespace

GatewayZRT::GatewayZRT(TimeSource &time, std::unique_ptr<TcpComm> link, QWidget *parent)
    : QDialog(parent, dialogFlags())
    , m_ui(std::make_unique<Ui::GatewayZRT>())
    , m_dialogue(new GatewayDialogue(time, this))
    , m_minMaxDialog(new MinMaxDialog(this))
    , m_externalServerDialog(new ExternIpAndPort(this))
    , m_addressDialog(new ChangeGatewayDialog(this))
    , m_link(std::move(link))
{
    setFont(fonts::text());
    m_ui->setupUi(this);
    setObjectName(QStringLiteral("gateway"));
    useSmallLabels();
    connectLink();
    connectControls();
    connectDialogs();
    assignIDs();
    Slot_ModeIndexChange(m_ui->comboMode->currentIndex());
    setLinkState(LinkState::Closed);
}

GatewayZRT::~GatewayZRT()
{
    m_link->disconnect(this); // it may tell of its end while it dies
}

void GatewayZRT::useSmallLabels()
{
    const auto labels = findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->window() == this)
            label->setFont(fonts::small());
    }
}

void GatewayZRT::connectLink()
{
    connect(m_link.get(), &TcpComm::TcpConnected, this, &GatewayZRT::Slot_tcpConnected);
    connect(m_link.get(), &TcpComm::TcpDisconnectd, this, &GatewayZRT::Slot_tcpDisconnected);
    connect(m_link.get(), &TcpComm::messagePacket, this, &GatewayZRT::parseData);
    connect(this, &GatewayZRT::connectToGateway, m_link.get(), &TcpComm::Slot_connectToGateway);
    connect(this, &GatewayZRT::disconnctTCP, m_link.get(), &TcpComm::Slot_disconnectSocket);
    connect(m_dialogue, &GatewayDialogue::lineReady, m_link.get(), &TcpComm::Write);
    connect(m_dialogue, &GatewayDialogue::textToShow, m_ui->RxBox, &DialogueView::add);
    connect(m_dialogue, &GatewayDialogue::statusRead, this, &GatewayZRT::showStatus);
    connect(m_dialogue, &GatewayDialogue::addressChanged, this, &GatewayZRT::followAddress);
}

void GatewayZRT::connectControls()
{
    const auto picked = qOverload<int>(&QComboBox::activated); // by the operator only
    const auto changed = qOverload<int>(&QComboBox::currentIndexChanged);
    connect(m_ui->tcpConnect_Btn, &QPushButton::clicked, this, &GatewayZRT::handleTcpConnect);
    connect(m_ui->comboMode, picked, this, &GatewayZRT::modeComboBox);
    connect(m_ui->comboMode, changed, this, &GatewayZRT::Slot_ModeIndexChange);
    connect(m_ui->comboSimultn, picked, this, &GatewayZRT::simComboBox);
    connect(m_ui->comboActivCOM, picked, this, &GatewayZRT::Slot_indexActivCom);
    connect(m_ui->comboPTP, picked, this, &GatewayZRT::Slot_PTPControl);
    connect(m_ui->comboBoxDataPtcl, picked, this, &GatewayZRT::Slot_DataPtclChanged);
    connect(m_ui->setExtAddress, &QPushButton::clicked, this, &GatewayZRT::Slot_setExtServerAddr);
    connect(m_ui->ChangeGateway, &QPushButton::clicked, this, &GatewayZRT::Slot_ChangeGatewayAddr);
    connect(m_ui->rebootBtn, &QPushButton::clicked, this, &GatewayZRT::Slot_Reboot);
    connect(m_ui->restartBtn, &QPushButton::clicked, this, &GatewayZRT::Slot_Restart);
    m_ui->minBox->installEventFilter(this);
    m_ui->maxBox->installEventFilter(this);
    for (QComboBox *list :
         {m_ui->comboMode, m_ui->comboSimultn, m_ui->comboActivCOM, m_ui->comboPTP, m_ui->comboBoxDataPtcl})
        ignoreWheel(*list); // with the focus too: the list that was used last would take it
    for (QButtonGroup *group : {m_ui->endianGroup, m_ui->dataLengthGroup, m_ui->dataFormatGroup})
        tabToChecked(*group);
}

void GatewayZRT::connectDialogs()
{
    connect(this, &QDialog::rejected, this, &GatewayZRT::leaveConnection);
    // A window that is shown then and does not close would stop the end of the session.
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &GatewayZRT::hide, Qt::DirectConnection);
    connect(this, &GatewayZRT::Signal_displayMinMax, m_minMaxDialog, &MinMaxDialog::Slot_Execute);
    connect(m_minMaxDialog, &MinMaxDialog::Signal_setMinMaxValue, this, &GatewayZRT::Slot_DispatchMinMax);
    connect(this, &GatewayZRT::Signal_sendIpDetails, m_externalServerDialog,
            &ExternIpAndPort::Slot_displayDialog);
    connect(m_externalServerDialog, &ExternIpAndPort::Signal_setExtDetails, this,
            &GatewayZRT::Slot_ServDetails);
    connect(m_addressDialog, &ChangeGatewayDialog::gatewayIpAddress, this, &GatewayZRT::changeGatewayAddr);
}

void GatewayZRT::assignIDs()
{
    const auto clicked = qOverload<QAbstractButton *>(&QButtonGroup::buttonClicked); // by the operator only
    const auto cells = m_ui->rateTable->buttons();
    for (const QPushButton *cell : cells)
        connect(cell, &QPushButton::clicked, this, &GatewayZRT::handleBtnClick, Qt::UniqueConnection);
    connect(m_ui->endianGroup, clicked, this, &GatewayZRT::BtngrpEndian, Qt::UniqueConnection);
    connect(m_ui->dataLengthGroup, clicked, this, &GatewayZRT::BtngrpData, Qt::UniqueConnection);
    connect(m_ui->dataFormatGroup, clicked, this, &GatewayZRT::BtngrpDatPattern, Qt::UniqueConnection);
}

void GatewayZRT::setLinkState(LinkState state)
{
    m_linkState = state;
    m_ui->tcpConnect_Btn->setEnabled(state != LinkState::Connecting);
    if (state == LinkState::Connecting)
        return; // the rest follows the outcome
    const bool isConnected = state == LinkState::Connected;
    const gateway::FocusKeeper focus(*this, isConnected ? harmlessControl() : *m_ui->tcpConnect_Btn);
    m_ui->tcpConnect_Btn->setText(isConnected ? tr("Disconnect") : tr("Connect"));
    m_ui->ipAddrBox->setEnabled(!isConnected);
    m_ui->portNo->setEnabled(!isConnected);
    if (isConnected) {
        gateway::showLamp(*m_ui->tcpLed, gateway::LampColour::Green, tr("Connected"));
    } else {
        gateway::showLamp(*m_ui->tcpLed, gateway::LampColour::Gray, tr("Not connected"));
        gateway::showPcmSync(*m_ui->PCM_Led, gateway::PcmSync::Unknown);
    }
    enableSettings(isConnected);
}

QWidget &GatewayZRT::harmlessControl() const
{
    return *m_ui->RxBox;
}

void GatewayZRT::enableSettings(bool enabled)
{
    const QList<QWidget *> settings{m_ui->groupBoxEndian,     m_ui->groupBoxDataLength,
                                    m_ui->groupBoxDataFormat, m_ui->groupBoxTemperature,
                                    m_ui->comboSimultn,       m_ui->comboMode};
    for (QWidget *setting : settings)
        setting->setEnabled(enabled);
    if (enabled)
        Slot_EnableAllBtns();
    else
        Slot_disableAllBtns();
}

void GatewayZRT::Slot_EnableAllBtns()
{
    m_ui->rateTable->setAllEnabled(true);
    m_ui->rateTable->disable(gateway::deadCells());
}

void GatewayZRT::Slot_disableAllBtns()
{
    m_ui->rateTable->setAllEnabled(false);
    m_ui->rateTable->clearSelection();
}

void GatewayZRT::Slot_tcpConnected()
{
    // A retry connects to the last address, whatever the operator typed meanwhile.
    Slot_loadTcpAddr(m_link->address(), m_link->port());
    setLinkState(LinkState::Connected);
    repaint();
    m_dialogue->setClock();
}

void GatewayZRT::Slot_tcpDisconnected()
{
    m_dialogue->stopPolling();
    setLinkState(LinkState::Closed);
}

void GatewayZRT::handleTcpConnect()
{
    qDebug() << "HandleTcpConnect";
    if (m_ui->ipAddrBox->text().isEmpty() || m_ui->portNo->text().isEmpty())
        return;
    if (m_linkState == LinkState::Connected)
        leaveConnection();
    else
        requestConnection();
}

void GatewayZRT::connectToTcp()
{
    if (m_linkState == LinkState::Connected)
        qDebug() << "Already Connected";
    else
        requestConnection();
}

void GatewayZRT::requestConnection()
{
    const gateway::FocusKeeper focus(*this, harmlessControl());
    setLinkState(LinkState::Connecting);
    repaint(); // the attempt may take a moment
    emit connectToGateway(m_ui->ipAddrBox->text(), m_ui->portNo->text());
}

void GatewayZRT::leaveConnection()
{
    emit disconnctTCP();
    Slot_tcpDisconnected();
}

void GatewayZRT::followAddress(const QString &address)
{
    m_ui->ipAddrBox->setText(address);
    emit connectToGateway(address, m_ui->portNo->text());
}

void GatewayZRT::Slot_loadTcpAddr(QString address, QString port)
{
    if (!address.isEmpty())
        m_ui->ipAddrBox->setText(address);
    if (!port.isEmpty())
        m_ui->portNo->setText(port);
}

void GatewayZRT::closeEvent(QCloseEvent *event)
{
    event->ignore();
    hide();
}

void GatewayZRT::keyPressEvent(QKeyEvent *event)
{
    if (!isKeyRepeat(*event)) // the Escape key may have closed a box and may still be down
        QDialog::keyPressEvent(event);
}

void GatewayZRT::parseData(QByteArray &bytes)
{
    m_dialogue->takePiece(bytes);
}

// The order of the fields is agreed.
void GatewayZRT::showStatus(const gateway::Status &status)
{
    gateway::showText(*m_ui->GtwVersion, status.version);
    gateway::showChoice(status.sampleWidth, gateway::SampleWidth::Bits16, *m_ui->radio16Bit,
                        *m_ui->radio18Bit);
    gateway::showText(*m_ui->SerialNo, status.serialNumber);
    showReportedRate(status);
    gateway::showText(*m_ui->CoreTempBox, status.coreTemperature);
    gateway::showText(*m_ui->PCBTempBox, status.pcbTemperature);
    gateway::showText(*m_ui->extIpAddr, status.extAddress);
    gateway::showText(*m_ui->extPort, status.extPort);
    gateway::showChoice(status.byteOrder, gateway::ByteOrder::Big, *m_ui->radioBigEndn,
                        *m_ui->radioLitleEndn);
    gateway::showChoice(status.sampleFormat, gateway::SampleFormat::Unsigned, *m_ui->unsignedInt,
                        *m_ui->twoComp);
    gateway::showIndex(*m_ui->comboSimultn, status.simulation);
    gateway::showIndex(*m_ui->comboMode, status.mode);
    limitRates(status.highestRate);
    gateway::showText(*m_ui->unixEpochField, status.unixTime);
    gateway::showIndex(*m_ui->comboActivCOM, status.activeCom);
    if (status.pcmSync)
        gateway::showPcmSync(*m_ui->PCM_Led, *status.pcmSync);
    gateway::showIndex(*m_ui->comboPTP, status.ptpMode);
    gateway::showText(*m_ui->PTPStateLineEdit, status.ptpState);
    qDebug() << "From extract status";
    gateway::showText(*m_ui->accuracyPTP, status.ptpAccuracy);
    gateway::showText(*m_ui->minBox, status.minimumSamples);
    gateway::showText(*m_ui->maxBox, status.maximumSamples);
    gateway::showIndex(*m_ui->comboBoxDataPtcl, status.dataProtocol);
}

void GatewayZRT::showRate(const QString &bitRate, const QString &channels)
{
    QPushButton *cell = m_ui->rateTable->button({bitRate, channels});
    if (!cell || !cell->isEnabled())
        m_ui->rateTable->clearSelection(); // the marked one is not the present one any more
    else if (cell != m_ui->rateTable->selected())
        m_ui->rateTable->markSelected(cell); // which takes the focus
}

void GatewayZRT::showReportedRate(const gateway::Status &status)
{
    const RateChoice rate{status.bitRate, status.channelCount};
    // A cell that the limit of the same status kills is not marked before: the mark takes the focus.
    if (status.highestRate && gateway::isAbove(rate, *status.highestRate))
        m_ui->rateTable->clearSelection();
    else
        showRate(rate.bitRate, rate.channels);
}

void GatewayZRT::limitRates(const std::optional<double> &highestRate)
{
    if (!highestRate)
        return;
    const gateway::FocusKeeper focus(*this, harmlessControl());
    m_ui->rateTable->disable(gateway::cellsAbove(*highestRate));
}

void GatewayZRT::handleBtnClick()
{
    const QObject *cell = sender();
    const auto choice = cell ? RateTable::choiceOf(cell->objectName()) : std::nullopt;
    if (!choice)
        return;
    Slot_setBitRateSettings(choice->bitRate, choice->channels);
    emit Signal_SetVXsamplingRate(choice->bitRate, choice->channels);
}

void GatewayZRT::Slot_setBitRateSettings(QString bitRate, QString channels)
{
    showRate(bitRate, channels);
    m_dialogue->setDataRate(bitRate, channels);
}

void GatewayZRT::BtngrpEndian(QAbstractButton *btn)
{
    m_dialogue->setEndian(btn == m_ui->radioLitleEndn ? gateway::ByteOrder::Little : gateway::ByteOrder::Big);
}

void GatewayZRT::BtngrpData(QAbstractButton *btn)
{
    m_dialogue->setDataLength(btn == m_ui->radio16Bit ? gateway::SampleWidth::Bits16
                                                      : gateway::SampleWidth::Bits18);
}

void GatewayZRT::BtngrpDatPattern(QAbstractButton *btn)
{
    m_dialogue->setDataFormat(btn == m_ui->unsignedInt ? gateway::SampleFormat::Unsigned
                                                       : gateway::SampleFormat::TwosComplement);
}

void GatewayZRT::modeComboBox(int index)
{
    m_dialogue->setMode(index);
}

void GatewayZRT::simComboBox(int index)
{
    m_dialogue->setSimulation(index);
}

void GatewayZRT::Slot_indexActivCom(int index)
{
    m_dialogue->setActiveCom(index);
}

void GatewayZRT::Slot_PTPControl(int index)
{
    m_dialogue->setPtpMode(index);
}

void GatewayZRT::Slot_DataPtclChanged(int index)
{
    m_dialogue->setDataProtocol(index);
}

void GatewayZRT::Slot_ModeIndexChange(int index)
{
    if (index < 0 || index >= kOff)
        return; // without a mode the fields of the last one stay
    const bool isServer = index == kTcpServer;
    m_ui->labelextPort->setText(isServer ? tr("TCP Port") : tr("Ext Port"));
    m_ui->TcpPortDefault->setVisible(isServer);
    const QList<QWidget *> externalServer{m_ui->extIpAddr, m_ui->extPort, m_ui->labelExtServrIP,
                                          m_ui->setExtAddress};
    for (QWidget *part : externalServer)
        part->setVisible(!isServer);
}

void GatewayZRT::Slot_setExtServerAddr()
{
    if (m_ui->TcpPortDefault->isHidden())
        emit Signal_sendIpDetails(m_ui->extIpAddr->text(), m_ui->extPort->text());
    else if (m_ui->extPort->isHidden())
        emit Signal_sendIpDetails(m_ui->extIpAddr->text(), m_ui->TcpPortDefault->text());
}

void GatewayZRT::Slot_ServDetails(QString address, QString port)
{
    Slot_setExtServerCommand(address, port);
}

void GatewayZRT::Slot_setExtServerCommand(QString address, QString port)
{
    m_dialogue->setExternalServer(address, port);
}

bool GatewayZRT::eventFilter(QObject *watched, QEvent *event)
{
    const bool isMinimum = watched == m_ui->minBox;
    const bool isBox = isMinimum || watched == m_ui->maxBox;
    if (!isBox || !(event->type() == QEvent::MouseButtonPress || pressesButton(*event)))
        return QDialog::eventFilter(watched, event);
    const QString label = isMinimum ? minimumLabel() : maximumLabel();
    emit Signal_displayMinMax({label, static_cast<QLineEdit *>(watched)->text(), label});
    return true;
}

void GatewayZRT::Slot_DispatchMinMax(QStringList answer)
{
    const QString label = answer.value(kAnsweredLabel);
    const QString value = answer.value(kAnsweredValue);
    if (label == minimumLabel())
        m_dialogue->send(gateway::minimumSamples(value));
    else if (label == maximumLabel())
        m_dialogue->send(gateway::maximumSamples(value));
    else
        m_dialogue->send(gateway::emptyLine());
}

void GatewayZRT::Slot_Reboot()
{
    askBefore(gateway::reboot(), QStringLiteral("rebootConfirmation"), tr("Reboot remote device"),
              tr("Do you really want to proceed with rebooting the remote device ?   "));
}

void GatewayZRT::Slot_Restart()
{
    askBefore(gateway::restart(), QStringLiteral("restartConfirmation"), tr("Restart remote application"),
              tr("Do you really want to restart the remote application ?  "));
}

void GatewayZRT::askBefore(const gateway::Command &command, const QString &name, const QString &title,
                           const QString &question)
{
    confirm({name, title, question, QMessageBox::No, tr("Proceed"), tr("Abort")}, *this,
            [this, command] { m_dialogue->send(command); });
}

void GatewayZRT::Slot_ChangeGatewayAddr()
{
    const QString question = tr("This will result in changing the IP Adress for the Gateway permanently.\n"
                                "Are you sure you want to proceed further?");
    confirm({QStringLiteral("addressConfirmation"), m_ui->ChangeGateway->text(), question,
             QMessageBox::Cancel, QString(), QString()},
            *this, [this] { m_addressDialog->ask(); });
}

void GatewayZRT::changeGatewayAddr(QString address)
{
    m_dialogue->changeAddress(address);
}

void GatewayZRT::Slot_OneSecTmrHndlr()
{
    m_dialogue->requestStatus();
}

void GatewayZRT::Slot_sendEntr()
{
    m_dialogue->send(gateway::emptyLine());
}

void GatewayZRT::on_debugBtn_clicked(bool)
{
    m_dialogue->send(gateway::debug());
}
