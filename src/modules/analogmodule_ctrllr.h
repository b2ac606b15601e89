#pragma once

#include "modules/common/moduleidentification.h"
#include "modules/moduledevice_ctrllr.h"
#include "protocol/records/groupcommand.h"

#include <QPointer>
#include <QVariant>
#include <memory>

struct Fast_Module_Status;
struct Module_Status;
class TimeSource;

/// What the controllers of all families share: the row with identification and live values, and the way a
/// status finds its module. By itself it drives a row without channel controls.
class AnalogModule_Ctrllr : public ModuleDevice_Ctrllr
{
    Q_OBJECT

public:
    /// `typeCode` is the module type code of the system status; a code that is no analog module makes a
    /// row of the universal family. Module 1 to 128. `firstChannel` is the number of channel A, that of
    /// channel B is one more. `time` must outlive the controller.
    AnalogModule_Ctrllr(quint8 typeCode, int moduleNumber, int firstChannel, TimeSource &time,
                        QObject *parent = nullptr);
    ~AnalogModule_Ctrllr() override;

    ModuleDevice_View *GetView() override;
    ModuleModel *GetData() override;
    void SetVoltage(float volts) override;
    void SetTemperature(float celsius) override;
    void SetSelftest(quint8 code) override;

    int moduleNumber() const { return m_moduleNumber; }
    quint8 typeCode() const { return m_typeCode; }

    /// Makes this the row of a module whose type is not known: only identification and live values are
    /// left. To be called once, after construction, with nothing but the status signals connected.
    void showAsUnknownModule();

public slots:
    /// A Module_Status of any module. One of another module is skipped; one whose type code lies outside
    /// the row's family, and any on the row of an unknown module, updates the identification labels only.
    void Slot_StaticModuleStatus(QVariant data);

    /// The vector of Fast_Module_Status entries; the entry at the module's number is taken.
    void Slot_FastModuleStatus(QVariant data);

    /// Shows the module's version numbers. The box does not block.
    void Slot_DeviceButton();

    /// The channel buttons of most families do nothing.
    void Slot_ChannelButton();

    /// A gesture made on some channel of the system; obeyed if it is for this module. A universal module
    /// takes each: whether it is for a channel is decided by the channel's function.
    void Slot_FilterOrRangeHandle(GroupCommand command);

    /// A gesture on a channel of this module: stamps the module's type on it and passes it on. A universal
    /// module leaves the stamp as it is: its channel has put its function there.
    void Slot_ShiftClick(GroupCommand command);

signals:
    /// Agreed, connected, never emitted.
    void ModuleButtonPressed();
    /// A status of the module with this number is wanted.
    void Signal_GetChannelData(uint moduleNumber);
    /// Agreed, connected, never emitted.
    void Signal_HwResponseDelay(int delay);
    /// A gesture for all matching channels.
    void Signal_ShiftClickCommand(GroupCommand command);

protected:
    /// For a family with a row of its own, which belongs to this object from now on. The numbers are those
    /// of the public constructor and of the row.
    AnalogModule_Ctrllr(quint8 typeCode, int moduleNumber, int firstChannel, TimeSource &time,
                        std::unique_ptr<ModuleDevice_View> view, QObject *parent);

    /// What the row and the data record of a module tell before its first status.
    static ModuleIdentification firstIdentification(quint8 typeCode);

    /// Whether a status with this type code belongs to the row's family. None belongs to an unknown one.
    bool isOwnFamily(quint8 typeCode) const;

    TimeSource &time() { return m_time; }

    // What a family adds; the defaults do nothing.

    /// A static status of this module and family; identification and names are shown already.
    virtual void applyStaticStatus(const Module_Status &status);
    /// The module's own entry of a fast status; voltage, temperature and self-test are shown already.
    virtual void applyFastStatus(const Fast_Module_Status &status);
    /// A group command that matched.
    virtual void applyGroupCommand(const GroupCommand &command);
    /// Whether a group command is for this module.
    virtual bool matchesGroupCommand(const GroupCommand &command) const;

private:
    void showNames(const Module_Status &status);
    bool channelsHaveFunctions() const;

    TimeSource &m_time;
    quint8 m_typeCode;
    int m_moduleNumber;
    std::unique_ptr<ModuleModel> m_data;
    QPointer<ModuleDevice_View> m_view;
};
