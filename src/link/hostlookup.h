#pragma once

#include <QHash>
#include <QHostAddress>
#include <QHostInfo>
#include <QList>
#include <chrono>
#include <functional>
#include <memory>

/// Looks up host names without waiting longer than asked for. A look-up that takes longer goes on by itself,
/// and its answer serves the next attempt; nothing waits for it, not even the end of the program.
class HostLookup
{
public:
    using Function = std::function<QHostInfo(const QString &)>;

    /// `lookUp` is called on a thread of its own, once at a time for each host.
    explicit HostLookup(Function lookUp = &QHostInfo::fromName);

    /// The addresses that `host` means: the text itself if it is an address, otherwise what the look-up of
    /// the name finds. None if the name is empty or unknown, or not found yet when `limit` is over.
    QList<QHostAddress> addressesWithin(std::chrono::milliseconds limit, const QString &host);

private:
    struct Answer;

    std::shared_ptr<Answer> begin(const QString &host) const;
    void forgetAnsweredBut(const QString &host);

    Function m_lookUp;
    QHash<QString, std::shared_ptr<Answer>> m_pending; ///< look-ups whose answer nobody has taken
};
