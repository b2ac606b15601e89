#include "sim/trigger.h"

#include "sim/script.h"

namespace sim {

std::optional<int> optionalNumber(ScriptLine &line, const char *key, int minimum, int maximum)
{
    const QString name = QString::fromLatin1(key);
    if (!line.has(name))
        return std::nullopt;
    return line.integer(name, minimum, minimum, maximum);
}

Milliseconds milliseconds(ScriptLine &line, const char *key)
{
    return Milliseconds(line.integer(QString::fromLatin1(key), 0, 0, kAnyNumber));
}

void needKey(ScriptLine &line, const char *key)
{
    if (!line.has(QString::fromLatin1(key)))
        line.fail(QStringLiteral("\"%1\" needs %2=").arg(line.keyword, QLatin1String(key)));
}

Trigger readTrigger(ScriptLine &line)
{
    Trigger trigger;
    trigger.from = milliseconds(line, "from");
    if (line.has(QStringLiteral("for")))
        trigger.length = milliseconds(line, "for");
    trigger.nth = optionalNumber(line, "nth", 1, kAnyNumber);
    trigger.every = optionalNumber(line, "every", 1, kAnyNumber);
    trigger.after = optionalNumber(line, "after", 0, kAnyNumber);
    trigger.count = optionalNumber(line, "count", 1, kAnyNumber);
    trigger.probability = line.real(QStringLiteral("probability"), 1, 0, 1);
    return trigger;
}

bool TriggerCount::acts(const Trigger &trigger, std::mt19937 &random)
{
    const int number = ++m_seen - trigger.after.value_or(0);
    if (number < 1 || (trigger.nth && number != *trigger.nth) ||
        (trigger.every && number % *trigger.every != 0))
        return false;
    if (trigger.count && m_acted >= *trigger.count)
        return false;
    // The generator's own numbers, because the library's distributions differ between platforms.
    constexpr double kSteps = 4294967296.0;
    if (trigger.probability < 1.0 && static_cast<double>(random()) / kSteps >= trigger.probability)
        return false;
    ++m_acted;
    return true;
}

} // namespace sim
