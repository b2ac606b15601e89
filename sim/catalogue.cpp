#include "sim/catalogue.h"

namespace sim {

namespace {

constexpr int kFilterMaximum = 999999999;

const FunctionEntry kUnknownFunction;

const FunctionEntry kFunctions[] = {
    {kStrainGauge, "strain gauge",
     "120 Full$350 Full$1000 Full$120 Half$350 Half$1000 Half$120 Quarter$350 Quarter$",
     "0.5$1$2$5$10$20$50$100$", "1000", 0, kFilterMaximum, true, true, true},
    {kVoltage, "voltage", "DC$AC$Differential$", "0.1$0.2$0.5$1$2$5$10$", "1000", 0, kFilterMaximum, true,
     false, true},
    {kIepe, "IEPE/ICP", "4 mA$8 mA$Voltage AC$", "0.1$0.5$1$5$10$", "2500", 0, kFilterMaximum, true, false,
     true},
    {kThermo, "thermo", "Type K$Type J$Type T$Type E$Type N$PT100$PT1000$",
     "-200...1370$0...100$0...250$0...500$0...1000$", "8", 1, 32, false, false, false},
    {kXvdt, "XVDT", "LVDT 4-wire$LVDT 5-wire$RVDT$Half bridge$", "10$20$50$100$200$", "500", 0,
     kFilterMaximum, true, false, false},
    {kPotentiometer, "potentiometer", "3-wire$2-wire$", "2.5$5$10$", "1000", 0, kFilterMaximum, true, false,
     true},
    {kCurrentLoop, "4_20", "4..20 mA$0..20 mA$", "10$20$", "1000", 0, kFilterMaximum, true, false, false},
    {kAuxiliary, "auxiliary", "Analog$Pulse$Digital$", "5$10$24$", "1000", 0, kFilterMaximum, true, false,
     false},
};

} // namespace

const FunctionEntry &functionEntry(quint8 code)
{
    for (const FunctionEntry &entry : kFunctions) {
        if (entry.code == code)
            return entry;
    }
    return kUnknownFunction;
}

} // namespace sim
