#pragma once

#include "protocol/records/groupcommand.h"

#include <QMetaMethod>
#include <QObject>
#include <QStringList>
#include <QVector>
#include <functional>
#include <string>

/// Writes down every signal of an object's class and of its bases up to, and without, `base`, in the order
/// in which they come: "Signal_SendShuntState(139)".
class SignalRecorder : public QObject
{
public:
    SignalRecorder(const QObject &sender, const QMetaObject &base)
    {
        const QMetaObject *meta = sender.metaObject();
        for (int index = base.methodCount(); index < meta->methodCount(); ++index) {
            if (meta->method(index).methodType() != QMetaMethod::Signal)
                continue;
            m_signals.push_back(meta->method(index));
            QMetaObject::connect(&sender, index, this, slotOffset() + m_signals.size() - 1);
        }
    }

    /// What came since the last call.
    QStringList take()
    {
        QStringList taken;
        taken.swap(m_lines);
        return taken;
    }

    /// Called while a signal is emitted, after it was written down.
    std::function<void()> onSignal;

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (id < 0 || call != QMetaObject::InvokeMetaMethod)
            return id;
        m_lines.append(line(m_signals.at(id), arguments + 1));
        if (onSignal)
            onSignal();
        return -1;
    }

private:
    static int slotOffset() { return QObject::staticMetaObject.methodCount(); }

    static QString text(const QByteArray &type, const void *value)
    {
        if (type == "int")
            return QString::number(*static_cast<const int *>(value));
        if (type == "uchar")
            return QString::number(*static_cast<const uchar *>(value));
        if (type == "bool")
            return *static_cast<const bool *>(value) ? QStringLiteral("true") : QStringLiteral("false");
        if (type == "std::string&")
            return QString::fromStdString(*static_cast<const std::string *>(value));
        if (type == "GroupCommand") {
            const auto &command = *static_cast<const GroupCommand *>(value);
            return QStringLiteral("%1,%2,%3").arg(command.moduleType).arg(command.command).arg(command.value);
        }
        qFatal("no text for the type %s", type.constData());
        return {};
    }

    static QString line(const QMetaMethod &signal, void **arguments)
    {
        QStringList texts;
        const QList<QByteArray> types = signal.parameterTypes();
        for (int i = 0; i < types.size(); ++i)
            texts.append(text(types.at(i), arguments[i]));
        return QString::fromLatin1(signal.name()) + '(' + texts.join(QStringLiteral(", ")) + ')';
    }

    QVector<QMetaMethod> m_signals;
    QStringList m_lines;
};
