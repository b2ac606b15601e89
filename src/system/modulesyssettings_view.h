#pragma once

#include "protocol/records/groupcommand.h"

#include <QFrame>
#include <QVariant>
#include <memory>

class GatewayZRT;
class TimeSource;
class VX_SamplingRates;

namespace Ui {
class ModuleSysSettings_View;
}

/// The panel above the module list: size of the system, powering, data rates, and the switches of the
/// preselected shunts of all channels.
class ModuleSysSettings_View : public QFrame
{
    Q_OBJECT

public:
    /// `time` must outlive the object.
    explicit ModuleSysSettings_View(TimeSource &time, QWidget *parent = nullptr);
    ~ModuleSysSettings_View() override;

    void setModulesNumber(int modules);
    void setChannelsNumber(int channels);

    /// Also marks the rate in the table.
    void setBitRate(const QString &text);
    void setSamplingRate(const QString &text);
    void setPoweringMode(const QString &text);
    void setDataTransmission(const QString &text);

public slots:
    /// Opens the table of data rates; does not block.
    void bitRateExec(bool checked);

    /// Opens the panel of the gateway; does not block.
    void showGateway();
    void setPreselExec();   ///< all preselected shunts of the chain on
    void clearPreselExec(); ///< all shunts of the chain off

signals:
    /// The user chose a data rate: kBit/s and number of channels.
    void samplingRates(QString bitRate, QString channels);
    void Signal_ZrtGateway(QString address, QString port);  ///< the gateway's address in use
    void Signal_loadGateway(QString address, QString port); ///< the gateway's address of the settings file
    void Signal_EnableSamplingRate();                       ///< to the table: a system was read
    void Signal_DisableSamplingRate();                      ///< to the table: there is no system
    void debugMessage(QString text);

    /// The preselected shunts of all channels were switched on or off; emitted before the request.
    void Signal_ldPresel(GroupCommand command);

    /// The one request that switches them in the device, a DatagramT1.
    void Signal_SendChannelT1Data(QVariant request);

private:
    void connectRates();
    void connectGateway();
    void switchShunts(GroupAction shown, quint8 action);

    std::unique_ptr<Ui::ModuleSysSettings_View> m_ui;
    VX_SamplingRates *m_ratesDialog; // these two are children of this panel
    GatewayZRT *m_gateway;
    QString m_bitRateText; // these two are kept as agreed; nothing reads them yet
    QString m_samplingRateText;
};
