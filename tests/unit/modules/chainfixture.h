#pragma once

#include "familymodule.h"

#include <QRegularExpression>
#include <QSet>

/// The modules of a chain, joined as the program joins them: the gesture of each reaches all, itself
/// included. The functions of the universal modules are those of their neighbours.
class Chain
{
public:
    enum Index {
        Strain1,
        Strain2,
        Voltage1,
        Voltage2,
        Iepe,
        Thermo1,
        Thermo2,
        Xvdt,
        Potentiometer,
        Current,
        Auxiliary,
        VoltageAndStrain, ///< universal
        IepeAndPotentiometer,
        Unknown,
        Count
    };

    explicit Chain(bool withStatus = true)
    {
        const int codes[Count] = {1, 1, 2, 2, 3, 4, 4, 5, 6, 7, 8, 9, 9, 77};
        for (int i = 0; i < Count; ++i)
            m_modules.push_back(std::make_unique<FamilyModule>(m_time, codes[i], i + 1));
        at(VoltageAndStrain).device.functionCodeA = 2;
        at(VoltageAndStrain).device.functionCodeB = 1;
        at(IepeAndPotentiometer).device.functionCodeA = 3;
        at(IepeAndPotentiometer).device.functionCodeB = 6;
        at(Unknown).controller->showAsUnknownModule();
        join();
        if (!withStatus)
            return;
        for (const auto &module : m_modules)
            module->begin();
    }

    FamilyModule &at(int index) const { return *m_modules.at(static_cast<std::size_t>(index)); }
    VirtualTime &time() { return m_time; }

    void sendToAll(int moduleType, int command, int value = 0)
    {
        GroupCommand group;
        group.moduleType = static_cast<quint8>(moduleType);
        group.command = command;
        group.value = value;
        for (int i = 0; i < Count; ++i) {
            if (i != Unknown)
                at(i).controller->Slot_FilterOrRangeHandle(group);
        }
    }

    /// The requests since the last call as "12A" for module 12, channel A, in the order of the modules. Each
    /// channel must have sent one at most; all must say the same behind `field`, which goes to `value`.
    QString requesters(const QString &field, QString *value)
    {
        QStringList channels;
        QSet<QString> values;
        const QRegularExpression form(QStringLiteral("^T\\d m(\\d+) c(\\d): .*\\b%1 ([^,]*)").arg(field));
        for (const auto &module : m_modules) {
            for (const QString &sent : module->takeSent()) {
                const QRegularExpressionMatch match = form.match(sent);
                if (!match.hasMatch()) {
                    if (sent.startsWith('T'))
                        channels << sent;
                    continue;
                }
                channels << match.captured(1) + (match.captured(2) == QLatin1String("1") ? 'A' : 'B');
                values << match.captured(3);
            }
        }
        *value = values.values().join('/');
        return channels.join(' ');
    }

    QStringList shownAll() const
    {
        QStringList all;
        for (int i = 0; i < Count; ++i) {
            for (const QString &shown : at(i).shownAll())
                all << QString::number(i + 1) + ' ' + shown;
        }
        return all;
    }

    void forgetSent()
    {
        for (const auto &module : m_modules)
            module->takeSent();
    }

private:
    void join()
    {
        for (int from = 0; from < Count; ++from) {
            for (int to = 0; to < Count; ++to) {
                if (from == Unknown || to == Unknown)
                    continue; // its row takes part in the status only
                QObject::connect(at(from).controller.get(), &AnalogModule_Ctrllr::Signal_ShiftClickCommand,
                                 at(to).controller.get(), &AnalogModule_Ctrllr::Slot_FilterOrRangeHandle);
            }
        }
    }

    VirtualTime m_time;
    std::vector<std::unique_ptr<FamilyModule>> m_modules;
};

inline const QString kStrain = QStringLiteral("1A 1B 2A 2B 12B");
inline const QString kVoltage = QStringLiteral("3A 3B 4A 4B 12A");
inline const QString kIepe = QStringLiteral("5A 5B 13A");
inline const QString kThermo = QStringLiteral("6A 6B 7A 7B");
inline const QString kXvdt = QStringLiteral("8A 8B");
inline const QString kPotentiometer = QStringLiteral("9A 9B 13B");
inline const QString kCurrent = QStringLiteral("10A 10B");
inline const QString kAuxiliary = QStringLiteral("11A 11B");
