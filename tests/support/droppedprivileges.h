#pragma once

#include <QFile>
#include <QtTest>
#include <unistd.h>

/// Makes a test that runs as the superuser an ordinary user while it lives.
class DroppedPrivileges
{
public:
    /// What a folder must allow so that the ordinary user finds what is in it.
    static constexpr QFile::Permissions kOpenFolder = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                                      QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                                      QFile::ExeOther;

    DroppedPrivileges()
    {
        if (::geteuid() == 0)
            m_dropped = ::setresuid(kNobody, kNobody, 0) == 0;
    }

    ~DroppedPrivileges()
    {
        if (m_dropped && ::setresuid(0, 0, 0) != 0)
            qFatal("The test cannot become the superuser again");
    }

    DroppedPrivileges(const DroppedPrivileges &) = delete;
    DroppedPrivileges &operator=(const DroppedPrivileges &) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool m_dropped = false;
};
