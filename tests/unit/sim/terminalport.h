#pragma once

#include <QByteArray>
#include <QFile>
#include <QSocketNotifier>

#include <algorithm>
#include <fcntl.h>
#include <linux/capability.h>
#include <memory>
#include <sys/syscall.h>
#include <unistd.h>

/// The program's side of a terminal.
class Port : public QObject
{
public:
    explicit Port(const QString &name)
        : m_descriptor(::open(QFile::encodeName(name).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        if (m_descriptor < 0)
            return;
        m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
            char bytes[4096];
            const ssize_t size = ::read(m_descriptor, bytes, sizeof bytes);
            if (size > 0)
                received.append(bytes, static_cast<int>(size));
        });
    }

    ~Port() override
    {
        m_notifier.reset();
        ::close(m_descriptor);
    }

    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }
    bool write(const QByteArray &bytes)
    {
        return ::write(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
    }

    QByteArray received;

private:
    const int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// While it lives, the process lacks the right to open what another has taken for itself alone, as any user
/// but root does.
class NoAdministrator
{
public:
    NoAdministrator()
    {
        ::syscall(SYS_capget, &m_header, m_before);
        std::copy(std::begin(m_before), std::end(m_before), std::begin(m_now));
        m_now[CAP_TO_INDEX(CAP_SYS_ADMIN)].effective &= ~CAP_TO_MASK(CAP_SYS_ADMIN);
        ::syscall(SYS_capset, &m_header, m_now);
    }

    ~NoAdministrator() { ::syscall(SYS_capset, &m_header, m_before); }

    NoAdministrator(const NoAdministrator &) = delete;
    NoAdministrator &operator=(const NoAdministrator &) = delete;

private:
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_before[_LINUX_CAPABILITY_U32S_3]{};
    __user_cap_data_struct m_now[_LINUX_CAPABILITY_U32S_3]{};
};
