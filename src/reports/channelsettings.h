#pragma once

#include <QString>
#include <QStringList>
#include <optional>

struct Module_Status;

/// What one channel offers and how it is set, taken out of the record of its module.
struct ChannelSettings
{
    QStringList sensors;
    QStringList ranges;
    std::optional<QString> sensor; ///< none if the index lies beyond the list
    std::optional<QString> range;
    quint8 functionCode = 0;
};

/// Both channels of a module.
struct ModuleSettings
{
    ChannelSettings a;
    ChannelSettings b;
};

/// A universal module has lists of its own for each channel; elsewhere both channels share the lists. The
/// items of a list are those closed by "$".
ModuleSettings moduleSettings(const Module_Status &module);

/// The items of a list text with " / " between them, all that the module sent: also what stands behind the
/// last "$".
QString joinedItems(const QString &listText);
