#pragma once

#include "modules/common/channel.h"
#include "modules/common/moduleidentification.h"

#include <QFrame>
#include <array>
#include <memory>

namespace Ui {
class ModuleDevice_View;
}
class QLabel;
class QPushButton;

/// The row of an analog module: what it is, how it fares, and under the column headers the place of its
/// two channel strips.
class ModuleDevice_View : public QFrame
{
    Q_OBJECT

public:
    ModuleDevice_View(int moduleNumber, const ModuleIdentification &identification,
                      const ModuleMeasurement &measurement, int firstChannel, int secondChannel,
                      QWidget *parent = nullptr);
    ~ModuleDevice_View() override;

    /// Number on the channel's button; 256 reads as 0.
    int channelNumberA() const;
    int channelNumberB() const;

    /// Puts a strip of controls into the place of channel 1 or 2, where it belongs to the row. For any
    /// other channel nothing happens.
    void addChannel(int channel, QWidget *strip);

    void setDeviceName(const QString &name);
    void setSerialNumber(const QString &serialNumber);
    void setHardware(const QString &hardware);
    void setFirmware1(const QString &firmware);
    void setFirmware2(const QString &firmware);
    void setChannelLabels(const QString &labelA, const QString &labelB);
    void setChannelName(Channel channel, const QString &name);
    void setVoltage(float volts);
    void setTemperature(float celsius);
    void setSelftest(quint8 code);

    /// The button with the channel's number.
    QPushButton *channelButton(Channel channel) const { return widgetsOf(channel).button; }

    /// Headers of the first two columns, over both channels.
    void setInfoHeaders(const QString &first, const QString &second);

    /// Shows or hides the column headers of a channel. The level column stays hidden in any case.
    void setHeadersVisible(Channel channel, bool visible);

    /// Shows or hides the controls of a channel and their headers; the button and the name stay in place.
    void setControlsVisible(Channel channel, bool visible);

    /// Shows or hides all that belongs to a channel: button, name, headers and controls.
    void setChannelVisible(Channel channel, bool visible);

public slots:
    void on_pushButton_DeviceButton_clicked();
    void on_pushButton_ChA_clicked();
    void on_pushButton_ChB_clicked();

    /// Fits the name and the headers of channel 1 or 2 to the function with the code `moduleName`.
    void Slot_ChangeLabels(int ch, uchar moduleName);

signals:
    /// The module's button was clicked.
    void Signal_DeviceButton();

    /// A channel's button was clicked: name of this channel, name of the other one, text of the button.
    void Signal_Channelbutton(QStringList channel);

    /// Goes to Slot_ChangeLabels(). Emitted by the controller of a module whose channels have functions.
    void Signal_ChangeLabels(int ch, uchar moduleName);

private:
    /// The widgets of one channel.
    struct ChannelWidgets
    {
        QPushButton *button = nullptr;
        QLabel *name = nullptr;
        QWidget *strip = nullptr; ///< holds the channel's controls
        QLabel *channel = nullptr;
        QLabel *firstInfo = nullptr;
        QLabel *secondInfo = nullptr;
        QLabel *shunt = nullptr;
        QLabel *manualOffset = nullptr;
        QLabel *filter = nullptr;
        QLabel *revPol = nullptr;
        QLabel *level = nullptr;
    };

    void connectButtons();
    void collectWidgets();
    void nameControls();
    void showIdentification(const ModuleIdentification &identification);
    void applyHeaderForm(HeaderForm form);
    void markFunctionButtons();
    void applyNameFont();
    void emitChannelButton(const ChannelWidgets &clicked, const ChannelWidgets &other);
    const ChannelWidgets &widgetsOf(Channel channel) const;

    std::unique_ptr<Ui::ModuleDevice_View> m_ui;
    std::array<ChannelWidgets, 2> m_channels; ///< A and B
};
