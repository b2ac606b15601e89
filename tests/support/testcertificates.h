#pragma once

#include <QSslCertificate>
#include <QSslKey>
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

    /// Has this authority, and no other, trusted wherever the default configuration is used.
    void trustAuthority() const;

private:
    CertifiedKey request(const QString &name, const QStringList &options);
    QString path(const QString &file) const { return m_folder.filePath(file); }

    QTemporaryDir m_folder;
    QSslCertificate m_authority;
    int m_count = 0;
};
