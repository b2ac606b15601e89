#pragma once

#include "modules/analogmodule_ctrllr.h"
#include "modules/channelmodule_view.h"
#include "modules/common/channel.h"
#include "modules/common/channelparameter.h"
#include "modules/common/channelrecord.h"
#include "modules/common/modulemodel.h"
#include "modules/common/pendingdisplay.h"
#include "protocol/records/modulelists.h"

#include <QStringListModel>
#include <array>
#include <functional>
#include <map>

class TimeSource;

/// What the controllers of all families do with the parameters of their two channels: a wish of the
/// operator becomes a change request, and a status is shown by the rule of the pending display. A family
/// says which parameters it has and what its request looks like.
class ChannelModule_Ctrllr : public AnalogModule_Ctrllr
{
    Q_OBJECT

public:
    ~ChannelModule_Ctrllr() override;

    void retire() override;

protected:
    /// What a family makes its controller of. The numbers are those of the row.
    struct Parts
    {
        quint8 typeCode;
        int moduleNumber;
        std::unique_ptr<ChannelModule_View> view;
        std::unique_ptr<ModuleModel> data;
    };

    /// `time` must outlive the controller. `limits` hold for both channels; its lists are not used.
    ChannelModule_Ctrllr(Parts parts, const ChannelSetup &limits, TimeSource &time, QObject *parent);

    /// The parts of a family: its row, which takes `more` behind the numbers, and its data record.
    template <typename View, typename Model, typename... More>
    static Parts makeParts(quint8 typeCode, int moduleNumber, int firstChannel, More &...more)
    {
        const ModuleIdentification identification = firstIdentification(typeCode);
        return {typeCode, moduleNumber,
                std::make_unique<View>(moduleNumber, identification, ModuleMeasurement(), firstChannel,
                                       firstChannel + 1, more...),
                std::make_unique<Model>(identification, moduleNumber, firstChannel)};
    }

    /// The row; `View` is the kind with which the family made its parts.
    template <typename View>
    View &row() const
    {
        return static_cast<View &>(*m_row);
    }

    using TimeOverSlot = std::function<void()>;

    /// Gives the family a parameter. The slots, one for each channel, are called when its pending time is
    /// over, and call timeOver().
    void addParameter(ChannelParameter parameter, TimeOverSlot slotA, TimeOverSlot slotB);
    void timeOver(ChannelParameter parameter, Channel channel);

    // The operator's wishes. A channel other than 1 and 2 has no pending display, but the request goes out.
    void changeTypeIndex(int ch, int index);
    void changeRangeIndex(int ch, int index);
    void changeFilter(int ch, int value);
    void changePolarity(int ch, bool reversed);
    void changeOffset(int ch, const std::string &value);
    void changeShunt(int ch, quint8 value);

    /// `code`: ChannelSelector Autozero or AutoReset.
    void changeAutozero(int ch, bool state, quint8 code);

    /// Emits the family's change request with this snapshot of channel `ch`. `selector` says which value
    /// is new, see ChannelSelector.
    virtual void emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector) = 0;

    /// The entries of a status for each channel; one list for both, if the family does not say otherwise.
    virtual ChannelLists splitLists(const QString &text) const;

    /// A value of the status is in the data record: shows it when its time has come.
    void statusArrived(ChannelParameter parameter, Channel channel);

    /// A debugging aid: logs the raw value of channel A if the module set the flag for it.
    static void logAnalogData(const char *signature, const Fast_Module_Status &status);

    void applyStaticStatus(const Module_Status &status) override;
    void applyFastStatus(const Fast_Module_Status &status) override;
    void applyGroupCommand(const GroupCommand &command) override;

    // For the operations of the families' own names.
    void applySetup(int ch, const ChannelSetup &setup);

    /// The channel's number and its limits stay.
    void applyValues(int ch, const ChannelRecord &values);

private:
    struct Lists
    {
        QStringListModel types;
        QStringListModel ranges;
    };

    /// What a static status tells of one channel.
    struct ChannelStatus
    {
        QStringList types;
        qint32 typeIndex;
        QStringList ranges;
        qint32 rangeIndex;
        QString offset;
        QString filter;
        bool reversePolarity;
    };

    bool has(ChannelParameter parameter) const { return m_pending.count(parameter) != 0; }
    PendingDisplay &pending(ChannelParameter parameter, Channel channel);
    Lists &lists(Channel channel) { return m_lists[indexOf(channel)]; }

    /// Sends a snapshot of the channel in which one field has the operator's value.
    template <typename Value>
    void change(int ch, ChannelParameter parameter, quint8 selector, Value ChannelRecord::*field,
                const Value &value);

    void applyChannelStatus(Channel channel, const ChannelStatus &status);
    void applyAutozero(Channel channel, bool running);
    void applyShunt(Channel channel, bool on);
    void show(ChannelParameter parameter, Channel channel);

    /// Shows the value of the data record without asking: nothing is pending any more.
    void setDirectly(ChannelParameter parameter, Channel channel);

    TimeSource &m_time;
    ChannelModule_View *m_row; // owned by the base
    std::array<Lists, 2> m_lists;
    std::map<ChannelParameter, std::array<std::unique_ptr<PendingDisplay>, 2>> m_pending;
};
