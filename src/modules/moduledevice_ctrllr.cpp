#include "modules/moduledevice_ctrllr.h"

void ModuleDevice_Ctrllr::SetChannelT1Setup(int, const ChannelSetup &) {}
void ModuleDevice_Ctrllr::SetChannelT2Setup(int, const ChannelSetup &) {}
void ModuleDevice_Ctrllr::SetChannelT3Setup(int, const ChannelSetup &) {}
void ModuleDevice_Ctrllr::SetChannelT4Setup(int, const ChannelSetup &) {}
void ModuleDevice_Ctrllr::SetChannelT1Values(int, const ChannelRecord &) {}
void ModuleDevice_Ctrllr::SetChannelT2Values(int, const ChannelRecord &) {}
void ModuleDevice_Ctrllr::SetChannelT3Values(int, const ChannelRecord &) {}
void ModuleDevice_Ctrllr::SetChannelT4Values(int, const ChannelRecord &) {}
