#include "settings/portlister.h"

#include "base/gui/firstshow.h"
#include "base/gui/fonts.h"
#include "base/gui/heldkeys.h"
#include "base/timesource.h"
#include "settings/comconfigbox.h"
#include "settings/portgrid.h"

#include "ui_portlister.h"

#include <QDebug>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <algorithm>
#include <chrono>
#include <initializer_list>

namespace {

constexpr std::chrono::milliseconds kSurveyPeriod{2500};
constexpr QRgb kHeadingColour = qRgb(140, 1, 3);

const QLatin1String kVersion("V_01.00");
const QLatin1String kPortPrefix("COM");
const QLatin1String kFallbackPort("COM4"); ///< differs on purpose from the defaults of others
const QLatin1String kDefaultSerialConfig("115200,E,8,1");
const QLatin1String kDefaultAddress("192.168.0.62");
const QLatin1String kGatewayPort("7777"); ///< the only one that can be chosen

/// Lets 1 to 999 through although the field asks for 1 to 150; that is on purpose.
const QLatin1String kNumberPattern("^([1-9][0-9]{0,2}|150)$");

bool isKeyPress(const QEvent &event, std::initializer_list<Qt::Key> keys)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent &>(event).key();
    return std::any_of(keys.begin(), keys.end(), [key](Qt::Key wanted) { return key == wanted; });
}

} // namespace

PortLister::PortLister(TimeSource &time, const PortDirectory &ports, QWidget *parent)
    : QDialog(parent, Qt::WindowStaysOnTopHint)
    , m_ui(std::make_unique<Ui::PortLister>())
    , m_ports(ports)
{
    m_ui->setupUi(this);
    m_comConfigBox = new ComConfigBox(this);
    m_comConfigBox->setObjectName(QStringLiteral("comConfigBox"));
    makeConnections();
    setUpLabels();

    Timer *surveyTimer = time.createTimer(this);
    connect(surveyTimer, &Timer::timeout, this, &PortLister::Slot_AvailblePorts);
    surveyTimer->start(kSurveyPeriod);

    if (m_ui->portConfigBox->text().isEmpty()) {
        takeSerialDefaults();
        m_ui->portConfigBox->setText(m_settings.serialConfig);
    }
    m_ui->portBox->setText(kGatewayPort);
    m_ui->comBox->setValidator(
        new QRegularExpressionValidator(QRegularExpression(kNumberPattern), m_ui->comBox));
    m_ui->comBox->clear();
}

PortLister::~PortLister() = default;

void PortLister::makeConnections()
{
    connect(this, &PortLister::updateConfig, m_comConfigBox, &ComConfigBox::parseConfig);
    connect(m_comConfigBox, &ComConfigBox::setConfiguration, this, &PortLister::acceptConfig);
    connect(m_comConfigBox, &ComConfigBox::setDefaults, this, &PortLister::acceptDefaults);
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED // the agreed signal of the group; newer Qt calls it idClicked()
        connect(m_ui->settingTypeGroup, qOverload<int>(&QButtonGroup::buttonClicked), this,
                &PortLister::commntnChanged);
    QT_WARNING_POP
    connect(m_ui->cancelBtn, &QPushButton::clicked, this, &PortLister::hide);
    m_ui->portConfigBox->installEventFilter(this);
    m_ui->comBox->installEventFilter(this);
}

void PortLister::setUpLabels()
{
    const auto labels = findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    for (QLabel *label : labels)
        label->setFont(fonts::strong());
    QPalette heading = m_ui->secondLabel->palette();
    heading.setColor(QPalette::WindowText, QColor(kHeadingColour));
    m_ui->secondLabel->setPalette(heading);
    m_grid = std::make_unique<PortGrid>(*m_ui->portsWidget, *m_ui->portLables);
    beforeFirstShow(*this, [this] { m_grid->fitFonts(); });
}

QString PortLister::version() const
{
    return kVersion;
}

void PortLister::takeSerialDefaults()
{
    model_Namespace::setDefaultSerialParameters(m_settings);
    m_settings.serialConfig = kDefaultSerialConfig;
}

void PortLister::portConfig()
{
    m_comConfigBox->setModal(true);
    m_comConfigBox->exec(); // an event loop of its own, on purpose: this dialog outlives the box
}

