#pragma once

#include <QtGlobal>

/// The walk over all modules that follows a system status: controller, analog modules, power module. It is
/// told each static status reply and says which module comes next. It sends nothing and knows no time.
class ModuleWalk
{
public:
    enum class Step { Continue, Finished };

    /// Index of the module now being read: 0 the controller, then the analog modules from 1, 0x81 the
    /// power module.
    quint16 next() const { return m_next; }

    /// Number of modules to read, the power module aside: analog modules plus one, in 16 bits, so that a
    /// claim of 65535 modules comes to 0.
    quint16 count() const { return m_count; }

    /// Forgets index and count. Whether there is a power module stays known until the next begin().
    void clear();

    /// Takes what the system status reported. The index stays where it is: 0 after clear().
    void begin(quint16 analogModules, bool powerModulePresent);

    /// One static status reply came, from a module of this type code.
    Step takeReply(quint8 moduleType);

private:
    quint16 m_next = 0;
    quint16 m_count = 0;
    bool m_powerModulePresent = false;
};
