#include "app/deployment.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TstDeployment : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("VXCONFIG_DEPLOYMENT"); }

    void fileStandsBesideTheExecutable();
    void variableNamesAnotherFile();
    void missingFileGivesTheDefaults();
    void valuesAreRead();
    void missingKeysKeepTheirDefaults();
    void emptyValuesKeepTheirDefaults();
    void commaBelongsToTheAddress();
    void oddPortKeepsTheDefault_data();
    void oddPortKeepsTheDefault();

private:
    Deployment read(const QByteArray &text);

    QTemporaryDir m_folder;
};

Deployment TstDeployment::read(const QByteArray &text)
{
    const QString name = m_folder.path() + QStringLiteral("/deployment.ini");
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("The file could not be written.");
    file.close();
    return readDeployment(name);
}

void TstDeployment::fileStandsBesideTheExecutable()
{
    QCOMPARE(deploymentFile(QStringLiteral("/opt/torvex")), QStringLiteral("/opt/torvex/deployment.ini"));
}

void TstDeployment::variableNamesAnotherFile()
{
    qputenv("VXCONFIG_DEPLOYMENT", "/etc/torvex.ini");
    QCOMPARE(deploymentFile(QStringLiteral("/opt/torvex")), QStringLiteral("/etc/torvex.ini"));
}

void TstDeployment::missingFileGivesTheDefaults()
{
    const Deployment deployment = readDeployment(m_folder.path() + QStringLiteral("/none.ini"));
    QCOMPARE(deployment.host, QStringLiteral("www.qor.example"));
    QCOMPARE(int(deployment.port), 443);
}

void TstDeployment::valuesAreRead()
{
    const Deployment deployment =
        read("[web]\nhost=updates.example\nport=8443\ndownloadPage=https://updates.example/get\n");
    QCOMPARE(deployment.host, QStringLiteral("updates.example"));
    QCOMPARE(int(deployment.port), 8443);
    QCOMPARE(deployment.downloadPage, QStringLiteral("https://updates.example/get"));
}

void TstDeployment::missingKeysKeepTheirDefaults()
{
    const Deployment deployment = read("[web]\nport=8443\n");
    QCOMPARE(deployment.host, QStringLiteral("www.qor.example"));
    QCOMPARE(deployment.downloadPage, Deployment().downloadPage);
}

void TstDeployment::emptyValuesKeepTheirDefaults()
{
    const Deployment deployment = read("[web]\nhost=\nport=\ndownloadPage=\n");
    QCOMPARE(deployment.host, QStringLiteral("www.qor.example"));
    QCOMPARE(deployment.downloadPage, Deployment().downloadPage);
}

void TstDeployment::commaBelongsToTheAddress()
{
    QCOMPARE(read("[web]\ndownloadPage=https://get.example/?a=1,2\n").downloadPage,
             QStringLiteral("https://get.example/?a=1,2"));
}

void TstDeployment::oddPortKeepsTheDefault_data()
{
    QTest::addColumn<QByteArray>("port");
    for (const char *port : {"0", "-1", "65536", "abc", ""})
        QTest::newRow(port) << QByteArray(port);
}

void TstDeployment::oddPortKeepsTheDefault()
{
    QFETCH(QByteArray, port);
    QCOMPARE(int(read("[web]\nport=" + port + "\n").port), 443);
}

QTEST_GUILESS_MAIN(TstDeployment)

#include "tst_deployment.moc"
