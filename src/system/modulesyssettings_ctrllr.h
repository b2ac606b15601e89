#pragma once

#include "protocol/records/groupcommand.h"
#include "system/reportedtext.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

class ModuleSysSettings_View;
class TimeSource;

/// What the panel of the system settings shows.
struct SystemSettings
{
    int modules = 0;
    int channels = 0;
    QString bitRate;
    QString samplingRate;
    QString poweringMode;
    QString dataTransmission;
};

/// Drives the panel of the system settings: keeps its values and passes its wishes on.
class ModuleSysSettings_Ctrllr : public QObject
{
    Q_OBJECT

public:
    /// Shows `settings` at once. `time` must outlive the object.
    ModuleSysSettings_Ctrllr(const SystemSettings &settings, TimeSource &time, QObject *parent = nullptr);
    ~ModuleSysSettings_Ctrllr() override;

    /// The panel; this object owns it. Null once its window took it along.
    ModuleSysSettings_View *GetView();

    const SystemSettings &data() const { return m_data; }

    void setModules(int modules);
    void setChannels(int channels);
    void setBitRate(const QString &text);
    void setSamplingRate(const QString &text);
    void setPoweringMode(const QString &text);
    void setDataTransmission(const QString &text);

signals:
    void Signal_HwResponseDelay(int ms); ///< never emitted; part of the interface

    /// The user chose a data rate: kBit/s and number of channels.
    void Signal_SamplingRates(QString bitRate, QString channels);
    void Signal_ZRTGateway(QString address, QString port);  ///< the gateway's address in use
    void Signal_LoadGateway(QString address, QString port); ///< the gateway's address of the settings file
    void Signal_EnableSamplingRate();                       ///< to the panel: a system was read
    void Signal_DisableSamplingRate();                      ///< to the panel: there is no system
    void debugMessage(QString text);

    /// The preselected shunts of all channels were switched; rows with shunts show it.
    void Signal_ldPresel(GroupCommand command);

    /// The one request that switches them in the device, a DatagramT1.
    void Signal_SendChannelT1Data(QVariant request);

private:
    void connectView();

    SystemSettings m_data;
    QPointer<ModuleSysSettings_View> m_view; ///< null once its window took it along: then nothing is shown
    ReportedText m_bitRate;
    ReportedText m_samplingRate;
};
