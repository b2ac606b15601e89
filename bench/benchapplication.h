#pragma once

#include "app/framework_ctrllr.h"
#include "base/timesource.h"

#include <QTemporaryDir>
#include <QVector>

/// The program with a settings folder of its own.
class BenchApplication
{
public:
    /// `settings`: contents of the settings file.
    explicit BenchApplication(const QByteArray &settings);

    /// The same with settings that name no device.
    BenchApplication();

    /// The system status of a chain with these modules, a controller and a power module.
    static QVariant systemStatus(const QVector<quint8> &types);

    Framework_Ctrllr &app() { return *m_app; }

private:
    SystemTime m_time;
    QTemporaryDir m_folder;
    std::unique_ptr<Framework_Ctrllr> m_app;
};
