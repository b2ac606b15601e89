#pragma once

#include <QFrame>
#include <memory>

namespace Ui {
class ModuleController_View;
}
class QSpacerItem;

/// The top row: the controller module on the left and, when there is one, the power module on the right.
class ModuleController_View : public QFrame
{
    Q_OBJECT

public:
    explicit ModuleController_View(int moduleNumber, QWidget *parent = nullptr);
    ~ModuleController_View() override;

    void setName(const QString &name);
    /// The serial number alone; it is shown behind "S/N ".
    void setSerial(const QString &serialNumber);
    void setHardware(const QString &hardware);
    void setFirmware1(const QString &firmware);
    void setFirmware2(const QString &firmware);
    void setVoltage(float volts);
    void setTemperature(float celsius);
    void setSelftest(quint8 code);

    void setPowerName(const QString &name);
    /// The serial number alone; it is shown behind "S/N ".
    void setPowerSerial(const QString &serialNumber);
    void setPowerHardware(const QString &hardware);
    void setPowerFirmware(const QString &firmware);
    void setPowerVoltage(float volts);
    void setPowerTemperature(float celsius);
    void setPowerSelftest(quint8 code);

    /// Enables the mode box and shows "fixed" for 0, else "auto".
    void SetOutputVoltageMode(int mode);

    /// Enables the box of the output voltage and shows the value, which is not reported back.
    void setOutputVoltageSetpoint(double volts);

    /// "red": not sent yet; "black": sent. Any other colour is ignored.
    void setSetpointColour(const QString &colour);

    /// Shows the name of a protection mode, or the code if it has no name.
    void setProtection(quint8 code);
    void setLoadCurrent(float amperes);
    void setInputVoltage(float volts);

    /// The upper end of the bar of the input voltage, in volts; at least 1.
    void setInputVoltageMaximum(float volts);

    /// One of the style sheets of barstyles.h.
    void setInputVoltageStyle(const QString &style);

    /// Marks the temperature of the power module as too high, or not.
    void setStatusFlag(bool set);

    /// Shows or hides the power module's part. While it is hidden a spacer stands in its place, so that
    /// the controller's part keeps its width.
    void setPowerVisible(bool visible);

public slots:
    void on_pushButton_modType_clicked();
    void on_pushButton_powModType_clicked();
    void Slot_OutputVoltageSetpointChanged(double volts);
    void Slot_OutputVoltageModeChanged(int index);

signals:
    /// The controller's button was clicked.
    void Signal_ControllerButton();
    /// The power module's button was clicked.
    void Signal_PowerButton();
    /// The user changed the output voltage, in volts.
    void Signal_OutputVoltageSetpointChanged(double volts);
    /// The user picked an entry of the mode box.
    void Signal_OutputVoltageModeChanged(int index);

private:
    std::unique_ptr<Ui::ModuleController_View> m_ui;
    QSpacerItem *m_powerSpacer = nullptr; ///< while the power part is hidden; owned by the row's layout
};
