#include "modules/moduledevice_view.h"

#include "base/gui/fonts.h"
#include "modules/common/channelfunction.h"
#include "modules/common/displayformat.h"
#include "modules/common/headertexts.h"
#include "modules/common/rowcolumns.h"
#include "modules/common/widgetstyle.h"
#include "ui_moduledevice_view.h"

namespace {

constexpr int kChannelWrap = 256; // a channel button with this number stands for channel 0

QString functionButtonStyle()
{
    return QStringLiteral("background-image: url(:/pictures/analog_button.png);"
                          "QToolTip { color: #000000; border: 0px; }");
}

QString functionButtonToolTip()
{
    return QStringLiteral("\nClick this button to change the channel function");
}

int channelNumber(const QPushButton &button)
{
    const int number = button.text().toInt();
    return number == kChannelWrap ? 0 : number;
}

void keepPlaceWhenHidden(QWidget &widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

void place(QLabel *header, const rowcolumns::Column &column)
{
    header->setGeometry(column.left, 0, column.width, rowcolumns::kHeaderHeight);
}

} // namespace

ModuleDevice_View::ModuleDevice_View(int moduleNumber, const ModuleIdentification &identification,
                                     const ModuleMeasurement &measurement, int firstChannel,
                                     int secondChannel, QWidget *parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::ModuleDevice_View>())
{
    setFontIfChanged(*this, fonts::text());
    m_ui->setupUi(this);
    connectButtons();
    collectWidgets();
    m_ui->pushButton_DeviceButton->setText(QString::number(moduleNumber));
    m_ui->pushButton_ChA->setText(QString::number(firstChannel));
    m_ui->pushButton_ChB->setText(QString::number(secondChannel));
    nameControls();
    showIdentification(identification);
    applyHeaderForm(identification.headerForm);
    setVoltage(measurement.voltage);
    setTemperature(measurement.temperature);
    setSelftest(measurement.selftest);
    connect(this, &ModuleDevice_View::Signal_ChangeLabels, this, &ModuleDevice_View::Slot_ChangeLabels);
}

ModuleDevice_View::~ModuleDevice_View() = default;

void ModuleDevice_View::connectButtons()
{
    using Own = ModuleDevice_View;
    connect(m_ui->pushButton_DeviceButton, &QPushButton::clicked, this,
            &Own::on_pushButton_DeviceButton_clicked);
    connect(m_ui->pushButton_ChA, &QPushButton::clicked, this, &Own::on_pushButton_ChA_clicked);
    connect(m_ui->pushButton_ChB, &QPushButton::clicked, this, &Own::on_pushButton_ChB_clicked);
}

void ModuleDevice_View::collectWidgets()
{
    const auto &ui = *m_ui;
    m_channels[0] = {
        ui.pushButton_ChA,        ui.ChDeviceLabel_A,        ui.strip_A,     ui.label_Channel,
        ui.label_FirstInfoDevice, ui.label_SecondInfoDevice, ui.label_Shunt, ui.label_ManualOffset,
        ui.label_Filter,          ui.label_RevPol,           ui.label_Level};
    m_channels[1] = {
        ui.pushButton_ChB,          ui.ChDeviceLabel_B,          ui.strip_B,       ui.label_Channel_2,
        ui.label_FirstInfoDevice_2, ui.label_SecondInfoDevice_2, ui.label_Shunt_2, ui.label_ManualOffset_2,
        ui.label_Filter_2,          ui.label_RevPol_2,           ui.label_Level_2};
}

void ModuleDevice_View::nameControls()
{
    const QString module = m_ui->pushButton_DeviceButton->text();
    m_ui->pushButton_DeviceButton->setAccessibleName(QStringLiteral("Module %1").arg(module));
    for (const ChannelWidgets &widgets : m_channels)
        widgets.button->setAccessibleName(QStringLiteral("Channel %1").arg(widgets.button->text()));
}

void ModuleDevice_View::showIdentification(const ModuleIdentification &identification)
{
    setDeviceName(identification.name);
    setSerialNumber(identification.serialNumber);
    setHardware(identification.hardware);
    setFirmware1(identification.firmware1);
    setFirmware2(identification.firmware2);
    setChannelLabels(identification.name, identification.name);
}

void ModuleDevice_View::applyHeaderForm(HeaderForm form)
{
    const HeaderTexts texts = headerTexts(form, m_ui->label_DeviceName->text());
    const rowcolumns::Columns columns = rowcolumns::columns(form);
    for (const ChannelWidgets &widgets : m_channels) {
        const auto show = [](QLabel *header, const QString &text, const rowcolumns::Column &column) {
            header->setText(text);
            place(header, column);
        };
        widgets.channel->setText(texts.channel);
        show(widgets.firstInfo, texts.firstInfo, columns.firstInfo);
        show(widgets.secondInfo, texts.secondInfo, columns.secondInfo);
        show(widgets.manualOffset, texts.manualOffset, columns.manualOffset);
        show(widgets.shunt, texts.shunt, columns.shunt);
        show(widgets.filter, texts.filter, columns.filter);
        show(widgets.revPol, texts.revPol, columns.revPol);
        widgets.level->setText(texts.level);
        widgets.level->hide();
        keepPlaceWhenHidden(*widgets.channel);
        keepPlaceWhenHidden(*widgets.strip);
    }
    const HeaderTraits traits = headerTraits(form);
    if (!traits.separators) {
        for (QWidget *line : {m_ui->vline_1, m_ui->vline_2}) {
            keepPlaceWhenHidden(*line);
            line->hide();
        }
    }
    if (traits.channelsHaveFunctions)
        markFunctionButtons();
}

void ModuleDevice_View::markFunctionButtons()
{
    for (const ChannelWidgets &widgets : m_channels) {
        setStyleIfChanged(*widgets.button, functionButtonStyle());
        widgets.button->setToolTip(functionButtonToolTip());
    }
}

const ModuleDevice_View::ChannelWidgets &ModuleDevice_View::widgetsOf(Channel channel) const
{
    return m_channels[indexOf(channel)];
}

int ModuleDevice_View::channelNumberA() const
{
    return channelNumber(*m_ui->pushButton_ChA);
}

int ModuleDevice_View::channelNumberB() const
{
    return channelNumber(*m_ui->pushButton_ChB);
}

void ModuleDevice_View::addChannel(int channel, QWidget *strip)
{
    if (channel == kChannelA)
        m_ui->horizontalLayout_10->addWidget(strip);
    else if (channel == kChannelB)
        m_ui->horizontalLayout_12->addWidget(strip);
}

void ModuleDevice_View::setDeviceName(const QString &name)
{
    m_ui->label_DeviceName->setText(name);
}

void ModuleDevice_View::setSerialNumber(const QString &serialNumber)
{
    m_ui->label_SnVersion->setText(serialNumber);
}

void ModuleDevice_View::setHardware(const QString &hardware)
{
    m_ui->label_HwVersion->setText(hardware);
}

void ModuleDevice_View::setFirmware1(const QString &firmware)
{
    m_ui->label_SwVersion->setText(firmware);
}

void ModuleDevice_View::setFirmware2(const QString &firmware)
{
    m_ui->label_FpgaVersn->setText(firmware);
}

void ModuleDevice_View::setChannelLabels(const QString &labelA, const QString &labelB)
{
    m_ui->ChDeviceLabel_A->setText(labelA);
    m_ui->ChDeviceLabel_B->setText(labelB);
    applyNameFont();
}

void ModuleDevice_View::setChannelName(Channel channel, const QString &name)
{
    widgetsOf(channel).name->setText(name);
}

void ModuleDevice_View::applyNameFont()
{
    const QFont font = fonts::strong();
    for (QLabel *label : {m_ui->ChDeviceLabel_A, m_ui->ChDeviceLabel_B, m_ui->label_DeviceName})
        label->setFont(font);
}

void ModuleDevice_View::setVoltage(float volts)
{
    m_ui->label_Voltage->setText(displayformat::voltage(volts));
}

void ModuleDevice_View::setTemperature(float celsius)
{
    m_ui->label_Temperature->setText(displayformat::temperature(celsius));
}

void ModuleDevice_View::setSelftest(quint8 code)
{
    m_ui->label_SelftestSt->setText(displayformat::selftest(code));
}

void ModuleDevice_View::setInfoHeaders(const QString &first, const QString &second)
{
    for (const ChannelWidgets &widgets : m_channels) {
        widgets.firstInfo->setText(first);
        widgets.secondInfo->setText(second);
    }
}

void ModuleDevice_View::setHeadersVisible(Channel channel, bool visible)
{
    const ChannelWidgets &widgets = widgetsOf(channel);
    for (QLabel *header : {widgets.channel, widgets.firstInfo, widgets.secondInfo, widgets.shunt,
                           widgets.manualOffset, widgets.filter, widgets.revPol})
        header->setVisible(visible);
}

void ModuleDevice_View::setControlsVisible(Channel channel, bool visible)
{
    widgetsOf(channel).strip->setVisible(visible);
    setHeadersVisible(channel, visible);
}

void ModuleDevice_View::setChannelVisible(Channel channel, bool visible)
{
    const ChannelWidgets &widgets = widgetsOf(channel);
    widgets.button->setVisible(visible);
    widgets.name->setVisible(visible);
    setControlsVisible(channel, visible);
}

void ModuleDevice_View::on_pushButton_DeviceButton_clicked()
{
    emit Signal_DeviceButton();
}

void ModuleDevice_View::on_pushButton_ChA_clicked()
{
    emitChannelButton(m_channels[0], m_channels[1]);
}

void ModuleDevice_View::on_pushButton_ChB_clicked()
{
    emitChannelButton(m_channels[1], m_channels[0]);
}

void ModuleDevice_View::emitChannelButton(const ChannelWidgets &clicked, const ChannelWidgets &other)
{
    emit Signal_Channelbutton({clicked.name->text(), other.name->text(), clicked.button->text()});
}

void ModuleDevice_View::Slot_ChangeLabels(int ch, uchar moduleName)
{
    const auto channel = channelOf(ch);
    if (!channel)
        return;
    const ChannelWidgets &widgets = widgetsOf(*channel);
    const bool strainGauge = moduleName == wireCode(ModuleType::StrainGauge);
    setChannelName(*channel, functionName(moduleName));
    widgets.firstInfo->setText(strainGauge ? infoheaders::bridgeType() : infoheaders::input());
    widgets.secondInfo->setText(strainGauge ? infoheaders::bridgeRange() : infoheaders::voltageRange());
    if (strainGauge)
        widgets.secondInfo->show();
    widgets.manualOffset->setVisible(strainGauge);
    widgets.shunt->setVisible(strainGauge);
    applyNameFont();
}
