#pragma once

#include "channelfixture.h"
#include "operatorview.h"
#include "support/messagecatcher.h"

#include <QStringList>
#include <functional>

class PlainPort;

/// The program before a simulated chain whose link gets lost, with the program's own periods but for the
/// turns of the polling. Time stands still from the start, and passes by time.skip() and pass() only.
class LossFixture : public ChannelFixture
{
public:
    explicit LossFixture(LinkKind kind);

    /// How far the session is when the link goes.
    enum class Moment {
        FirstReply, ///< the system status was asked for and has not come
        Walk,       ///< two modules were read, the reply of the next one has not come
        Cycle,      ///< the chain is read and polled
    };

    /// A chain of a controller, a power module and kRows modules; and another one, in which each value that
    /// the operator can see is different.
    static QString chain();
    static QString otherChain();
    static constexpr int kRows = 4;

    MessageCatcher log;

    /// Starts the program before chain(), or what is plugged already, and returns at this moment. The device
    /// stays silent from there on, unless the moment is the cycle.
    void startUpTo(Moment moment);

    /// When the session gives up waiting, counted from the moment.
    std::chrono::milliseconds patience(Moment moment) const;

    /// Plugs otherChain() behind a port that stays the same whoever opens it, and which the user of the test
    /// may use.
    PlainPort *plugPlainPort();

    /// The log will tell so many times why this port cannot be opened.
    static void announceAdvice(const PlainPort &port, int times);

    /// The chain goes away with its port or connection; returns when the program has noticed.
    void unplugAndNotice();

    /// Lets time pass in steps of a second, each with a turn of the event loop.
    void pass(std::chrono::seconds by);

    /// Lets time pass while the chain is polled and the session gets its replies.
    void poll(std::chrono::seconds by);

    /// The device has another serial number and another powering mode than what was read.
    void changeChain() const;

    /// The operator chooses the connection that he has: by the dialog if it is a COM port.
    void chooseAgain();

    // The views that a lost link knows.
    QString sight() const { return operatorview::sight(*this); }
    static QString unavailable(const QString &line = QStringLiteral("COM Port unavailable: COM40"));
    static QString retrying(const QString &line = QStringLiteral("Retrying to connect with Torvex"));
    static QString opened();

    /// Returns when the whole chain is there and polled; fails unless all that is shown is what the simulator
    /// has, and nothing was sent that nobody asked for.
    void expectWhole();

    /// Fails unless nothing of the chain is left, no window is open but these, and the operator can open
    /// every dialog.
    void expectNothingShown(const QStringList &windows = {}) const;

    /// Fails unless the operator sees that the link could not be opened when the program started, and
    /// expectNoAttempt().
    void expectUnavailableFromTheStart();

    /// Fails if anything is tried, or happens, within a minute.
    void expectNoAttempt();

    /// Time passes until the session misses a reply, `patience` from now. What was seen `before` stays so
    /// long, then fails unless the rows go. `windows` stay.
    void expectRowsToGo(const QString &before, std::chrono::milliseconds patience,
                        const QStringList &windows = {});

    /// A minute passes, which begins with the attempt that comes at second `from` of the loss; fails unless
    /// each attempt in it does.
    void expectFailingMinute(int from);

    /// Fails unless nothing is tried yet, and the chain is read when the operator has chosen the connection
    /// again.
    void expectBackByChoice();

    /// Fails unless the next attempt works, the chain is read, and no further attempt is made.
    void expectBackByTheNextRetry();

    /// Lines of the log that are exactly this one.
    int logged(const QString &line) const { return log.lines().count(line); }
    int losses() const { return logged(QStringLiteral("Timer started")); }
    int retries() const { return logged(QStringLiteral("Timer function to reconnect")); }
    /// Attempts to open the link: over TCP all, of a port those that fail.
    int attempts() const;
    int recoveries() const { return logged(QStringLiteral("Timer Stopped")); }
    /// Warnings and worse, but for what the test platform says of itself.
    QStringList warnings() const;
};

Q_DECLARE_METATYPE(LossFixture::Moment)

/// Calls `addRow` for each moment, with a name for the row.
void addMoments(const std::function<void(const char *name, LossFixture::Moment moment)> &addRow);

/// Of a thousand turns of the event loop that do not wait, the number that found something to do. A program
/// that waits for something has nothing to do; one that burns a processor has in every turn.
int busyTurns();

/// Above what timers make of it on a machine with much else to do.
constexpr int kFewTurns = 100;
