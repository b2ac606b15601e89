#pragma once

#include "settings/appconfigurationmanager.h"

#include <QStringList>

/// Writes down each signal of the manager as one line, in the order of emission: name and values with bars
/// between them.
class SignalRecorder : public QObject
{
public:
    explicit SignalRecorder(AppConfigurationManager &manager)
    {
        using Manager = AppConfigurationManager;
        connect(&manager, &Manager::updateConfig, this,
                [this](const QStringList &words) { add(QStringLiteral("updateConfig"), words); });
        connect(&manager, &Manager::updatePath, this,
                [this](const QString &path) { add(QStringLiteral("updatePath"), {path}); });
        connect(&manager, &Manager::Signal_updateFwFilpth, this,
                [this](const QString &path) { add(QStringLiteral("Signal_updateFwFilpth"), {path}); });
        connect(&manager, &Manager::gateWayInfo, this, [this](const QString &a, const QString &p) {
            add(QStringLiteral("gateWayInfo"), {a, p});
        });
        connect(&manager, &Manager::serverInfo, this, [this](const QString &a, const QString &p) {
            add(QStringLiteral("serverInfo"), {a, p});
        });
        connect(&manager, &Manager::debugMessage, this,
                [this](const QString &text) { add(QStringLiteral("debugMessage"), {text}); });
        connect(&manager, &Manager::activateMode, this, [this](Comm_Type mode) {
            add(QStringLiteral("activateMode"), {QString::number(int(mode))});
        });
    }

    const QStringList &lines() const { return m_lines; }
    void clear() { m_lines.clear(); }

private:
    void add(const QString &signal, const QStringList &values)
    {
        m_lines.append(signal + QLatin1Char('|') + values.join(QLatin1Char('|')));
    }

    QStringList m_lines;
};
