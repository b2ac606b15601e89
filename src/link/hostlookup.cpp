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

QList<QHostAddress> HostLookup::addressesWithin(std::chrono::milliseconds limit, const QString &host)
{
    if (host.isEmpty())
        return {};
    const QHostAddress address(host);
    if (!address.isNull())
        return {address};
    forgetAnsweredBut(host);
    auto &answer = m_pending[host];
    if (!answer)
        answer = begin(host);
    if (!answer->ready.tryAcquire(1, int(limit.count())))
        return {};
    const auto addresses = answer->info.addresses();
    m_pending.remove(host);
    return addresses;
}

std::shared_ptr<HostLookup::Answer> HostLookup::begin(const QString &host) const
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