void PortLister::takeSerialParameters(const model_Namespace::Settings &setting)
{
    m_settings.portName = setting.portName;
    m_settings.dataBits = setting.dataBits;
    m_settings.parity = setting.parity;
    m_settings.baudRate = setting.baudRate;
    m_settings.stopBits = setting.stopBits;
    m_settings.serialConfig = setting.serialConfig;
}

void PortLister::acceptConfig(model_Namespace::Settings &setting)
{
    m_ui->portConfigBox->setText(setting.serialConfig);
    takeSerialParameters(setting);
}

void PortLister::acceptDefaults(model_Namespace::Settings &setting)
{
    acceptConfig(setting);
    const QString number = QString(setting.portName).remove(kPortPrefix);
    if (!number.isEmpty() && number.front().isDigit())
        m_ui->comBox->setText(number);
}

void PortLister::commntnChanged(int id)
{
    Q_UNUSED(id)
    const bool isSerial = m_ui->checkBoxComprt->isChecked();
    m_ui->comBox->setEnabled(isSerial);
    m_ui->portConfigBox->setEnabled(isSerial);
    m_ui->ipAddrBox->setEnabled(!isSerial);
    m_ui->portBox->setEnabled(false);
}

void PortLister::Slot_AvailblePorts()
{
    m_grid->show(m_ports.availablePorts());
}

void PortLister::Slot_ComportFocus()
{
    m_ui->comBox->setFocus();
    qDebug() << "**Com Box activated";
}

void PortLister::on_openBtn_clicked()
{
    // The box "Save Settings" has no influence, on purpose: the choice is always saved.
    if (m_ui->checkBoxComprt->isChecked())
        confirmComPort();
    else
        confirmGateway();
}

void PortLister::confirmComPort()
{
    const QString number = m_ui->comBox->text();
    m_settings.portName = number.isEmpty() ? QString(kFallbackPort) : kPortPrefix + number.trimmed();
    if (m_ui->portConfigBox->text().isEmpty())
        takeSerialDefaults();
    m_settings.commType = Comm_Type::Serial;
    emit setSerialPortConfig(m_settings);
    hide();
}

void PortLister::confirmGateway()
{
    const QString address = m_ui->ipAddrBox->text();
    m_settings.ipAddress = address.isEmpty() ? QString(kDefaultAddress) : address;
    m_settings.tcpPort = kGatewayPort;
    m_settings.commType = Comm_Type::Ethernet;
    emit setNetworkConfig(m_settings);
    hide();
}

void PortLister::Slot_ActivateMode(Comm_Type mode)
{
    switch (mode) {
    case Comm_Type::Ethernet:
        m_ui->checkBoxGateway->setChecked(true);
        break;
    case Comm_Type::Serial:
        m_ui->checkBoxComprt->setChecked(true);
        break;
    case Comm_Type::None:
        break;
    }
    m_settings.commType = mode;
    emit Signal_ActivateMode(m_settings);
    // As if a box had been clicked, so that the controls follow.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED // the agreed signal of the group; newer Qt calls it idClicked()
        emit m_ui->settingTypeGroup->buttonClicked(0);
    QT_WARNING_POP
}

void PortLister::settingsServer(const QString &address, const QString &port)
{
    m_settings.ipAddress = address;
    m_settings.tcpPort = port;
    m_ui->ipAddrBox->setText(address);
    m_ui->portBox->setText(kGatewayPort);
}

bool PortLister::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->portConfigBox && m_ui->portConfigBox->isEnabled()) {
        if (event->type() == QEvent::MouseButtonPress || isKeyPress(*event, {Qt::Key_Space})) {
            if (!isKeyRepeat(*event))
                portConfig();
            return true;
        }
    }
    // Handled here and not by the field, which swallows the key while its text is not acceptable; and not
    // left to the default button, so that it confirms once.
    if (watched == m_ui->comBox && isKeyPress(*event, {Qt::Key_Return, Qt::Key_Enter})) {
        if (!isKeyRepeat(*event))
            m_ui->openBtn->click();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void PortLister::keyPressEvent(QKeyEvent *event)
{
    if (isKeyRepeat(*event))
        return;
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QDialog::keyPressEvent(event);
}
