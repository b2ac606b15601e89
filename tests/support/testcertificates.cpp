#include "support/testcertificates.h"

#include <QFile>
#include <QProcess>
#include <QSslConfiguration>

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return file.readAll();
}

void runOpenssl(const QStringList &arguments)
{
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"), arguments);
    if (!openssl.waitForFinished() || openssl.exitStatus() != QProcess::NormalExit || openssl.exitCode() != 0)
        qFatal("openssl: %s", openssl.readAllStandardError().constData());
}

} // namespace

TestCertificates::TestCertificates()
{
    QFile configuration(path(QStringLiteral("req.cnf")));
    if (!configuration.open(QIODevice::WriteOnly))
        qFatal("no folder for certificates");
    configuration.write("[req]\ndistinguished_name=name\n[name]\n");
    configuration.close();
    const QString name = QStringLiteral("authority");
    runOpenssl(requestWithKey(name) + validFromNow(name) +
               QStringList{QStringLiteral("-addext"), QStringLiteral("basicConstraints=critical,CA:TRUE")});
    m_authority = made(name).certificate;
}

CertifiedKey TestCertificates::certified(const QString &subjectNames)
{
    const QString name = nextServer();
    runOpenssl(requestWithKey(name) + validFromNow(name) + authority() + subject(subjectNames));
    return made(name);
}

CertifiedKey TestCertificates::expired(const QString &subjectNames)
{
    const QString name = nextServer();
    const QString requestFile = path(name + QStringLiteral(".csr"));
    runOpenssl(requestWithKey(name) + subject(subjectNames) +
               QStringList{QStringLiteral("-out"), requestFile});
    runOpenssl(QStringList{QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"), requestFile,
                           QStringLiteral("-days"), QStringLiteral("-1"), QStringLiteral("-copy_extensions"),
                           QStringLiteral("copy"), QStringLiteral("-out"), certificateFile(name)} +
               authority());
    return made(name);
}

void TestCertificates::trustAuthority() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates({m_authority});
    QSslConfiguration::setDefaultConfiguration(configuration);
}

QString TestCertificates::nextServer()
{
    return QStringLiteral("server%1").arg(++m_count);
}

QStringList TestCertificates::requestWithKey(const QString &name) const
{
    return {QStringLiteral("req"),
            QStringLiteral("-config"),
            path(QStringLiteral("req.cnf")),
            QStringLiteral("-newkey"),
            QStringLiteral("ec"),
            QStringLiteral("-pkeyopt"),
            QStringLiteral("ec_paramgen_curve:prime256v1"),
            QStringLiteral("-nodes"),
            QStringLiteral("-subj"),
            QStringLiteral("/CN=Test ") + name,
            QStringLiteral("-keyout"),
            keyFile(name)};
}

QStringList TestCertificates::validFromNow(const QString &name) const
{
    return {QStringLiteral("-x509"), QStringLiteral("-days"), QStringLiteral("30"), QStringLiteral("-out"),
            certificateFile(name)};
}

QStringList TestCertificates::authority() const
{
    return {QStringLiteral("-CA"), certificateFile(QStringLiteral("authority")), QStringLiteral("-CAkey"),
            keyFile(QStringLiteral("authority"))};
}

QStringList TestCertificates::subject(const QString &names)
{
    return {QStringLiteral("-addext"), QStringLiteral("subjectAltName=") + names};
}

CertifiedKey TestCertificates::made(const QString &name) const
{
    const CertifiedKey made{QSslCertificate(contentsOf(certificateFile(name))),
                            QSslKey(contentsOf(keyFile(name)), QSsl::Ec)};
    if (made.certificate.isNull() || made.key.isNull())
        qFatal("openssl made no certificate");
    return made;
}
