#include "portholder.h"

#include <QFile>
#include <QSerialPort>
#include <array>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr char kHasIt = 'y';

/// Tells the test that the port is taken, and waits for its word to end.
void hold(int leash)
{
    char word = kHasIt;
    if (::write(leash, &word, 1) == 1)
        (void)::read(leash, &word, 1);
}

void holdExclusively(const QByteArray &device, int leash)
{
    const int port = ::open(device.constData(), O_RDWR | O_NOCTTY);
    if (port >= 0 && ::ioctl(port, TIOCEXCL) == 0)
        hold(leash);
    // The mark would outlast this process: the device is open elsewhere.
    ::ioctl(port, TIOCNXCL);
    ::close(port);
}

void holdByLockFile(const QString &device, int leash)
{
    QSerialPort port(device);
    if (port.open(QIODevice::ReadWrite) && ::ioctl(port.handle(), TIOCNXCL) == 0)
        hold(leash);
}

} // namespace

PortHolder::PortHolder(const QString &device, Manner manner)
{
    std::array<int, 2> leash{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, leash.data()) != 0)
        qFatal("The other program cannot be led");
    m_process = ::fork();
    if (m_process == 0) {
        ::close(leash[0]);
        switch (manner) {
        case Manner::Exclusive:
            holdExclusively(QFile::encodeName(device), leash[1]);
            break;
        case Manner::LockFile:
            holdByLockFile(device, leash[1]);
            break;
        }
        ::_exit(0);
    }
    ::close(leash[1]);
    m_leash = leash[0];
    char word = 0;
    if (m_process < 0 || ::read(m_leash, &word, 1) != 1 || word != kHasIt)
        qFatal("The port cannot be taken");
}

void PortHolder::end()
{
    if (m_process < 0)
        return;
    ::close(m_leash);
    ::waitpid(m_process, nullptr, 0);
    m_process = -1;
}
