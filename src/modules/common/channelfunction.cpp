#include "modules/common/channelfunction.h"

#include "protocol/records/moduletypes.h"

namespace {

/// The module types whose names are read as functions, although not all of them are shown as such.
constexpr ModuleType kNamed[] = {
    ModuleType::Unknown, ModuleType::StrainGauge, ModuleType::Voltage,       ModuleType::Iepe,
    ModuleType::Thermo,  ModuleType::Xvdt,        ModuleType::Potentiometer,
};

constexpr int kNoFunction = -1;

} // namespace

int functionCode(const QString &name)
{
    for (const ModuleType type : kNamed) {
        if (moduleTypeName(wireCode(type)) == name)
            return wireCode(type);
    }
    return kNoFunction;
}

QString functionName(quint8 code)
{
    const bool shown = code == wireCode(ModuleType::StrainGauge) || code == wireCode(ModuleType::Voltage) ||
                       code == wireCode(ModuleType::Iepe) || code == wireCode(ModuleType::Potentiometer);
    return moduleTypeName(shown ? code : wireCode(ModuleType::Unknown));
}
