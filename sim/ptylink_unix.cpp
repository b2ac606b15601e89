#include "sim/ptylink.h"

#include "sim/connection.h"

#include "base/timesource.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr std::chrono::milliseconds kIdlePeriod{25};
constexpr int kRepairTurns = 20; ///< of the idle period
constexpr int kReadSize = 4096;

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// Points `name` at `target` in one step, so that nobody meets a name that leads nowhere.
bool pointName(const QString &name, const QString &target, QString *error)
{
    const QFileInfo info(name);
    if (info.exists() && !info.isSymLink()) {
        *error = QStringLiteral("%1 exists and is no symbolic link").arg(name);
        return false;
    }
    if (!QDir().mkpath(info.absolutePath())) {
        *error = QStringLiteral("%1: the folder cannot be made").arg(name);
        return false;
    }
    const QByteArray path = QFile::encodeName(name);
    const QByteArray fresh = path + '.' + QByteArray::number(QCoreApplication::applicationPid());
    ::unlink(fresh.constData());
    if (::symlink(QFile::encodeName(target).constData(), fresh.constData()) == 0 &&
        ::rename(fresh.constData(), path.constData()) == 0)
        return true;
    *error = QStringLiteral("%1: %2").arg(name, systemError());
    ::unlink(fresh.constData());
    return false;
}

} // namespace

/// The two sides of a pseudo terminal, of which the device holds the master. Linux tells by a hang-up that
/// nobody has the other side open; it then says so for ever, so reading stops and a timer looks for the end
/// of the hang-up.
class PtyLink::Terminal final : public Connection
{
public:
    Terminal(TimeSource &time, const QString &linkName, PtyLink &link)
        : Connection(QStringLiteral("pty"), &link)
        , m_link(link)
        , m_linkName(linkName)
        , m_idleTimer(time.createTimer(this))
    {
        connect(m_idleTimer, &Timer::timeout, this, &Terminal::lookForPeer);
    }

    ~Terminal() override
    {
        release();
        removeName();
    }

    bool make(QString *error)
    {
        release();
        m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        const char *path = nullptr;
        if (m_master >= 0 && ::grantpt(m_master) == 0 && ::unlockpt(m_master) == 0)
            path = ::ptsname(m_master);
        if (!path) {
            *error = QStringLiteral("no pseudo terminal: %1").arg(systemError());
            return false;
        }
        m_path = QString::fromLocal8Bit(path);
        m_notifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &Terminal::read);
        if (!cleanPeerSide()) {
            *error = QStringLiteral("%1: %2").arg(m_path, systemError());
            return false;
        }
        becomeIdle();
        return pointName(m_linkName, m_path, error);
    }

    void send(const QByteArray &bytes) override
    {
        // A full buffer means that the peer does not read: the bytes are lost, as without flow control.
        ssize_t written = 0;
        if (m_master >= 0 && !peerIsGone())
            written = ::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size()));
        const int taken = static_cast<int>(qMax<ssize_t>(0, written));
        if (taken < bytes.size())
            emit lost(bytes.size() - taken);
    }

    void close(std::chrono::milliseconds absence) override
    {
        if (m_master < 0)
            return;
        m_idleTimer->stop();
        release();
        removeName();
        emit closed();
        deleteLater();
        m_link.comeBackAfter(absence);
    }

private:
    void removeName()
    {
        if (!m_path.isEmpty() && QFile::symLinkTarget(m_linkName) == m_path)
            QFile::remove(m_linkName);
        m_path.clear(); // it may soon be another terminal's
    }

    void release()
    {
        if (m_notifier) {
            // It may be the sender of the signal that leads here.
            m_notifier->setEnabled(false);
            m_notifier->deleteLater();
        }
        m_notifier = nullptr;
        if (m_master >= 0)
            ::close(m_master);
        m_master = -1;
    }

    /// Makes the peer's side raw and throws away what the last peer did not read. Somebody who has opened it
    /// meanwhile loses nothing by that: his requests wait on the master's side. Fails where a peer took it
    /// for himself alone; if he died without giving it back, a new terminal under the same name helps.
    bool cleanPeerSide() const
    {
        const int peer = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (peer < 0)
            return false;
        termios settings{};
        const bool isKnown = ::tcgetattr(peer, &settings) == 0;
        const bool isRaw = isKnown && (settings.c_lflag & (ICANON | ECHO | ISIG)) == 0 &&
                           (settings.c_oflag & OPOST) == 0 && (settings.c_iflag & (ICRNL | IXON)) == 0;
        ::cfmakeraw(&settings);
        const bool isSet = isRaw || (isKnown && ::tcsetattr(peer, TCSANOW, &settings) == 0);
        ::tcflush(peer, TCIFLUSH);
        ::close(peer);
        return isSet;
    }

    void becomeIdle()
    {
        m_notifier->setEnabled(false);
        m_idleTimer->start(kIdlePeriod);
    }

    bool peerIsGone() const
    {
        pollfd state{m_master, POLLIN, 0};
        return ::poll(&state, 1, 0) > 0 && (state.revents & POLLHUP) != 0;
    }

    bool hasBytes() const
    {
        pollfd state{m_master, POLLIN, 0};
        return ::poll(&state, 1, 0) > 0 && (state.revents & POLLIN) != 0;
    }

    void lookForPeer()
    {
        if (!peerIsGone()) {
            m_idleTimer->stop();
            m_notifier->setEnabled(true);
        } else if (hasBytes()) {
            readPiece(); // of somebody who has come and gone between two turns
        } else if (++m_idleTurns % kRepairTurns == 0) {
            repair(); // he may also have taken the terminal for himself alone
        }
    }

    void read()
    {
        if (!readPiece())
            handleHangUp();
    }

    /// False if there is nothing left to read and never will be from this peer.
    bool readPiece()
    {
        std::array<char, kReadSize> buffer;
        const ssize_t size = ::read(m_master, buffer.data(), buffer.size());
        if (size > 0)
            emit received(QByteArray(buffer.data(), static_cast<int>(size)));
        return size > 0 || (size < 0 && (errno == EAGAIN || errno == EINTR));
    }

    void handleHangUp()
    {
        if (!peerIsGone())
            return; // somebody has opened it again at once
        becomeIdle();
        repair();
    }

    void repair()
    {
        QString error;
        if (cleanPeerSide() || !peerIsGone() || make(&error))
            return;
        m_idleTimer->stop();
        qWarning("%s", qPrintable(error));
    }

    PtyLink &m_link;
    const QString m_linkName;
    Timer *m_idleTimer;
    QSocketNotifier *m_notifier = nullptr;
    QString m_path;
    int m_master = -1;
    int m_idleTurns = 0;
};

PtyLink::PtyLink(TimeSource &time, QObject *parent)
    : Link(parent)
    , m_time(time)
{}

PtyLink::~PtyLink() = default;

bool PtyLink::open(const QString &name, QString *error)
{
    m_name = QDir::cleanPath(QDir().absoluteFilePath(name));
    return plugIn(error);
}

bool PtyLink::plugIn(QString *error)
{
    auto terminal = std::make_unique<Terminal>(m_time, m_name, *this);
    if (!terminal->make(error))
        return false;
    emit connected(terminal.release()); // this object's child
    return true;
}

void PtyLink::comeBackAfter(std::chrono::milliseconds absence)
{
    Timer *const timer = m_time.createTimer(this);
    timer->setSingleShot(true);
    connect(timer, &Timer::timeout, this, [this, timer] {
        timer->deleteLater();
        QString error;
        if (!plugIn(&error))
            qWarning("%s", qPrintable(error));
    });
    timer->start(absence);
}

} // namespace sim
