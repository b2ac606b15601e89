#include "link/hostlookup.h"

#include <QSemaphore>
#include <QThread>
#include <memory>

namespace {

using LookUp = std::function<QHostInfo(const QString &)>;

struct Answer
{
    QHostInfo info;
    QSemaphore ready;
};

/// Shares the answer with the one who asked, because either may end first.
class LookUpThread final : public QThread
{
public:
    LookUpThread(const LookUp &lookUp, const QString &host, const std::shared_ptr<Answer> &answer)
        : m_lookUp(lookUp)
        , m_host(host)
        , m_answer(answer)
    {}

protected:
    void run() override
    {
        m_answer->info = m_lookUp(m_host);
        m_answer->ready.release();
    }

private:
    LookUp m_lookUp;
    QString m_host;
    std::shared_ptr<Answer> m_answer;
};

} // namespace

QList<QHostAddress> addressesWithin(std::chrono::milliseconds limit, const QString &host,
                                    const LookUp &lookUp)
{
    const QHostAddress address(host);
    if (!address.isNull())
        return {address};
    const auto answer = std::make_shared<Answer>();
    auto *thread = new LookUpThread(lookUp, host, answer);
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
    if (!answer->ready.tryAcquire(1, int(limit.count())))
        return {};
    return answer->info.addresses();
}
