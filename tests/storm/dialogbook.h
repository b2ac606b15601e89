#pragma once

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QVector>

class QAbstractButton;
class QWidget;

namespace storm {

/// How an operator leaves a dialog.
enum class Way {
    Escape,
    Close,  ///< the title bar
    Accept, ///< Ok, Yes, Save and the like
    Refuse  ///< Cancel, No
};

QString nameOf(Way way);

/// A dialog or window of the program that has to be opened and left in each of its ways.
struct DialogKind
{
    QString name;
    QString host; ///< name of the dialog from which it is opened; empty: the main window
    QVector<Way> ways;
};

/// The dialogs of the program.
const QVector<DialogKind> &dialogKinds();
/// Null for a dialog that is none of the program's own, as one that the library opens.
const DialogKind *dialogKind(const QString &name);

/// A name for a dialog: its class, or its object name where the class is one of the library.
QString dialogName(const QWidget &dialog);

/// The button of the dialog by which it is left so; null if it has none.
QAbstractButton *buttonOf(const QWidget &dialog, Way way);

/// Counts the dialogs that are opened and how they are left, from its construction on.
class DialogBook : public QObject
{
    Q_OBJECT

public:
    explicit DialogBook(QObject *parent = nullptr);
    ~DialogBook() override;

    /// The operator is about to leave the dialog so. If it goes, it went that way.
    void expectLeave(QWidget *dialog, Way way);
    /// He does something else. If the dialog is still there, it refused to go; how it goes later is no way of
    /// his.
    void forgetLeave() { m_leaving.clear(); }

    /// The ways in which a dialog was not left yet; all of them if it was not opened.
    QVector<Way> missingWays(const DialogKind &kind) const;
    /// Kinds with missing ways, by name.
    QStringList missing() const;

    /// Names of dialogs that were opened and are neither a kind nor the library's.
    QStringList strangers() const { return m_strangers; }

    int openings() const;
    /// One line for each dialog that was opened.
    QStringList report() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Count
    {
        int opened = 0;
        int byItself = 0; ///< went without the operator, as with its row
        QMap<Way, int> left;
    };

    QMap<QString, Count> m_counts;
    QStringList m_strangers;
    QPointer<QWidget> m_leaving;
    Way m_way = Way::Escape;
};

/// Windows that the book counts.
bool isDialog(const QObject &object);
/// Whether the library opened it from a dialog for files or for printing, as the question whether a file may
/// be replaced.
bool isOfTheLibrary(const QWidget &dialog);

} // namespace storm
