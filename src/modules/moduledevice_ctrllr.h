#pragma once

#include <QObject>

class ModuleDevice_View;
class ModuleModel;
struct ChannelRecord;
struct ChannelSetup;

/// What every controller of an analog module offers. Whoever creates one deletes it; its view and its data
/// record go with it.
class ModuleDevice_Ctrllr : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The module's row; the controller owns it.
    virtual ModuleDevice_View *GetView() = 0;
    /// The module's data record; the controller owns it.
    virtual ModuleModel *GetData() = 0;

    /// Store a live value and show it.
    virtual void SetVoltage(float volts) = 0;
    virtual void SetTemperature(float celsius) = 0;
    virtual void SetSelftest(quint8 code) = 0;

    /// Take the lists and the limits of channel 1 or 2; each family overrides its own.
    virtual void SetChannelT1Setup(int channel, const ChannelSetup &setup);
    virtual void SetChannelT2Setup(int channel, const ChannelSetup &setup);
    virtual void SetChannelT3Setup(int channel, const ChannelSetup &setup);
    virtual void SetChannelT4Setup(int channel, const ChannelSetup &setup);

    /// Apply all values of channel 1 or 2; each family overrides its own.
    virtual void SetChannelT1Values(int channel, const ChannelRecord &values);
    virtual void SetChannelT2Values(int channel, const ChannelRecord &values);
    virtual void SetChannelT3Values(int channel, const ChannelRecord &values);
    virtual void SetChannelT4Values(int channel, const ChannelRecord &values);

    /// The row is about to be removed: from now on it asks for nothing, whatever is done to it, and nothing
    /// that is pending fetches a status. It may still lose the focus.
    virtual void retire() = 0;
};
