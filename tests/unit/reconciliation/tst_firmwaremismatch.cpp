#include "support/appfixture.h"

#include <QLabel>
#include <QMessageBox>
#include <QtTest>

namespace {

/// A settings file with a port and no mode: the application starts without opening a link.
const QByteArray kQuietSettings = "PORT1=COM5:115200,E,8,1\r\n";

} // namespace

/// What the user is told when firmware versions differ.
class TstFirmwareMismatch : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void localMismatchWarns();
    void remoteMismatchTells_data();
    void remoteMismatchTells();
    void otherMismatchIsSilent();

private:
    std::unique_ptr<AppFixture> m_fixture;
};

void TstFirmwareMismatch::init()
{
    m_fixture = std::make_unique<AppFixture>();
    m_fixture->writeSettings(kQuietSettings);
    m_fixture->start();
}

void TstFirmwareMismatch::localMismatchWarns()
{
    m_fixture->app->Slot_FirmwareMismatch(QStringLiteral("local"), 0);
    auto *box = m_fixture->window()->findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QCOMPARE(
        box->text(),
        QStringLiteral("The firmware versions in the individual modules are different. This may lead to "
                       "communication problems. We strongly recommend that you perform a firmware update. "
                       "The latest firmware can be found on the qor Torvex Support website.\n\n"
                       "https://www.qor.example"));
    const QString line = QStringLiteral("Warning: Firmware mismatch between individual modules. We strongly "
                                        "recommended to update the firmware.");
    QCOMPARE(m_fixture->statusText(), line);
    QCOMPARE(m_fixture->child<QLabel>("statusLabel")->styleSheet(), QStringLiteral("color: red"));
    m_fixture->time.advance(std::chrono::minutes(10));
    QCOMPARE(m_fixture->statusText(), line);
}

void TstFirmwareMismatch::remoteMismatchTells_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("style");
    QTest::newRow("red") << 1 << "color: red";
    QTest::newRow("black") << 0 << "color: black";
}

void TstFirmwareMismatch::remoteMismatchTells()
{
    QFETCH(int, flag);
    QFETCH(QString, style);
    m_fixture->app->Slot_FirmwareMismatch(QStringLiteral("remote"), flag);
    QCOMPARE(m_fixture->statusText(),
             QStringLiteral("Warning: Please download the latest vxupdate.exe, current version is outdated"));
    QCOMPARE(m_fixture->child<QLabel>("statusLabel")->styleSheet(), style);
    m_fixture->time.advance(std::chrono::minutes(10));
    QVERIFY(!m_fixture->statusText().isEmpty());
}

void TstFirmwareMismatch::otherMismatchIsSilent()
{
    const QString before = m_fixture->statusText();
    m_fixture->app->Slot_FirmwareMismatch(QStringLiteral("Local"), 1);
    QCOMPARE(m_fixture->statusText(), before);
    auto *box = m_fixture->window()->findChild<QMessageBox *>();
    QVERIFY(!box || !box->isVisible());
}

QTEST_MAIN(TstFirmwareMismatch)

#include "tst_firmwaremismatch.moc"
