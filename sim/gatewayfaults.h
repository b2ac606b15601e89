#pragma once

#include "sim/faults.h"

#include <QByteArray>
#include <QMap>

namespace sim {

/// What goes wrong with one line to the gateway and its answer. Nothing, unless a rule matched.
struct GatewayPlan
{
    bool silent = false;     ///< the gateway does not even take the line
    bool lose = false;       ///< the line is carried out, the answer does not arrive
    bool close = false;      ///< the connection is closed in place of the answer
    bool merge = false;      ///< the prompt stands behind the answer
    Milliseconds absence{0}; ///< after `close`: how long nobody can connect
    Milliseconds delay{0};
    std::optional<Cut> cut;
    std::optional<Milliseconds> promptGap; ///< the prompt comes so long behind the answer, by itself
    QMap<int, QByteArray> oddFields;       ///< of a status line, by their numbers
    QByteArray flood;                      ///< comes right before the answer
    QStringList notes;                     ///< names of the rules that matched, for the log

    bool isClean() const { return notes.isEmpty(); }
    /// What is sent in place of an answer.
    QByteArray applyTo(const QByteArray &answer) const;
};

/// One rule. Of the lines that pass the filters the trigger picks some.
struct GatewayRule
{
    enum class Action { Cut, Merge, Silent, Lose, Close, Odd, Flood, Delay, Prompt };

    Action action = Action::Lose;
    QString name;    ///< keyword and line number, for the log
    QByteArray line; ///< only lines that begin so
    Trigger trigger;

    // What the action needs.
    Milliseconds time{0}; ///< delay, gap, silence after the line that set it off, or absence
    Cut cut;
    int field = 0;
    QByteArray value; ///< of the odd field, or what the flood consists of
    int bytes = 0;
};

/// The fault script of a gateway; the same form as that of the device. It counts lines, so one object serves
/// one gateway.
///
///   cut size=N [gap=N]      the answer comes in pieces of N bytes with pauses of gap ms
///   merge                   the prompt comes behind the answer, in the same piece
///   silent [ms=N]           the line is not taken, nor any in the next N ms
///   lose                    the line is carried out, its answer gets lost
///   close [ms=N]            the connection is closed in place of the answer; for N ms (0) nobody can connect
///   odd field=N value=TEXT  this field of the status line is replaced
///   flood bytes=N [text=T]  N bytes that repeat T ("x") come right before the answer, without a line end
///   delay ms=N              the answer comes N ms later
///   prompt [gap=N]          the prompt comes gap ms behind the answer, as a piece of its own; also behind a
///                           line that has no answer. It is lost with the answer and not cut with it.
/// Filters and triggers of every rule:
///   line=TEXT               only lines that begin so. What a new connection is greeted with counts as the
///                           answer to the line "greeting".
///   from=N for=N nth=N every=N after=N count=N probability=P   as for the device
class GatewayFaults
{
public:
    explicit GatewayFaults(quint32 seed = 1);

    /// Adds the rules of a text. False with the line's number in the error text; no rule is added then.
    [[nodiscard]] bool parse(const QString &text, QString *error);
    void clear();
    int ruleCount() const { return m_rules.size(); }

    /// To be asked once for each line.
    GatewayPlan planFor(const QByteArray &line, Milliseconds now);

    static QByteArray greetingLine() { return QByteArrayLiteral("greeting"); }

private:
    struct Counted
    {
        GatewayRule rule;
        TriggerCount count;
    };

    void apply(const GatewayRule &rule, Milliseconds now, GatewayPlan *plan);

    QVector<Counted> m_rules;
    Milliseconds m_silentUntil{0};
    std::mt19937 m_random;
};

} // namespace sim
