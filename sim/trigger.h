#pragma once

#include "sim/module.h"

#include <optional>
#include <random>

namespace sim {

class ScriptLine;

/// Which of the requests that pass the filters of a fault rule the rule acts on. All of these must hold.
struct Trigger
{
    Milliseconds from{0};               ///< simulated time at which the rule begins to hold
    std::optional<Milliseconds> length; ///< how long it holds
    // These count the requests that came in this time and passed the filters.
    std::optional<int> nth;
    std::optional<int> every;
    std::optional<int> after; ///< skips the first ones
    std::optional<int> count; ///< acts so many times at most
    double probability = 1.0;

    bool holdsAt(Milliseconds now) const { return now >= from && (!length || now < from + *length); }
};

/// from= for= nth= every= after= count= probability=
Trigger readTrigger(ScriptLine &line);

/// What a trigger has counted.
class TriggerCount
{
public:
    /// To be asked once for each request that came in the trigger's time and passed the filters: whether the
    /// rule acts.
    bool acts(const Trigger &trigger, std::mt19937 &random);

private:
    int m_seen = 0;
    int m_acted = 0;
};

// For the other keys of a rule.
constexpr int kAnyNumber = 2147483647;
std::optional<int> optionalNumber(ScriptLine &line, const char *key, int minimum, int maximum);
/// 0 without the key.
Milliseconds milliseconds(ScriptLine &line, const char *key);
/// Fails if the key is missing.
void needKey(ScriptLine &line, const char *key);

} // namespace sim
