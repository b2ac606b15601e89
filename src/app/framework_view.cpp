#include "app/framework_view.h"

#include "app/connectionbar.h"
#include "app/dynamicmodulesframe_view.h"
#include "app/lamps.h"
#include "app/productversion.h"
#include "app/reservedkeys.h"
#include "app/resources.h"
#include "app/statusline.h"
#include "app/versionnotice.h"
#include "app/warningbox.h"
#include "base/gui/firstshow.h"
#include "base/timesource.h"
#include "base/variantcast.h"
#include "firmware/firmwareupdate.h"
#include "help/helpengine.h"
#include "help/helpwindow.h"
#include "modules/common/widgetstyle.h"
#include "protocol/records/systemstatus.h"
#include "settings/portlister.h"
#include "ui_framework_view.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDebug>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QToolTip>
#include <algorithm>

namespace {

constexpr int kMessageTicks = 7;
constexpr int kInfoTicks = 10;
constexpr float kBusyStepSeconds = 0.5F;
constexpr int kLongestVersion = 200; // letters; more than the notice has room for

constexpr char kOrganisation[] = "ZRT";
constexpr char kApplication[] = "VXConfig";
constexpr char kGeometryKey[] = "geometry";
constexpr char kWindowStateKey[] = "windowState";
constexpr char kNoticeStyle[] = "QLabel { color : red; }";

/// The space bar on a button that has the focus. Not the return key: the dialog that opens takes it for a
/// confirmation.
bool isActivationByKey(const QEvent &event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto &press = static_cast<const QKeyEvent &>(event);
    return !press.isAutoRepeat() && press.key() == Qt::Key_Space;
}

/// Shows the window, also if it is minimized or stands behind another one.
void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

Framework_View::Framework_View(TimeSource &time, const PortDirectory &ports, const DisplayPeriods &periods,
                               QWidget *parent)
    : QMainWindow(parent)
    , m_time(time)
    , m_periods(periods)
    , m_portLister(new PortLister(time, ports, this))
    , m_firmwareUpdate(new FirmwareUpdate(time, this))
    , m_ui(std::make_unique<Ui::Framework_View>())
    , m_helpWindow(new HelpWindow(this))
    , m_busyTimer(time.createTimer(this))
    , m_clockTimer(time.createTimer(this))
    , m_rxTimer(time.createTimer(this))
    , m_txTimer(time.createTimer(this))
    , m_helpEngine(new HelpEngine(helpCollectionFile(QCoreApplication::applicationDirPath()), this))
    , m_warningBox(new WarningBox(this))
    , m_longPressTimer(time.createTimer(this))
    , m_helpPress(LongPress::Limits{m_periods.helpPress, m_periods.resetPress})
{
    setUpForm();
    restoreWindowState();
    createConnections();
    createShortcuts();
    m_clockTimer->start(m_periods.clock);
}

Framework_View::~Framework_View()
{
    // A held button loses the focus when the window goes, and would tell half an object of its release.
    m_bar->helpButton->disconnect(this);
}

void Framework_View::setUpForm()
{
    m_ui->setupUi(this);
    setWindowTitle(tr("Torvex Configurator ") + QStringLiteral("(V%1)").arg(productVersion()));
    setWindowIcon(smallApplicationIcon());
    afterFirstPaint(*this, [this] { setWindowIcon(applicationIcon()); });
    m_bar = std::make_unique<ConnectionBar>(m_ui->centralWidget);
    m_statusLine = std::make_unique<StatusLine>(m_ui->statusBar, m_time);
    SetOfflineStatus();
    m_ui->verticalLayout->addLayout(m_bar->topLayout);
}

void Framework_View::createConnections()
{
    for (QWidget *opener : openers())
        opener->installEventFilter(this);
    connect(m_portLister, &PortLister::setSerialPortConfig, this, &Framework_View::handleCommSettings);
    connect(m_portLister, &PortLister::setNetworkConfig, this, &Framework_View::handleNetworkSettings);
    connect(m_portLister, &PortLister::Signal_ActivateMode, this, &Framework_View::updateComLabel);
    connect(m_clockTimer, &Timer::timeout, this, &Framework_View::mainClockHandlr);
    connect(m_busyTimer, &Timer::timeout, this, &Framework_View::tmrHndlr);
    connect(m_rxTimer, &Timer::timeout, this, &Framework_View::RxTmrSlot);
    connect(m_txTimer, &Timer::timeout, this, &Framework_View::TxTmrSlot);
    connect(m_longPressTimer, &Timer::timeout, this, &Framework_View::longPressTmrSlot);
    connect(m_bar->systemReportButton, &QPushButton::clicked, this, &Framework_View::Signal_SystemList);
    connect(m_bar->helpButton, &QPushButton::pressed, this, &Framework_View::onHelpPressed);
    connect(m_bar->helpButton, &QPushButton::released, this, &Framework_View::onHelpReleased);
    connectFirmwareUpdate();
    connect(m_helpWindow, &HelpWindow::manualRequested, this, &Framework_View::showManual);
}

void Framework_View::connectFirmwareUpdate()
{
    connect(m_firmwareUpdate, &FirmwareUpdate::Signal_commandMsg, this,
            &Framework_View::Signal_FirmwareCommand);
    connect(m_firmwareUpdate, &FirmwareUpdate::Signal_AbortFrmwr, this, &Framework_View::Signal_AbrtFrmw);
    connect(m_firmwareUpdate, &FirmwareUpdate::Signal_StartProcedure, this,
            &Framework_View::Signal_StartFPGAprocess);
    connect(m_firmwareUpdate, &FirmwareUpdate::Signal_SaveFile, this, &Framework_View::Signal_FirmwrFilePath);
    connect(this, &Framework_View::Signal_FastSystemStatus, m_firmwareUpdate,
            &FirmwareUpdate::Signal_IncrementCntr);
}

void Framework_View::createShortcuts()
{
    const auto shortcut = [this](const QKeySequence &keys, auto slot) {
        auto *made = new QShortcut(keys, this);
        made->setContext(Qt::ApplicationShortcut); // from the help and the firmware window too
        connect(made, &QShortcut::activated, this, slot);
    };
    shortcut(QKeySequence::HelpContents, &Framework_View::showManual);
    const QKeySequence updateKeys(QStringLiteral("Ctrl+U"));
    shortcut(updateKeys, &Framework_View::Slot_FirmwareUpdate);
    new ReservedKeys(updateKeys, this);
}

std::array<QWidget *, 3> Framework_View::openers() const
{
    return {m_bar->comEdit, m_bar->ipEdit, m_bar->configButton};
}

void Framework_View::showMessage(const QString &text)
{
    m_statusLine->showPlain(text, kMessageTicks);
}

void Framework_View::showInfo(const QString &text)
{
    showTimed(text, kInfoTicks);
}

void Framework_View::showTimed(const QString &text, int ticks)
{
    m_statusLine->show(text, ticks, StatusLine::Colour::Black);
}

void Framework_View::showColoured(const QString &text, int ticks, int red)
{
    m_statusLine->show(text, ticks, red != 0 ? StatusLine::Colour::Red : StatusLine::Colour::Black);
}

void Framework_View::showWarning(const QString &text)
{
    m_warningBox->showWarning(text);
}

void Framework_View::showHwDelay(int ms)
{
    m_statusLine->showPassing(QStringLiteral("HW delay response : %1").arg(ms), m_periods.hwDelayMessage);
}

void Framework_View::setConnectionLamp(ConnectionState state)
{
    switch (state) {
    case ConnectionState::SystemKnown:
        setLampColour(m_bar->connectionLamp, LampColour::PaleGreen);
        m_bar->statusBox->show();
        return;
    case ConnectionState::NoLink:
        setLampColour(m_bar->connectionLamp, LampColour::Gray);
        return;
    case ConnectionState::LinkOpen:
        setLampColour(m_bar->connectionLamp, LampColour::Yellow);
        SetOfflineStatus();
        return;
    }
    m_bar->connectionLamp->setPalette(palette());
}

void Framework_View::addSystemPanel(QWidget *panel)
{
    m_systemPanel = panel;
    m_ui->verticalLayout->addWidget(panel);
}

void Framework_View::addModuleFrame(DynamicModulesFrame_View *frame)
{
    m_modulesFrame = frame;
    m_ui->verticalLayout->addWidget(frame, 1); // the list takes all height that the rest leaves
}

void Framework_View::addController(QWidget *controller)
{
    m_modulesFrame->addController(controller);
}

void Framework_View::addModule(QWidget *module, int row)
{
    m_modulesFrame->addModule(module, row);
}

void Framework_View::removeModule(QWidget *module)
{
    m_modulesFrame->removeModule(module);
}

bool Framework_View::eventFilter(QObject *watched, QEvent *event)
{
    const auto widgets = openers();
    const bool isOpener = std::find(widgets.begin(), widgets.end(), watched) != widgets.end();
    const bool isMousePress = isOpener && event->type() == QEvent::MouseButtonPress;
    if (isMousePress || (watched == m_bar->configButton && isActivationByKey(*event)))
        openPortLister();
    return QMainWindow::eventFilter(watched, event);
}

void Framework_View::openPortLister()
{
    if (m_portLister->isVisible())
        return;
    m_portLister->setModal(true);
    m_portLister->Slot_AvailblePorts(); // the next survey may be seconds away
    m_portLister->Slot_ComportFocus();
    m_portLister->exec(); // an event loop of its own, on purpose: this window outlives the dialog
    // The dialog swallowed the release of the press that opened it; the button hears of the press only now.
    QMetaObject::invokeMethod(
        m_bar->configButton, [button = m_bar->configButton] { button->setDown(false); },
        Qt::QueuedConnection);
}

void Framework_View::on_actionLoad_Configuration_from_File_triggered()
{
    emit Signal_LoadCsvFile();
}

void Framework_View::handleCommSettings(model_Namespace::Settings &settings)
{
    emit Signal_SelectedComPort(settings);
    m_bar->comEdit->setEnabled(true);
    m_bar->comEdit->setText(settings.portName);
    m_bar->ipEdit->setEnabled(false);
}

void Framework_View::handleNetworkSettings(model_Namespace::Settings &settings)
{
    if (!settings.ipAddress.isEmpty()) {
        m_bar->ipEdit->setEnabled(true);
        m_bar->ipEdit->setText(settings.ipAddress);
        m_bar->comEdit->setEnabled(false);
    }
    emit Signal_ServerGateway(settings);
}

void Framework_View::updateComLabel(model_Namespace::Settings settings)
{
    m_bar->comEdit->setText(settings.portName);
    switch (settings.commType) {
    case Comm_Type::Ethernet:
        m_bar->comEdit->setEnabled(false);
        break;
    case Comm_Type::Serial:
        m_bar->ipEdit->setEnabled(false);
        break;
    case Comm_Type::None:
        break;
    }
}

void Framework_View::handleServerSettings(QString address, QString port)
{
    Q_UNUSED(port) // shown nowhere
    if (!address.isEmpty())
        m_bar->ipEdit->setText(address);
}

void Framework_View::Slot_FirmwareUpdate()
{
    bringToFront(*m_firmwareUpdate);
    m_firmwareUpdate->beginOperation();
}

void Framework_View::displayHelp()
{
    m_helpWindow->show();
}

void Framework_View::showManual()
{
    bringToFront(*m_helpEngine);
}

void Framework_View::SetBusyStatus()
{
    m_busySeconds += kBusyStepSeconds;
    showBusySeconds();
    setLampColour(m_bar->statusBox, LampColour::Yellow);
    if (!m_busyTimer->isActive())
        m_busyTimer->start(m_periods.busyStep);
}

void Framework_View::tmrHndlr()
{
    if (m_busySeconds <= 0)
        return; // the timer keeps running on purpose; the next "ready" stops it
    m_busySeconds -= kBusyStepSeconds;
    showBusySeconds();
}

void Framework_View::showBusySeconds()
{
    m_bar->statusBox->setText(QString::asprintf("%.2f s", static_cast<double>(m_busySeconds)));
}

void Framework_View::SetOfflineStatus()
{
    m_bar->statusBox->setText(QStringLiteral("OFFLINE"));
    setLampColour(m_bar->statusBox, LampColour::Yellow);
}

void Framework_View::SetAvailableStatus()
{
    m_busySeconds = 0;
    m_busyTimer->stop();
    m_bar->statusBox->setText(QStringLiteral("READY"));
    setLampColour(m_bar->statusBox, LampColour::Green);
}

void Framework_View::Slot_SystemStatus(QVariant systemStatus)
{
    const auto status = recordFromVariant<System_Status>(systemStatus);
    m_totalModules = static_cast<quint16>(status.nModules + 1); // the controller counts as one
    m_bar->statusBox->setText(QStringLiteral("0 / %1 ").arg(m_totalModules));
    setLampColour(m_bar->statusBox, LampColour::Yellow);
}

void Framework_View::Slot_ModulesRead(ushort count)
{
    m_bar->statusBox->setText(QStringLiteral("%1 / %2 ").arg(count).arg(m_totalModules));
}

void Framework_View::UpdateVersion(QString remote)
{
    setStyleIfChanged(*m_bar->updateLabel, QLatin1String(kNoticeStyle));
    if (!isNewVersionNoticeDue(productVersion(), remote))
        return;
    const QString shown = remote.left(kLongestVersion); // a label of a megabyte would take seconds to paint
    m_bar->updateLabel->setText(tr("Please download new version ") + shown);
    m_bar->updateLabel->show();
}

void Framework_View::setRxLed()
{
    light(m_bar->rxLamp, m_rxTimer);
}

void Framework_View::setTxLed()
{
    light(m_bar->txLamp, m_txTimer);
}

void Framework_View::RxTmrSlot()
{
    darken(m_bar->rxLamp, m_rxTimer);
}

void Framework_View::TxTmrSlot()
{
    darken(m_bar->txLamp, m_txTimer);
}

void Framework_View::light(QLineEdit *lamp, Timer *timer)
{
    setLampColour(lamp, LampColour::PaleGreen);
    timer->start(m_periods.lamp);
}

void Framework_View::darken(QLineEdit *lamp, Timer *timer)
{
    setLampColour(lamp, LampColour::Dark);
    timer->stop();
}

void Framework_View::onHelpPressed()
{
    qDebug() << "***Help Pressed";
    m_helpPress.begin(m_time.now());
    m_longPressTimer->start(m_periods.longPressPoll);
}

void Framework_View::longPressTmrSlot()
{
    if (!m_helpPress.isLong(m_time.now()))
        return;
    QToolTip::showText(QCursor::pos(), tr("System Reset Sent"));
    emit Signal_SystemReset();
    m_longPressTimer->stop();
}

void Framework_View::onHelpReleased()
{
    qDebug() << "***Help released";
    if (m_helpPress.isClick(m_time.now()))
        displayHelp();
    m_longPressTimer->stop();
}

void Framework_View::mainClockHandlr()
{
    m_statusLine->tick(m_time.now());
}

void Framework_View::restoreWindowState()
{
    const QSettings settings(QSettings::defaultFormat(), QSettings::UserScope, kOrganisation, kApplication);
    restoreGeometry(settings.value(kGeometryKey).toByteArray());
    restoreState(settings.value(kWindowStateKey).toByteArray());
}

void Framework_View::saveWindowState() const
{
    QSettings settings(QSettings::defaultFormat(), QSettings::UserScope, kOrganisation, kApplication);
    settings.setValue(kGeometryKey, saveGeometry());
    settings.setValue(kWindowStateKey, saveState());
}

void Framework_View::closeEvent(QCloseEvent *event)
{
    saveWindowState();
    m_helpWindow->close();
    m_firmwareUpdate->close();
    m_warningBox->close();
    m_helpEngine->close();
    m_portLister->close();
    QMainWindow::closeEvent(event);
}
