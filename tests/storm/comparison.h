#pragma once

#include "world.h"

#include <QStringList>

class QWidget;

namespace storm {

class Program;

/// Compares what the program shows with what the devices have.
class Comparison
{
public:
    /// How much must be equal.
    enum class Reach {
        Session, ///< a session that went on: without what the program is told at the start of one only
        Whole
    };

    Comparison(const Snapshot &snapshot, Reach reach);

    /// The whole window with all its rows.
    void compare(const Program &program);

    /// Parts of it; rows as their widgets.
    void compareModule(const QWidget &row, int address);
    void compareController(const QWidget &row);
    void comparePower(const QWidget &row);
    void compareSystemPanel(const QWidget &panel);
    /// The gateway's panel, which has to be connected and to have asked for the state.
    void compareGateway(const QWidget &panel);

    /// As in "row 3 A comboBox_Gain: 5, not 10".
    const QStringList &differences() const { return m_differences; }
    int valueCount() const { return m_valueCount; }

private:
    void check(const QWidget &parent, const char *widget, const QString &wanted);
    void checkOneOf(const QWidget &parent, const char *widget, const QStringList &wanted);
    /// A button that is down, or not.
    void checkMark(const QWidget &parent, const char *button, bool wanted);
    void checkChoice(const QWidget &panel, const char *list, int wanted);
    void checkLive(const QWidget &parent, const QString &suffix, int address, const sim::Health &health);
    void compareStrip(const QWidget &row, const sim::Module &module, int index);
    void compareBridge(const QWidget &strip, const sim::Channel &channel);
    void checkRateCell(const QWidget &panel);

    template <typename Value>
    QStringList texts(Value value) const;

    const Snapshot m_snapshot;
    const Reach m_reach;
    QString m_place;
    QStringList m_differences;
    int m_valueCount = 0;
};

/// The gateway's panel, be it on the screen or not, if it is connected; else null.
QWidget *connectedPanel();
/// Whether the panel shows both in the same way; that which goes on by itself apart.
bool isShownAlike(const sim::GatewayState &a, const sim::GatewayState &b);

} // namespace storm
