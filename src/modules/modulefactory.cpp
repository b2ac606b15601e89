#include "modules/modulefactory.h"

#include "modules/analogmodule_ctrllr.h"

AnalogModule_Ctrllr *createModule(quint8 typeCode, int moduleNumber, int firstChannel, TimeSource &time,
                                  QObject *parent)
{
    return new AnalogModule_Ctrllr(typeCode, moduleNumber, firstChannel, time, parent);
}
