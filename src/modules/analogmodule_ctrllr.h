#pragma once

#include "modules/common/moduleidentification.h"
#include "modules/moduledevice_ctrllr.h"
#include "protocol/records/groupcommand.h"

#include <QPointer>
#include <QVariant>
#include <memory>

struct Fast_Module_Status;
struct ModuleRequests;
struct Module_Status;

/// What the controllers of all families share: the row with identification and live values, and the way a
/// status finds its module. A family adds its parameters and its requests.
class AnalogModule_Ctrllr : public ModuleDevice_Ctrllr
{
    Q_OBJECT

public:
    ~AnalogModule_Ctrllr() override;

    ModuleDevice_View *GetView() override;
    ModuleModel *GetData() override;
    void SetVoltage(float volts) override;
    void SetTemperature(float celsius) override;
    void SetSelftest(quint8 code) override;

    int moduleNumber() const { return m_moduleNumber; }

    /// Makes this the row of a module whose type is not known: only identification and live values are
    /// left. To be called once, after construction, with nothing but the status signals connected.
    void showAsUnknownModule();

    /// Joins the signals with which the family asks for changes to those who take them.
    virtual void connectRequests(const ModuleRequests &requests) = 0;

public slots:
    /// A Module_Status of any module. One of another module is skipped; one whose type code lies outside
    /// the row's family, and any on the row of an unknown module, updates the identification labels only.
    void Slot_StaticModuleStatus(QVariant data);

    /// The vector of Fast_Module_Status entries; the entry at the module's number is taken.
    void Slot_FastModuleStatus(QVariant data);

    /// Shows the module's version numbers. The box does not block.
    void Slot_DeviceButton();

    /// Does nothing. Only a universal module has channel buttons that act, and its row takes care of them.
    void Slot_ChannelButton();

    /// A gesture made on some channel of the system; obeyed if it is for this module.
    void Slot_FilterOrRangeHandle(GroupCommand command);

    /// A gesture on a channel of this module: stamps the module's type on it and passes it on.
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
    /// `typeCode`: module type code, that of the universal module for the row of an unknown one. Module 1 to
    /// 128. Takes the row and the data record.
    AnalogModule_Ctrllr(quint8 typeCode, int moduleNumber, std::unique_ptr<ModuleDevice_View> view,
                        std::unique_ptr<ModuleModel> data, QObject *parent);

    /// What the row and the data record of a module tell before its first status.
    static ModuleIdentification firstIdentification(quint8 typeCode);

    // What a family adds.

    /// A static status of this module and family came; only the identification is shown already.
    virtual void showNames(const Module_Status &status);
    /// The same; the names are shown too, and the data record holds the versions.
    virtual void applyStaticStatus(const Module_Status &status) = 0;
    /// The module's own entry of a fast status; voltage, temperature and self-test are shown already.
    virtual void applyFastStatus(const Fast_Module_Status &status) = 0;
    /// A group command that matched.
    virtual void applyGroupCommand(const GroupCommand &command) = 0;
    /// Whether a group command is for this module: by default, if it is for its type code.
    virtual bool matchesGroupCommand(const GroupCommand &command) const;

private:
    bool isOwnFamily(quint8 typeCode) const;

    quint8 m_typeCode;
    bool m_isUnknown = false;
    int m_moduleNumber;
    std::unique_ptr<ModuleModel> m_data;
    QPointer<ModuleDevice_View> m_view;
};
