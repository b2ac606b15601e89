#pragma once

#include "sim/chain.h"
#include "sim/trigger.h"

#include <QVector>

#include <optional>

namespace sim {

enum class FramePart { Header, Payload, Crc };

struct Corruption
{
    FramePart part = FramePart::Crc;
    int byte = 0; ///< within the part, taken modulo its size
};

struct Cut
{
    int size = 1;        ///< bytes of each piece; the last may be shorter
    Milliseconds gap{0}; ///< pause before each piece but the first
};

/// What goes wrong with one request and its reply, and what the reply shows in place of the chain's state.
/// Nothing, unless a rule matched.
struct FaultPlan
{
    bool silence = false;    ///< the device does not even take the request
    bool lose = false;       ///< the request is carried out, the reply does not arrive
    bool close = false;      ///< the connection is closed in place of the reply
    bool reset = false;      ///< the connection is reset in place of the reply
    bool twice = false;      ///< the reply comes twice, in two frames
    Milliseconds absence{0}; ///< after `close` and `reset`: how long a terminal is away
    bool resetFlag = false;
    Milliseconds delay{0};
    std::optional<quint8> payloadCode;
    std::optional<quint8> originator;
    std::optional<Corruption> corruption;
    std::optional<Cut> cut;
    PlayedPower played; ///< what the power module shows in the reply
    QStringList notes;  ///< names of the rules that matched, for the log

    bool isClean() const { return notes.isEmpty(); }
    /// The program gets no reply that it takes: none at all or a damaged one.
    bool destroysReply() const { return silence || lose || close || reset || originator || corruption; }
};

/// One rule. Of the requests that pass the filters the trigger picks some.
struct FaultRule
{
    enum class Action {
        Lose,
        Silence,
        Close,
        Reset,
        ResetFlag,
        Delay,
        UnknownCode,
        Originator,
        Corrupt,
        Cut,
        Twice,
        Input,
        Load,
        Hot,
        NoPower
    };

    Action action = Action::Lose;
    QString name; ///< keyword and line number, for the log

    // Filters.
    std::optional<int> code;
    std::optional<int> argument; ///< the fifth payload byte: an address or a wire channel
    Trigger trigger;

    // What the action needs.
    Milliseconds time{
        0};             ///< delay, silence after the request that set it off, or absence of a closed terminal
    int value = 0;      ///< payload code or originator
    double reading = 0; ///< volts or amperes
    Corruption corruption;
    Cut cut;
};

/// The fault script of a run. It counts requests, so one object serves one device.
///
/// A script is a text with one rule in each line, "action key=value ...", "#" begins a comment:
///   lose                          the reply gets lost on its way
///   silence [ms=N]                no answer to the request, nor to any in the next N ms
///   close [ms=N]                  the connection is closed in place of the reply; a pseudo terminal vanishes
///                                 with its name and is back after N ms (1000)
///   reset [ms=N]                  as close, but a TCP connection is reset: the other side gets an error, and
///                                 loses what it was sent and did not read yet
///   reset-flag                    the reply asks for a new start of the session
///   delay ms=N                    the reply starts N ms later
///   unknown-code [value=N]        the payload's code is replaced (0x03)
///   originator [value=N]          the frame's originator is replaced (0x50)
///   corrupt [part=header|payload|crc] [byte=N]   one byte is inverted behind the check sums
///   cut size=N [gap=N]            pieces of N bytes with pauses of gap ms
///   twice                         the reply comes twice, with a consistency counter of its own each time
/// What the power module shows in the reply in place of its own state:
///   input volts=N                 this input voltage
///   load amperes=N                this load, at the output voltage at which load= of the description holds
///   hot                           it is too hot, and does what its protection says
///   no-power                      its serial number is empty
/// Filters and triggers of every rule:
///   code=N argument=N             only these requests
///   from=N for=N                  only from this simulated time in ms on, for so long
///   nth=N every=N after=N count=N of the requests that pass the filters
///   probability=P                 between 0 and 1
class FaultScript
{
public:
    explicit FaultScript(quint32 seed = 1);

    /// Adds the rules of a text. False with the line's number in the error text; no rule is added then.
    [[nodiscard]] bool parse(const QString &text, QString *error);
    void add(const FaultRule &rule);
    void clear();
    int ruleCount() const { return m_rules.size(); }

    /// To be asked once for each request.
    FaultPlan planFor(const QByteArray &request, Milliseconds now);

private:
    struct Counted
    {
        FaultRule rule;
        TriggerCount count;
    };

    bool matches(Counted &counted, const QByteArray &request, Milliseconds now);
    void apply(const FaultRule &rule, Milliseconds now, FaultPlan *plan);

    QVector<Counted> m_rules;
    Milliseconds m_silentUntil{0};
    std::mt19937 m_random;
};

} // namespace sim
