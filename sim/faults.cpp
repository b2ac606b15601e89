#include "sim/faults.h"

#include "sim/bytes.h"
#include "sim/framecodec.h"
#include "sim/payloadlayout.h"
#include "sim/script.h"

namespace sim {

namespace {

constexpr int kUnknownCode = 0x03;
constexpr int kWrongOriginator = kProgramOriginator;
constexpr int kUsualAbsenceMs = 1000;

const QStringList &actionNames()
{
    // In the order of FaultRule::Action.
    static const QStringList names = {
        QStringLiteral("lose"),         QStringLiteral("silence"),    QStringLiteral("close"),
        QStringLiteral("reset"),        QStringLiteral("reset-flag"), QStringLiteral("delay"),
        QStringLiteral("unknown-code"), QStringLiteral("originator"), QStringLiteral("corrupt"),
        QStringLiteral("cut"),          QStringLiteral("twice"),      QStringLiteral("input"),
        QStringLiteral("load"),         QStringLiteral("hot"),        QStringLiteral("no-power")};
    return names;
}

void readFilters(ScriptLine &line, FaultRule *rule)
{
    rule->code = optionalNumber(line, "code", 0, kByteMaximum);
    rule->argument = optionalNumber(line, "argument", 0, kByteMaximum);
    rule->trigger = readTrigger(line);
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
        needKey(line, "volts");
        rule->reading = line.real(QStringLiteral("volts"), 0, 0, kInputVoltsMaximum);
        break;
    case FaultRule::Action::Load:
        needKey(line, "amperes");
        rule->reading = line.real(QStringLiteral("amperes"), 0, 0, kLoadAmperesMaximum);
        break;
    case FaultRule::Action::Close:
    case FaultRule::Action::Reset:
        rule->time = Milliseconds(line.integer(QStringLiteral("ms"), kUsualAbsenceMs, 0, kAnyNumber));
        break;
    case FaultRule::Action::Delay:
        needKey(line, "ms");
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
        needKey(line, "size");
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
    m_rules.append({rule, {}});
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
    if (!rule.trigger.holdsAt(now))
        return false;
    if (rule.code && *rule.code != u8At(request, 0))
        return false;
    if (rule.argument && *rule.argument != u8At(request, kArgumentAt))
        return false;
    return counted.count.acts(rule.trigger, m_random);
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
    case FaultRule::Action::Reset:
        plan->reset = true;
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
