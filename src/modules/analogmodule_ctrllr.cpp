#include "modules/analogmodule_ctrllr.h"

#include "base/variantcast.h"
#include "modules/common/headertexts.h"
#include "modules/common/livevalues.h"
#include "modules/common/modulemodel.h"
#include "modules/common/versionbox.h"
#include "modules/moduledevice_view.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/moduletypes.h"

AnalogModule_Ctrllr::AnalogModule_Ctrllr(quint8 typeCode, int moduleNumber,
                                         std::unique_ptr<ModuleDevice_View> view,
                                         std::unique_ptr<ModuleModel> data, QObject *parent)
    : ModuleDevice_Ctrllr(parent)
    , m_typeCode(typeCode)
    , m_moduleNumber(moduleNumber)
    , m_data(std::move(data))
    , m_view(view.release())
{}

ModuleIdentification AnalogModule_Ctrllr::firstIdentification(quint8 typeCode)
{
    ModuleIdentification identification;
    identification.headerForm = headerForm(typeCode);
    return identification;
}

AnalogModule_Ctrllr::~AnalogModule_Ctrllr()
{
    delete m_view; // unless the window that held the row took it along
}

ModuleDevice_View *AnalogModule_Ctrllr::GetView()
{
    return m_view;
}

ModuleModel *AnalogModule_Ctrllr::GetData()
{
    return m_data.get();
}

void AnalogModule_Ctrllr::SetVoltage(float volts)
{
    m_data->voltage = volts;
    m_view->setVoltage(volts);
}

void AnalogModule_Ctrllr::SetTemperature(float celsius)
{
    m_data->temperature = celsius;
    m_view->setTemperature(celsius);
}

void AnalogModule_Ctrllr::SetSelftest(quint8 code)
{
    m_data->selftest = code;
    m_view->setSelftest(code);
}

void AnalogModule_Ctrllr::showAsUnknownModule()
{
    m_isUnknown = true;
    m_view->setChannelVisible(Channel::A, false);
    m_view->setChannelVisible(Channel::B, false);
}

bool AnalogModule_Ctrllr::isOwnFamily(quint8 typeCode) const
{
    return !m_isUnknown && moduleFamily(typeCode) == moduleFamily(m_typeCode);
}

void AnalogModule_Ctrllr::Slot_StaticModuleStatus(QVariant data)
{
    const auto status = recordFromVariant<Module_Status>(data);
    if (status.moduleAddress != m_moduleNumber)
        return;
    m_view->setSerialNumber(status.serialNumber);
    m_view->setHardware(status.hardwareVersion);
    m_view->setFirmware1(status.firmware1Version);
    m_view->setFirmware2(status.firmware2Version);
    if (!isOwnFamily(status.moduleType))
        return;
    showNames(status);
    m_data->hardware = status.hardwareVersion;
    m_data->firmware1 = status.firmware1Version;
    m_data->firmware2 = status.firmware2Version;
    applyStaticStatus(status);
}

void AnalogModule_Ctrllr::showNames(const Module_Status &status)
{
    const QString name = moduleTypeName(status.moduleType);
    m_view->setDeviceName(name);
    m_view->setChannelLabels(name, name);
    if (status.moduleType == wireCode(ModuleType::Xvdt))
        m_view->setInfoHeaders(infoheaders::input(), infoheaders::xvdtRange());
}

void AnalogModule_Ctrllr::Slot_FastModuleStatus(QVariant data)
{
    const auto entries = recordFromVariant<QVector<Fast_Module_Status>>(data);
    const Fast_Module_Status status = entries.value(m_moduleNumber);
    const LiveValues values = liveValues(status);
    if (values.voltage)
        SetVoltage(*values.voltage);
    if (values.temperature)
        SetTemperature(*values.temperature);
    SetSelftest(values.selftest);
    applyFastStatus(status);
}

void AnalogModule_Ctrllr::Slot_DeviceButton()
{
    showVersionBox(m_view, m_data->hardware, m_data->firmware1, m_data->firmware2);
}

void AnalogModule_Ctrllr::Slot_ChannelButton() {}

void AnalogModule_Ctrllr::Slot_FilterOrRangeHandle(GroupCommand command)
{
    if (matchesGroupCommand(command))
        applyGroupCommand(command);
}

void AnalogModule_Ctrllr::Slot_ShiftClick(GroupCommand command)
{
    command.moduleType = m_typeCode;
    emit Signal_ShiftClickCommand(command);
}

bool AnalogModule_Ctrllr::matchesGroupCommand(const GroupCommand &command) const
{
    return command.moduleType == m_typeCode;
}
