#include "plainport.h"

#include "sim/connection.h"

#include <QDir>
#include <QFileInfo>
#include <QSocketNotifier>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace {

class PlainConnection final : public sim::Connection
{
public:
    PlainConnection(int master, QObject *parent)
        : Connection(QStringLiteral("port"), parent)
        , m_master(master)
        , m_notifier(master, QSocketNotifier::Read)
    {
        connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
            std::array<char, 4096> chunk;
            const ssize_t size = ::read(m_master, chunk.data(), chunk.size());
            if (size > 0)
                emit received(QByteArray(chunk.data(), static_cast<int>(size)));
        });
    }

    void send(const QByteArray &bytes) override
    {
        const ssize_t size = ::write(m_master, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        if (size < bytes.size())
            emit lost(bytes.size() - static_cast<int>(qMax<ssize_t>(0, size)));
    }

    void close(sim::Milliseconds absence) override { Q_UNUSED(absence) }

private:
    const int m_master;
    QSocketNotifier m_notifier;
};

} // namespace

PlainPort::PlainPort(const QString &name)
    : m_name(name)
    , m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0)
        qFatal("No pseudo terminal to be had");
    m_device = QFile::decodeName(::ptsname(m_master));
    m_peer = ::open(::ptsname(m_master), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (m_peer < 0 || ::tcgetattr(m_peer, &settings) != 0)
        qFatal("The pseudo terminal cannot be opened");
    ::cfmakeraw(&settings);
    ::tcsetattr(m_peer, TCSANOW, &settings);
}

PlainPort::~PlainPort()
{
    qDeleteAll(children()); // they look at the terminal
    QFile::remove(m_name);
    ::close(m_peer);
    ::close(m_master);
}

void PlainPort::plug()
{
    QDir().mkpath(QFileInfo(m_name).absolutePath());
    if (!QFile::link(m_device, m_name))
        qFatal("The port gets no name");
    emit connected(new PlainConnection(m_master, this));
}

void PlainPort::setPermissions(QFile::Permissions permissions) const
{
    if (!QFile::setPermissions(m_device, permissions))
        qFatal("The permissions of the pseudo terminal cannot be changed");
}
