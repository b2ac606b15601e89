#include "app/reservedkeys.h"

#include <QCoreApplication>
#include <QKeyEvent>

ReservedKeys::ReservedKeys(const QKeySequence &keys, QObject *parent)
    : QObject(parent)
    , m_keys(keys)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool ReservedKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return QObject::eventFilter(watched, event);
    const auto *press = static_cast<const QKeyEvent *>(event);
    if (QKeySequence(press->key() | static_cast<int>(press->modifiers())) != m_keys)
        return false;
    event->ignore(); // nobody is asked, nobody wants it
    return true;
}
