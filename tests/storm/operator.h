#pragma once

#include "gestures.h"

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <optional>

class QWidget;

namespace storm {

class Hands;
class Program;
class StallMeter;

/// Decides what is done next, by chance, and sees to it that each dialog is opened and left in each of its
/// ways.
class Operator : public QObject
{
    Q_OBJECT

public:
    Operator(Program &program, DialogBook &book, StallMeter &meter, quint32 seed, QObject *parent = nullptr);
    ~Operator() override;

    /// Works on, whatever comes.
    void work();
    /// Opens dialogs and leaves them, those of this list that were not left in all of their ways, fast, and
    /// opens all lists of those that stay; then emits done().
    void visit(const QStringList &dialogs);
    /// Leaves all dialogs and sees to a live link, to this one if one is given; then emits done(), and rests.
    void leaveAll(const std::optional<Comm_Type> &link = {});
    /// Leaves all dialogs whatever the link is; then the same.
    void leaveDialogs();
    /// Opens the gateway's panel until it is connected, and leaves it so; then the same.
    void connectPanel();
    void rest();

    int gestureCount() const { return m_gestureCount; }
    int actCount() const;
    /// Number of gestures by their first words.
    QMap<QString, int> gesturesByKind() const { return m_byKind; }

    /// Prints each gesture.
    void setVerbose(bool verbose) { m_isVerbose = verbose; }

signals:
    void done();
    /// Only a chain whose modules differ in their firmware opens the dialog that is wanted now.
    void mismatchWanted();

private:
    enum class Mode { Rest, Work, Visit, LeaveAll, LeaveDialogs, ConnectPanel };

    void setMode(Mode mode);
    void decide();
    QString nextGesture();
    QString leaveNext();
    QString connectNext();
    QString pursue();
    QString openGoal(const DialogKind &goal, QWidget *front);
    QString playWith(QWidget *front);
    QString useMainWindow();
    QString leaveSomehow(QWidget *dialog);
    Way someWay(const QWidget &dialog);
    void chooseGoal(const QStringList &dialogs);
    QStringList unvisited() const;
    QString visitNext();
    QString openSomeList();
    bool isLinkLive() const;
    bool isLinkWanted() const;
    bool isLinkDead();
    static QWidget *frontDialog();
    static QList<QWidget *> openDialogs();

    Program &m_program;
    DialogBook &m_book;
    StallMeter &m_meter;
    Hands *m_hands; // child
    Chance m_chance;
    Gestures m_gestures;
    Mode m_mode = Mode::Rest;
    QStringList m_tour; ///< dialogs to be visited
    QString m_goal;     ///< dialog that is to be opened or left in a further way; empty: none
    std::optional<Comm_Type> m_wantedLink; ///< nothing: any
    int m_tries = 0;
    bool m_hasOpenedLists = false; ///< those of the gateway's panel
    QElapsedTimer m_deadSince;
    int m_gestureCount = 0;
    QMap<QString, int> m_byKind;
    bool m_isVerbose = false;
};

} // namespace storm
