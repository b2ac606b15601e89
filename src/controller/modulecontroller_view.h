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

    /// Shows or hides the power module's part. While it is hidden a spacer stands in its place, so that
    /// the controller's part keeps its width.
    void setPowerVisible(bool visible);

public slots:
    void on_pushButton_modType_clicked();
    void on_pushButton_powModType_clicked();

signals:
    /// The controller's button was clicked.
    void Signal_ControllerButton();
    /// The power module's button was clicked.
    void Signal_PowerButton();

private:
    std::unique_ptr<Ui::ModuleController_View> m_ui;
    QSpacerItem *m_powerSpacer = nullptr; ///< while the power part is hidden; owned by the row's layout
};
