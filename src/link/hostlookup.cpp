#include "link/hostlookup.h"

#include <QSemaphore>
#include <QThread>
#include <utility>

/// Shared with the thread of the look-up, because either side may end first.
struct HostLookup::Answer
{
    QHostInfo info;
    QSemaphore ready;
};

HostLookup::HostLookup(Function lookUp)
    : m_lookUp(std::move(lookUp))
{}

std::optional<HostLookup::Addresses> HostLookup::evidentAddresses(const QString &host)
{
    if (host.isEmpty())
        return Addresses();
    const QHostAddress address(host);
    if (!address.isNull())
        return Addresses{address};
    return std::nullopt;
}

void HostLookup::begin(const QString &host)
{
    if (evidentAddresses(host))
        return;
    forgetAnsweredBut(host);
    auto &answer = m_pending[host];
    if (!answer)
        answer = startThread(host);
}

QList<QHostAddress> HostLookup::addressesWithin(std::chrono::milliseconds limit, const QString &host)
{
    return take(limit, host).value_or(Addresses());
}

std::optional<QList<QHostAddress>> HostLookup::addressesIfAnswered(const QString &host)
{
    return take(std::chrono::milliseconds(0), host);
}

/// No value if the answer has not come when `limit` is over.
std::optional<HostLookup::Addresses> HostLookup::take(std::chrono::milliseconds limit, const QString &host)
{
    if (const auto evident = evidentAddresses(host))
        return evident;
    begin(host);
    if (!m_pending.value(host)->ready.tryAcquire(1, int(limit.count())))
        return std::nullopt;
    return m_pending.take(host)->info.addresses();
}

std::shared_ptr<HostLookup::Answer> HostLookup::startThread(const QString &host) const
{
    auto answer = std::make_shared<Answer>();
    QThread *thread = QThread::create([lookUp = m_lookUp, host, answer] {
        answer->info = lookUp(host);
        answer->ready.release();
    });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
    return answer;
}

/// Late answers of hosts that were left meanwhile.
void HostLookup::forgetAnsweredBut(const QString &host)
{
    for (auto it = m_pending.begin(); it != m_pending.end();) {
        const bool idle = it.key() != host && it.value()->ready.available() > 0;
        it = idle ? m_pending.erase(it) : std::next(it);
    }
}
