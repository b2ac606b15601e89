#pragma once

#include <QHash>
#include <QHostAddress>
#include <QHostInfo>
#include <QList>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

/// Looks up host names without waiting longer than asked for, or without waiting at all. A look-up that takes
/// longer goes on by itself, and its answer serves the next attempt; nothing waits for it, not even the end
/// of the program.
class HostLookup
{
public:
    using Function = std::function<QHostInfo(const QString &)>;

    /// `lookUp` is called on a thread of its own, once at a time for each host.
    explicit HostLookup(Function lookUp = &QHostInfo::fromName);

    /// Begins the look-up of `host` for those who ask for its addresses later. Does nothing if one goes on or
    /// has an answer that nobody has taken, or if none is needed.
    void begin(const QString &host);

    /// The addresses that `host` means: the text itself if it is an address, otherwise what the look-up of
    /// the name finds. None if the name is empty or unknown, or not found yet when `limit` is over.
    QList<QHostAddress> addressesWithin(std::chrono::milliseconds limit, const QString &host);

    /// The same without waiting, to be asked again and again: no value while the look-up goes on, an empty
    /// list if the name is empty or unknown.
    std::optional<QList<QHostAddress>> addressesIfAnswered(const QString &host);

private:
    struct Answer;
    using Addresses = QList<QHostAddress>;

    /// What needs no look-up.
    static std::optional<Addresses> evidentAddresses(const QString &host);

    std::optional<Addresses> take(std::chrono::milliseconds limit, const QString &host);
    std::shared_ptr<Answer> startThread(const QString &host) const;
    void forgetAnsweredBut(const QString &host);

    Function m_lookUp;
    QHash<QString, std::shared_ptr<Answer>> m_pending; ///< look-ups whose answer nobody has taken
};
