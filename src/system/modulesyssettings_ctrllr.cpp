#include "system/modulesyssettings_ctrllr.h"

#include "system/modulesyssettings_view.h"

ModuleSysSettings_Ctrllr::ModuleSysSettings_Ctrllr(const SystemSettings &settings, TimeSource &time,
                                                   QObject *parent)
    : QObject(parent)
    , m_view(new ModuleSysSettings_View(time))
    , m_bitRate(time,
                [this] {
                    if (m_view)
                        m_view->setBitRate(m_data.bitRate);
                })
    , m_samplingRate(time, [this] {
        if (m_view)
            m_view->setSamplingRate(m_data.samplingRate);
    })
{
    connectView();
    setModules(settings.modules);
    setChannels(settings.channels);
    setBitRate(settings.bitRate);
    setSamplingRate(settings.samplingRate);
    setPoweringMode(settings.poweringMode);
    setDataTransmission(settings.dataTransmission);
}

ModuleSysSettings_Ctrllr::~ModuleSysSettings_Ctrllr()
{
    delete m_view; // unless the window that held the panel took it along
}

void ModuleSysSettings_Ctrllr::connectView()
{
    using Self = ModuleSysSettings_Ctrllr;
    using View = ModuleSysSettings_View;
    View *view = m_view;
    connect(view, &View::samplingRates, this, &Self::Signal_SamplingRates);
    connect(view, &View::Signal_ZrtGateway, this, &Self::Signal_ZRTGateway);
    connect(view, &View::debugMessage, this, &Self::debugMessage);
    connect(this, &Self::Signal_LoadGateway, view, &View::Signal_loadGateway);
    connect(this, &Self::Signal_EnableSamplingRate, view, &View::Signal_EnableSamplingRate);
    connect(this, &Self::Signal_DisableSamplingRate, view, &View::Signal_DisableSamplingRate);
    connect(view, &View::Signal_ldPresel, this, &Self::Signal_ldPresel);
    connect(view, &View::Signal_SendChannelT1Data, this, &Self::Signal_SendChannelT1Data);
}

ModuleSysSettings_View *ModuleSysSettings_Ctrllr::GetView()
{
    return m_view;
}

void ModuleSysSettings_Ctrllr::setModules(int modules)
{
    m_data.modules = modules;
    if (m_view)
        m_view->setModulesNumber(modules);
}

void ModuleSysSettings_Ctrllr::setChannels(int channels)
{
    m_data.channels = channels;
    if (m_view)
        m_view->setChannelsNumber(channels);
}

void ModuleSysSettings_Ctrllr::setBitRate(const QString &text)
{
    m_data.bitRate = text;
    m_bitRate.reported();
}

void ModuleSysSettings_Ctrllr::setSamplingRate(const QString &text)
{
    m_data.samplingRate = text;
    m_samplingRate.reported();
}

void ModuleSysSettings_Ctrllr::setPoweringMode(const QString &text)
{
    m_data.poweringMode = text;
    if (m_view)
        m_view->setPoweringMode(text);
}

void ModuleSysSettings_Ctrllr::setDataTransmission(const QString &text)
{
    m_data.dataTransmission = text;
    if (m_view)
        m_view->setDataTransmission(text);
}
