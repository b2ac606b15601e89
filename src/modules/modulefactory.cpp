#include "modules/modulefactory.h"

#include "modules/moduledevicetype1_ctrllr.h"
#include "modules/moduledevicetype2_ctrllr.h"
#include "modules/moduledevicetype3_ctrllr.h"
#include "modules/moduledevicetype4_ctrllr.h"

AnalogModule_Ctrllr *createModule(quint8 typeCode, int moduleNumber, int firstChannel, TimeSource &time,
                                  QObject *parent)
{
    switch (moduleFamily(typeCode)) {
    case ModuleFamily::Type1:
        return new ModuleDeviceType1_Ctrllr(moduleNumber, firstChannel, time, parent);
    case ModuleFamily::Type2:
        return new ModuleDeviceType2_Ctrllr(typeCode, moduleNumber, firstChannel, time, parent);
    case ModuleFamily::Type3:
        return new ModuleDeviceType3_Ctrllr(moduleNumber, firstChannel, time, parent);
    case ModuleFamily::Type4:
    case ModuleFamily::Unknown:
        break;
    }
    return new ModuleDeviceType4_Ctrllr(moduleNumber, firstChannel, time, parent);
}
