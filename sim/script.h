#pragma once

#include <QMap>
#include <QString>
#include <QVector>

namespace sim {

/// One line of a description: a keyword and pairs "key=value". Reading takes a value out, so that
/// `finish` can tell which keys nobody knew. The first error is kept; later ones do not replace it.
class ScriptLine
{
public:
    int number = 0; ///< of the line in its text, from 1
    QString keyword;

    void add(const QString &key, const QString &value) { m_values.insert(key, value); }
    bool has(const QString &key) const { return m_values.contains(key); }

    /// The value of a key, or what stands in `current` already when the key is absent.
    QString text(const QString &key, const QString &current);
    int integer(const QString &key, int current, int minimum, int maximum);
    double real(const QString &key, double current, double minimum, double maximum);
    /// "yes" or "no".
    bool flag(const QString &key, bool current);
    /// The position of the value in `words`.
    int word(const QString &key, int current, const QStringList &words);

    void fail(const QString &message);
    bool failed() const { return !m_error.isEmpty(); }
    /// The first error with the line's number in front; also names a key that was not asked for. Empty if
    /// the line is right.
    QString finish();

private:
    bool take(const QString &key, QString *value);

    QMap<QString, QString> m_values;
    QString m_error;
};

/// Cuts a text into lines. Empty lines and everything behind a "#" outside quotes are left out; a value with
/// blanks or "#" stands in double quotes. False with an error text that names the line if one cannot be cut.
bool cutScript(const QString &text, QVector<ScriptLine> *lines, QString *error);

} // namespace sim
