#include "protocol/records/recordtypes.h"

#include "protocol/records/datagrams.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/fpgafwcommand.h"
#include "protocol/records/groupcommand.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/powerstatus.h"
#include "protocol/records/systemstatus.h"

void registerRecordTypes()
{
    qRegisterMetaType<System_Status>("System_Status");
    qRegisterMetaType<Fast_System_Status>("Fast_System_Status");
    qRegisterMetaType<Module_Status>("Module_Status");
    qRegisterMetaType<Fast_Module_Status>("Fast_Module_Status");
    qRegisterMetaType<Power_Status>("Power_Status");
    qRegisterMetaType<QVector<Fast_Module_Status>>("QVector<Fast_Module_Status>");
    qRegisterMetaType<DatagramT1>("DatagramT1");
    qRegisterMetaType<DatagramT2>("DatagramT2");
    qRegisterMetaType<DatagramT3>("DatagramT3");
    qRegisterMetaType<FPGAfwCommand>("FPGAfwCommand");
    qRegisterMetaType<GroupCommand>("GroupCommand");
}
