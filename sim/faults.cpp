#include "sim/faults.h"

#include "sim/bytes.h"
#include "sim/framecodec.h"
#include "sim/payloadlayout.h"
#include "sim/script.h"

#include <limits>

namespace sim {

namespace {

constexpr int kAnyNumber = std::numeric_limits<int>::max();
constexpr int kByteMaximum = 255;
constexpr int kUnknownCode = 0x03;
constexpr int kWrongOriginator = kProgramOriginator;
constexpr int kUsualAbsenceMs = 1000;

const QStringList &actionNames()
{
    // In the order of FaultRule::Action.
    static const QStringList names = {
        QStringLiteral("lose"),       QStringLiteral("silence"), QStringLiteral("close"),
        QStringLiteral("reset-flag"), QStringLiteral("delay"),   QStringLiteral("unknown-code"),
        QStringLiteral("originator"), QStringLiteral("corrupt"), QStringLiteral("cut"),
        QStringLiteral("twice"),      QStringLiteral("input"),   QStringLiteral("load"),
        QStringLiteral("hot"),        QStringLiteral("no-power")};
    return names;
}

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

void readFilters(ScriptLine &line, FaultRule *rule)
{
    rule->code = optionalNumber(line, "code", 0, kByteMaximum);
    rule->argument = optionalNumber(line, "argument", 0, kByteMaximum);
    rule->from = milliseconds(line, "from");
    if (line.has(QStringLiteral("for")))
        rule->length = milliseconds(line, "for");
    rule->nth = optionalNumber(line, "nth", 1, kAnyNumber);
    rule->every = optionalNumber(line, "every", 1, kAnyNumber);
    rule->after = optionalNumber(line, "after", 0, kAnyNumber);
    rule->count = optionalNumber(line, "count", 1, kAnyNumber);
    rule->probability = line.real(QStringLiteral("probability"), 1, 0, 1);
}

void need(ScriptLine &line, const char *key)
{
    if (!line.has(QString::fromLatin1(key)))
        line.fail(QStringLiteral("\"%1\" needs %2=").arg(line.keyword, QLatin1String(key)));
}

void readParameters(ScriptLine &line, FaultRule *rule)
{
    switch (rule->action) {
    case FaultRule::Action::Lose:
    case FaultRule::Action::ResetFlag:
    case FaultRule::Action::Twice:
    case FaultRule::Action::Hot:
    case FaultRule::Action::NoPower:
        break;
    case FaultRule::Action::Input:
        need(line, "volts");
        rule->reading = line.real(QStringLiteral("volts"), 0, 0, kInputVoltsMaximum);
        break;
    case FaultRule::Action::Load:
        need(line, "amperes");
        rule->reading = line.real(QStringLiteral("amperes"), 0, 0, kLoadAmperesMaximum);
        break;
    case FaultRule::Action::Close:
        rule->time = Milliseconds(line.integer(QStringLiteral("ms"), kUsualAbsenceMs, 0, kAnyNumber));
        break;
    case FaultRule::Action::Delay:
        need(line, "ms");
        rule->time = milliseconds(line, "ms");
        break;
    case FaultRule::Action::Silence:
        rule->time = milliseconds(line, "ms");
        break;
    case FaultRule::Action::UnknownCode:
        rule->value = line.integer(QStringLiteral("value"), kUnknownCode, 0, kByteMaximum);
        break;
    case FaultRule::Action::Originator:
        rule->value = line.integer(QStringLiteral("value"), kWrongOriginator, 0, kByteMaximum);
        break;
    case FaultRule::Action::Corrupt:
        rule->corruption.part = static_cast<FramePart>(
            line.word(QStringLiteral("part"), static_cast<int>(FramePart::Crc),
                      {QStringLiteral("header"), QStringLiteral("payload"), QStringLiteral("crc")}));
        rule->corruption.byte = line.integer(QStringLiteral("byte"), 0, 0, kAnyNumber);
        break;
    case FaultRule::Action::Cut:
        need(line, "size");
        rule->cut.size = line.integer(QStringLiteral("size"), 1, 1, kAnyNumber);
        rule->cut.gap = milliseconds(line, "gap");
        break;
    }
}

} // namespace

FaultScript::FaultScript(quint32 seed)
    : m_random(seed)
{}

bool FaultScript::parse(const QString &text, QString *error)
{
    QVector<ScriptLine> lines;
    if (!cutScript(text, &lines, error))
        return false;
    QVector<FaultRule> rules;
    for (ScriptLine &line : lines) {
        const int action = actionNames().indexOf(line.keyword);
        if (action < 0) {
            *error = QStringLiteral("line %1: there is no fault \"%2\"").arg(line.number).arg(line.keyword);
            return false;
        }
        FaultRule rule;
        rule.action = static_cast<FaultRule::Action>(action);
        rule.name = QStringLiteral("%1 (line %2)").arg(line.keyword).arg(line.number);
        readParameters(line, &rule);
        readFilters(line, &rule);
        *error = line.finish();
        if (!error->isEmpty())
            return false;
        rules.append(rule);
    }
    for (const FaultRule &rule : qAsConst(rules))
        add(rule);
    return true;
}

void FaultScript::add(const FaultRule &rule)
{
    m_rules.append({rule, 0, 0});
}

void FaultScript::clear()
{
    m_rules.clear();
    m_silentUntil = Milliseconds(0);
}

FaultPlan FaultScript::planFor(const QByteArray &request, Milliseconds now)
{
    FaultPlan plan;
    if (now < m_silentUntil) {
        plan.silence = true;
        plan.notes.append(QStringLiteral("silence"));
        return plan;
    }
    for (Counted &counted : m_rules) {
        if (matches(counted, request, now))
            apply(counted.rule, now, &plan);
    }
    return plan;
}

bool FaultScript::matches(Counted &counted, const QByteArray &request, Milliseconds now)
{
    const FaultRule &rule = counted.rule;
    if (now < rule.from || (rule.length && now >= rule.from + *rule.length))
        return false;
    if (rule.code && *rule.code != u8At(request, 0))
        return false;
    if (rule.argument && *rule.argument != u8At(request, kArgumentAt))
        return false;
    const int number = ++counted.seen - rule.after.value_or(0);
    if (number < 1 || (rule.nth && number != *rule.nth) || (rule.every && number % *rule.every != 0))
        return false;
    if (rule.count && counted.acted >= *rule.count)
        return false;
    // The generator's own numbers, because the library's distributions differ between platforms.
    constexpr double kSteps = 4294967296.0;
    if (rule.probability < 1.0 && static_cast<double>(m_random()) / kSteps >= rule.probability)
        return false;
    ++counted.acted;
    return true;
}

void FaultScript::apply(const FaultRule &rule, Milliseconds now, FaultPlan *plan)
{
    plan->notes.append(rule.name);
    switch (rule.action) {
    case FaultRule::Action::Lose:
        plan->lose = true;
        break;
    case FaultRule::Action::Silence:
        plan->silence = true;
        m_silentUntil = qMax(m_silentUntil, now + rule.time);
        break;
    case FaultRule::Action::Close:
        plan->close = true;
        plan->absence = qMax(plan->absence, rule.time);
        break;
    case FaultRule::Action::ResetFlag:
        plan->resetFlag = true;
        break;
    case FaultRule::Action::Delay:
        plan->delay += rule.time;
        break;
    case FaultRule::Action::UnknownCode:
        plan->payloadCode = static_cast<quint8>(rule.value);
        break;
    case FaultRule::Action::Originator:
        plan->originator = static_cast<quint8>(rule.value);
        break;
    case FaultRule::Action::Corrupt:
        plan->corruption = rule.corruption;
        break;
    case FaultRule::Action::Cut:
        plan->cut = rule.cut;
        break;
    case FaultRule::Action::Twice:
        plan->twice = true;
        break;
    case FaultRule::Action::Input:
        plan->played.inputVolts = rule.reading;
        break;
    case FaultRule::Action::Load:
        plan->played.loadAmperes = rule.reading;
        break;
    case FaultRule::Action::Hot:
        plan->played.tooHot = true;
        break;
    case FaultRule::Action::NoPower:
        plan->played.noSerial = true;
        break;
    }
}

} // namespace sim
