#pragma once

#include "support/childbyname.h"
#include "support/virtualtime.h"
#include "system/modulesyssettings_ctrllr.h"
#include "system/modulesyssettings_view.h"
#include "system/vx_samplingrates.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringList>
#include <memory>

/// The panel of the system settings on screen, with its controller. What the controller tells is noted in
/// order, as "rates 2500 16".
class Panel
{
public:
    explicit Panel(const SystemSettings &settings = {})
        : controller(std::make_unique<ModuleSysSettings_Ctrllr>(settings, time))
    {
        using C = ModuleSysSettings_Ctrllr;
        C *c = controller.get();
        note(&C::Signal_SamplingRates, "rates");
        note(&C::Signal_ZRTGateway, "address in use");
        QObject::connect(c, &C::Signal_HwResponseDelay, c, [this] { m_events.append("delay"); });
        QObject::connect(c, &C::debugMessage, c,
                         [this](const QString &text) { m_events.append("debug " + text); });
        QObject::connect(c, &C::Signal_ldPresel, c, [this](const GroupCommand &group) {
            m_events.append(
                QStringLiteral("group %1 %2 %3").arg(group.moduleType).arg(group.command).arg(group.value));
        });
        QObject::connect(c, &C::Signal_SendChannelT1Data, c, [this](const QVariant &request) {
            m_events.append("request");
            requests.append(request);
        });
        view()->show();
    }

    ModuleSysSettings_View *view() const { return controller->GetView(); }

    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(view(), name);
    }

    /// A part of the dialog of the data rates; the gateway's panel has a table of its own.
    template <typename T>
    T *ratePart(const char *name) const
    {
        return childByName<T>(child<VX_SamplingRates>("samplingRatesDialog"), name);
    }

    QString label(const char *name) const { return child<QLabel>(name)->text(); }
    QString edit(const char *name) const { return child<QLineEdit>(name)->text(); }

    /// Modules, channels, bit rate, sampling rate, powering mode and data transmission as they stand on
    /// screen.
    QString shown() const
    {
        return QStringList{label("label_ModulesNumber"), label("label_ChannelsNumber"),
                           edit("lineEdit_BitRate"),     edit("lineEdit_SamplingRate"),
                           label("label_PoweringMode"),  label("label_DataTransmission")}
            .join(QLatin1Char('|'));
    }

    QStringList take()
    {
        QStringList events;
        events.swap(m_events);
        return events;
    }

    VirtualTime time;
    std::unique_ptr<ModuleSysSettings_Ctrllr> controller;
    QVariantList requests; ///< those of Signal_SendChannelT1Data

private:
    void note(void (ModuleSysSettings_Ctrllr::*signal)(QString, QString), const char *name)
    {
        QObject::connect(controller.get(), signal, controller.get(),
                         [this, name](const QString &first, const QString &second) {
                             m_events.append(QStringList{name, first, second}.join(QLatin1Char(' ')));
                         });
    }

    QStringList m_events;
};
