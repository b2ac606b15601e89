#pragma once

#include <QtGlobal>

class AnalogModule_Ctrllr;
class QObject;
class TimeSource;

/// A controller of the family that the module type code asks for; any other code gets one of the universal
/// family, to be set up as the row of an unknown module. Module 1 to 128; `firstChannel` is the number of
/// channel A. `time` must outlive the controller.
AnalogModule_Ctrllr *createModule(quint8 typeCode, int moduleNumber, int firstChannel, TimeSource &time,
                                  QObject *parent);
