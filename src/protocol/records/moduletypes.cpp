#include "protocol/records/moduletypes.h"

namespace {

struct TypeEntry
{
    ModuleType type;
    ModuleFamily family;
    HeaderForm form;
    const char *name;
};

constexpr TypeEntry kTypes[] = {
    {ModuleType::StrainGauge, ModuleFamily::Type1, HeaderForm::StrainGauge, "Strain Gauge"},
    {ModuleType::Voltage, ModuleFamily::Type2, HeaderForm::Voltage, "Voltage"},
    {ModuleType::Iepe, ModuleFamily::Type2, HeaderForm::Voltage, "IEPE/ICP®"},
    {ModuleType::Thermo, ModuleFamily::Type3, HeaderForm::Thermo, "Thermo"},
    {ModuleType::Xvdt, ModuleFamily::Type2, HeaderForm::Voltage, "XVDT"},
    {ModuleType::Potentiometer, ModuleFamily::Type2, HeaderForm::Voltage, "Potentiometer"},
    {ModuleType::CurrentLoop, ModuleFamily::Type2, HeaderForm::Voltage, "4_20"},
    {ModuleType::Auxiliary, ModuleFamily::Type2, HeaderForm::Voltage, "Auxilary"},
    {ModuleType::Universal, ModuleFamily::Type4, HeaderForm::Universal, "Analog"},
};

constexpr TypeEntry kUnknown{ModuleType::Unknown, ModuleFamily::Unknown, HeaderForm::Universal, "Unknown"};

const TypeEntry &entryOf(quint8 typeCode)
{
    for (const TypeEntry &entry : kTypes) {
        if (wireCode(entry.type) == typeCode)
            return entry;
    }
    return kUnknown;
}

} // namespace

ModuleFamily moduleFamily(quint8 typeCode)
{
    return entryOf(typeCode).family;
}

HeaderForm headerForm(quint8 typeCode)
{
    return entryOf(typeCode).form;
}

QString moduleTypeName(quint8 typeCode)
{
    return QString::fromUtf8(entryOf(typeCode).name);
}
