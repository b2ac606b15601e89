#pragma once

#include "modules/common/channel.h"
#include "modules/common/channelrecord.h"
#include "modules/common/moduleidentification.h"

#include <QString>
#include <array>

/// Address of a module as reports show it: "C" or "P" and the number for the controller and the power
/// module, the bare number for forms 3 to 5, "unknown" for all others.
QString moduleAddress(HeaderForm form, int moduleNumber);

/// Data record of an analog module; its controller owns it. Making one writes the debug line
/// "Model Type <family> created...".
class ModuleModel
{
public:
    ModuleModel(ModuleFamily family, const ModuleIdentification &identification, int moduleNumber,
                int firstChannel);

    /// The record of channel 1 or 2; of any other number an empty one, with the model's own further text
    /// as its offset.
    ChannelRecord channel(int number) const;
    ChannelRecord &channel(Channel channel) { return m_channels[indexOf(channel)]; }

    QString name;
    QString address;
    QString serialNumber; ///< stays as it was at first: no status is stored here
    QString firmware1;
    QString firmware2;
    QString hardware;
    float voltage = 0;     ///< V
    float temperature = 0; ///< degrees Celsius
    quint8 selftest = 0;   ///< 0: no failure
    HeaderForm headerForm;
    int moduleNumber;

private:
    std::array<ChannelRecord, 2> m_channels;
    QString m_further; ///< empty
};

/// The data records by the names of their families; they differ in the debug line only.
template <ModuleFamily family>
class FamilyModel : public ModuleModel
{
public:
    FamilyModel(const ModuleIdentification &identification, int number, int firstChannel)
        : ModuleModel(family, identification, number, firstChannel)
    {}
};

using ModelType1 = FamilyModel<ModuleFamily::Type1>;
using ModelType2 = FamilyModel<ModuleFamily::Type2>;
using ModelType3 = FamilyModel<ModuleFamily::Type3>;
using ModelType4 = FamilyModel<ModuleFamily::Type4>;
