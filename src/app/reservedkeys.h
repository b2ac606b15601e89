#pragma once

#include <QKeySequence>
#include <QObject>

/// Keeps a shortcut for the program. On some desktops text fields take keys for themselves, as Ctrl+U, which
/// deletes the line: the shortcut would do that in place of what it is for.
class ReservedKeys : public QObject
{
    Q_OBJECT

public:
    /// Watches the whole application until it is deleted.
    ReservedKeys(const QKeySequence &keys, QObject *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const QKeySequence m_keys;
};
