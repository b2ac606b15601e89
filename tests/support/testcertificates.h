#pragma once

#include <QSslCertificate>
#include <QSslKey>
#include <QStringList>
#include <QTemporaryDir>

/// A certificate with its private key.
struct CertifiedKey
{
    QSslCertificate certificate;
    QSslKey key;
};

/// Makes certificates for test servers in a folder of its own, which goes with the object. Ends the program
/// if that fails.
class TestCertificates
{
public:
    TestCertificates();

    /// Signed by the authority of this object. `subjectNames` as in "DNS:localhost,IP:127.0.0.1".
    CertifiedKey certified(const QString &subjectNames);

    /// The same, but its time ended a day ago.
    CertifiedKey expired(const QString &subjectNames);

    /// Has this authority, and no other, trusted wherever the default configuration is used.
    void trustAuthority() const;

private:
    QString nextServer();
    QStringList requestWithKey(const QString &name) const; ///< what makes openssl ask for a certificate
    QStringList validFromNow(const QString &name) const;   ///< and makes it give one at once
    QStringList authority() const;                         ///< signs it
    static QStringList subject(const QString &names);
    CertifiedKey made(const QString &name) const;

    QString keyFile(const QString &name) const { return path(name + QStringLiteral(".key")); }
    QString certificateFile(const QString &name) const { return path(name + QStringLiteral(".crt")); }
    QString path(const QString &file) const { return m_folder.filePath(file); }

    QTemporaryDir m_folder;
    QSslCertificate m_authority;
    int m_count = 0;
};
