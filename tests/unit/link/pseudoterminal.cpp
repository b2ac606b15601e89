#include "pseudoterminal.h"

#include <QFile>
#include <QtGlobal>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

PseudoTerminal::PseudoTerminal()
    : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
{
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0)
        qFatal("No pseudo terminal to be had");
    m_device = QFile::decodeName(::ptsname(m_master));
}

PseudoTerminal::~PseudoTerminal()
{
    vanish();
}

bool PseudoTerminal::write(const QByteArray &bytes)
{
    return ::write(m_master, bytes.constData(), std::size_t(bytes.size())) == bytes.size();
}

QByteArray PseudoTerminal::readAll()
{
    QByteArray bytes;
    std::array<char, 4096> chunk;
    for (;;) {
        const ssize_t size = ::read(m_master, chunk.data(), chunk.size());
        if (size <= 0)
            return bytes;
        bytes.append(chunk.data(), int(size));
    }
}

void PseudoTerminal::vanish()
{
    if (m_master >= 0)
        ::close(m_master);
    m_master = -1;
}
