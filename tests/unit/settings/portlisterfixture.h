#pragma once

#include "portfolder.h"
#include "settings/portlister.h"
#include "support/virtualtime.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QList>
#include <functional>
#include <memory>

class ComConfigBox;

/// A connection dialog of its own for each test, on a machine without ports, with what it emitted.
class PortListerFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    using Settings = model_Namespace::Settings;

    /// The dialog's own record after construction.
    static Settings freshRecord();

    /// The parts of a text between bars.
    static QStringList words(const char *text);

    template <typename T>
    T *child(const char *name) const
    {
        return m_lister->findChild<T *>(QString::fromLatin1(name));
    }
    QLineEdit *edit(const char *name) const { return child<QLineEdit>(name); }
    QAbstractButton *button(const char *name) const { return child<QAbstractButton>(name); }

    /// What stands in the place of port `n`.
    QString number(int n) const;

    void show();
    void click(const char *name);

    /// Does this while the box of the parameters runs.
    void whenBoxRuns(const std::function<void(ComConfigBox &)> &action);
    void resetSignals();

    std::unique_ptr<PortFolder> m_ports;
    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<PortLister> m_lister;
    QList<Settings> m_serial;
    QList<Settings> m_network;
    QList<Settings> m_activated;
};
