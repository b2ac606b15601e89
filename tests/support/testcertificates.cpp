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
    m_authority = request(QStringLiteral("authority"),
                          {QStringLiteral("-addext"), QStringLiteral("basicConstraints=critical,CA:TRUE")})
                      .certificate;
}

CertifiedKey TestCertificates::certified(const QString &subjectNames)
{
    const QString name = QStringLiteral("server%1").arg(++m_count);
    return request(name, {QStringLiteral("-CA"), path(QStringLiteral("authority.crt")),
                          QStringLiteral("-CAkey"), path(QStringLiteral("authority.key")),
                          QStringLiteral("-addext"), QStringLiteral("subjectAltName=") + subjectNames});
}

void TestCertificates::trustAuthority() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates({m_authority});
    QSslConfiguration::setDefaultConfiguration(configuration);
}

CertifiedKey TestCertificates::request(const QString &name, const QStringList &options)
{
    const QString keyFile = path(name + QStringLiteral(".key"));
    const QString certificateFile = path(name + QStringLiteral(".crt"));
    runOpenssl(QStringList{QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-config"),
                           path(QStringLiteral("req.cnf")), QStringLiteral("-newkey"), QStringLiteral("ec"),
                           QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:prime256v1"),
                           QStringLiteral("-nodes"), QStringLiteral("-days"), QStringLiteral("30"),
                           QStringLiteral("-subj"), QStringLiteral("/CN=Test ") + name,
                           QStringLiteral("-keyout"), keyFile, QStringLiteral("-out"), certificateFile} +
               options);
    const CertifiedKey made{QSslCertificate(contentsOf(certificateFile)),
                            QSslKey(contentsOf(keyFile), QSsl::Ec)};
    if (made.certificate.isNull() || made.key.isNull())
        qFatal("openssl made no certificate");
    return made;
}
