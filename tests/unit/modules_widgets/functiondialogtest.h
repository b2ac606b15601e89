#pragma once

#include "modules/widgets/changemoduletype.h"
#include "support/childbyname.h"

#include <QPushButton>
#include <QStringList>
#include <QtTest>
#include <memory>

inline const QString kIepe = QString::fromUtf8("IEPE/ICP\xC2\xAE");

/// The function dialog of a universal module, for the tests of it: a new one for each test function.
class FunctionDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(m_dialog.get(), name);
    }
    QPushButton *ok() const { return child<QPushButton>("OkBtn"); }

    /// Object name of the checked function's button.
    QString checked() const;

    /// Opens the dialog for a channel that has this function.
    void open(const QString &function, const QString &number = QStringLiteral("7"));
    void choose(const char *button);
    static void sendKey(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeat);

    std::unique_ptr<ChangeModuleType> m_dialog;
    QStringList m_events; ///< signals of the dialog, in their order
};
