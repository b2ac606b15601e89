#include "sim/gatewayfaults.h"

#include "sim/gateway.h"
#include "sim/gatewaysetting.h"
#include "sim/script.h"

namespace sim {

namespace {

constexpr int kLongestFlood = 64 << 20;

const QStringList &gatewayActionNames()
{
    // In the order of GatewayRule::Action.
    static const QStringList names = {
        QStringLiteral("cut"),   QStringLiteral("merge"), QStringLiteral("silent"),
        QStringLiteral("lose"),  QStringLiteral("close"), QStringLiteral("odd"),
        QStringLiteral("flood"), QStringLiteral("delay"), QStringLiteral("prompt")};
    return names;
}

void readParameters(ScriptLine &line, GatewayRule *rule)
{
    switch (rule->action) {
    case GatewayRule::Action::Merge:
    case GatewayRule::Action::Lose:
        break;
    case GatewayRule::Action::Cut:
        needKey(line, "size");
        rule->cut.size = line.integer(QStringLiteral("size"), 1, 1, kAnyNumber);
        rule->cut.gap = milliseconds(line, "gap");
        break;
    case GatewayRule::Action::Prompt:
        rule->time = milliseconds(line, "gap");
        break;
    case GatewayRule::Action::Delay:
        needKey(line, "ms");
        rule->time = milliseconds(line, "ms");
        break;
    case GatewayRule::Action::Silent:
    case GatewayRule::Action::Close:
        rule->time = milliseconds(line, "ms");
        break;
    case GatewayRule::Action::Odd: {
        needKey(line, "field");
        needKey(line, "value");
        rule->field = line.integer(QStringLiteral("field"), 0, 0, Gateway::kStatusFields - 1);
        const QString value = line.text(QStringLiteral("value"), {});
        if (!fitsStatusLine(value))
            line.fail(QStringLiteral("value has a \";\" or what is not Latin-1"));
        rule->value = value.toLatin1();
        break;
    }
    case GatewayRule::Action::Flood:
        needKey(line, "bytes");
        rule->bytes = line.integer(QStringLiteral("bytes"), 1, 1, kLongestFlood);
        rule->value = line.text(QStringLiteral("text"), QStringLiteral("x")).toLatin1();
        if (rule->value.isEmpty())
            line.fail(QStringLiteral("text is empty"));
        break;
    }
}

} // namespace

QByteArray GatewayPlan::applyTo(const QByteArray &answer) const
{
    QByteArray text = answer;
    if (!oddFields.isEmpty() && text.startsWith("#S")) {
        const int end = text.indexOf('\r');
        QList<QByteArray> fields = text.left(end).split(';');
        for (auto odd = oddFields.cbegin(); odd != oddFields.cend(); ++odd)
            fields[odd.key()] = odd.value();
        text = fields.join(';') + text.mid(end);
    }
    if (merge)
        text += Gateway::prompt();
    return flood + text;
}

GatewayFaults::GatewayFaults(quint32 seed)
    : m_random(seed)
{}

bool GatewayFaults::parse(const QString &text, QString *error)
{
    QVector<ScriptLine> lines;
    if (!cutScript(text, &lines, error))
        return false;
    QVector<Counted> rules;
    for (ScriptLine &line : lines) {
        const int action = gatewayActionNames().indexOf(line.keyword);
        if (action < 0) {
            *error = QStringLiteral("line %1: there is no fault \"%2\" of a gateway")
                         .arg(line.number)
                         .arg(line.keyword);
            return false;
        }
        GatewayRule rule;
        rule.action = static_cast<GatewayRule::Action>(action);
        rule.name = QStringLiteral("%1 (line %2)").arg(line.keyword).arg(line.number);
        readParameters(line, &rule);
        rule.line = line.text(QStringLiteral("line"), {}).toLatin1();
        rule.trigger = readTrigger(line);
        *error = line.finish();
        if (!error->isEmpty())
            return false;
        rules.append({rule, {}});
    }
    m_rules += rules;
    return true;
}

void GatewayFaults::clear()
{
    m_rules.clear();
    m_silentUntil = Milliseconds(0);
}

GatewayPlan GatewayFaults::planFor(const QByteArray &line, Milliseconds now)
{
    GatewayPlan plan;
    if (now < m_silentUntil) {
        plan.silent = true;
        plan.notes.append(QStringLiteral("silent"));
        return plan;
    }
    for (Counted &counted : m_rules) {
        const GatewayRule &rule = counted.rule;
        if (rule.trigger.holdsAt(now) && line.startsWith(rule.line) &&
            counted.count.acts(rule.trigger, m_random))
            apply(rule, now, &plan);
    }
    return plan;
}

void GatewayFaults::apply(const GatewayRule &rule, Milliseconds now, GatewayPlan *plan)
{
    plan->notes.append(rule.name);
    switch (rule.action) {
    case GatewayRule::Action::Cut:
        plan->cut = rule.cut;
        break;
    case GatewayRule::Action::Merge:
        plan->merge = true;
        break;
    case GatewayRule::Action::Silent:
        plan->silent = true;
        m_silentUntil = qMax(m_silentUntil, now + rule.time);
        break;
    case GatewayRule::Action::Lose:
        plan->lose = true;
        break;
    case GatewayRule::Action::Close:
        plan->close = true;
        plan->absence = qMax(plan->absence, rule.time);
        break;
    case GatewayRule::Action::Odd:
        plan->oddFields.insert(rule.field, rule.value);
        break;
    case GatewayRule::Action::Flood:
        plan->flood += rule.value.repeated(rule.bytes / rule.value.size() + 1).left(rule.bytes);
        break;
    case GatewayRule::Action::Delay:
        plan->delay += rule.time;
        break;
    case GatewayRule::Action::Prompt:
        plan->promptGap = rule.time;
        break;
    }
}

} // namespace sim
