#include "sim/script.h"

#include <QStringList>

namespace sim {

namespace {

/// Cuts one line at blanks outside quotes; the quotes are dropped. False for a quote without its partner.
bool cutWords(const QString &line, QStringList *words)
{
    QString word;
    bool quoted = false;
    bool begun = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"')) {
            quoted = !quoted;
            begun = true;
        } else if (!quoted && c == QLatin1Char('#')) {
            break;
        } else if (!quoted && c.isSpace()) {
            if (begun)
                words->append(word);
            word.clear();
            begun = false;
        } else {
            word.append(c);
            begun = true;
        }
    }
    if (begun)
        words->append(word);
    return !quoted;
}

} // namespace

bool ScriptLine::take(const QString &key, QString *value)
{
    if (!m_values.contains(key))
        return false;
    *value = m_values.take(key);
    return true;
}

void ScriptLine::fail(const QString &message)
{
    if (m_error.isEmpty())
        m_error = message;
}

QString ScriptLine::text(const QString &key, const QString &current)
{
    QString value;
    return take(key, &value) ? value : current;
}

int ScriptLine::integer(const QString &key, int current, int minimum, int maximum)
{
    QString value;
    if (!take(key, &value))
        return current;
    bool isNumber = false;
    const bool isHex = value.startsWith(QLatin1String("0x"));
    const int parsed = isHex ? value.mid(2).toInt(&isNumber, 16) : value.toInt(&isNumber, 10);
    if (isNumber && parsed >= minimum && parsed <= maximum)
        return parsed;
    fail(QStringLiteral("%1=%2 is no number from %3 to %4").arg(key, value).arg(minimum).arg(maximum));
    return current;
}

double ScriptLine::real(const QString &key, double current, double minimum, double maximum)
{
    QString value;
    if (!take(key, &value))
        return current;
    bool isNumber = false;
    const double parsed = value.toDouble(&isNumber);
    if (isNumber && parsed >= minimum && parsed <= maximum)
        return parsed;
    fail(QStringLiteral("%1=%2 is no number from %3 to %4").arg(key, value).arg(minimum).arg(maximum));
    return current;
}

bool ScriptLine::flag(const QString &key, bool current)
{
    return word(key, current ? 1 : 0, {QStringLiteral("no"), QStringLiteral("yes")}) == 1;
}

int ScriptLine::word(const QString &key, int current, const QStringList &words)
{
    QString value;
    if (!take(key, &value))
        return current;
    const int index = words.indexOf(value);
    if (index >= 0)
        return index;
    fail(QStringLiteral("%1=%2 is none of %3").arg(key, value, words.join(QStringLiteral(", "))));
    return current;
}

QString ScriptLine::finish()
{
    if (!m_values.isEmpty())
        fail(QStringLiteral("\"%1\" does not know \"%2\"").arg(keyword, m_values.firstKey()));
    return failed() ? QStringLiteral("line %1: %2").arg(number).arg(m_error) : QString();
}

bool cutScript(const QString &text, QVector<ScriptLine> *lines, QString *error)
{
    const QStringList rawLines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < rawLines.size(); ++i) {
        const auto fail = [&](const QString &message) {
            *error = QStringLiteral("line %1: %2").arg(i + 1).arg(message);
            return false;
        };
        QStringList words;
        if (!cutWords(rawLines.at(i), &words))
            return fail(QStringLiteral("a quote is not closed"));
        if (words.isEmpty())
            continue;
        ScriptLine line;
        line.number = i + 1;
        line.keyword = words.takeFirst();
        for (const QString &word : qAsConst(words)) {
            const int equals = word.indexOf(QLatin1Char('='));
            if (equals < 1)
                return fail(QStringLiteral("\"%1\" is no key=value").arg(word));
            if (line.has(word.left(equals)))
                return fail(QStringLiteral("\"%1\" stands twice").arg(word.left(equals)));
            line.add(word.left(equals), word.mid(equals + 1));
        }
        lines->append(line);
    }
    return true;
}

} // namespace sim
