#include "firmwarefixture.h"

#include "protocol/communication.h"
#include "waiting.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

const QString kChain = QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                                      "module type=1 count=2 serial=SG-\n");
constexpr int kRows = 2;

} // namespace

FirmwareFixture::FirmwareFixture(LinkKind kind)
    : SystemFixture(kind)
{}

bool FirmwareFixture::isWhole() const
{
    return isReady() && rowCount() == kRows;
}

void FirmwareFixture::begin(int bytesPerSecond)
{
    usePatientTimeouts();
    plug(kChain);
    device->setPace(bytesPerSecond);
    start();
    Communication *session = app->communication();
    QObject::connect(session, &Communication::packetSent, session, [this] { m_isAnswered = false; });
    QObject::connect(session, &Communication::packetRecvd, session, [this] { m_isAnswered = true; });
    WAIT_VERIFY(isWhole());
    device->clearCounters();
}

void FirmwareFixture::flash(const QByteArray &file, firmwareimage::Target target)
{
    Communication *session = app->communication();
    for (const FPGAfwCommand &command : firmwareimage::commands(target, file))
        session->Slot_FirmwareCommands(QVariant::fromValue(command));
    session->Slot_StartFPGAprocess();
}

void FirmwareFixture::waitForTheResetsEnd(int resets)
{
    WAIT_VERIFY(device->requestCount(0x2B) == resets);
    WAIT_VERIFY(device->requestCount(0x01) == resets);
    WAIT_VERIFY(isWhole());
}

void FirmwareFixture::waitForARound()
{
    const int polls = device->requestCount(0x10);
    WAIT_VERIFY(device->requestCount(0x10) > polls + 2);
}

QByteArray FirmwareFixture::codesOfRequests() const
{
    QByteArray codes;
    for (const QByteArray &payload : device->receivedPayloads())
        codes.append(payload.left(1));
    return codes;
}

void FirmwareFixture::startOver()
{
    WAIT_VERIFY(m_isAnswered); // a reply that is on its way would be torn
    device->faults().clear();
    device->clearCounters();
    time.skip(periods.comm);
    WAIT_VERIFY(device->requestCount(0x01) == 1);
    WAIT_VERIFY(isWhole());
    device->clearCounters();
}

void FirmwareFixture::openWindow()
{
    window()->Slot_FirmwareUpdate();
    QVERIFY(QTest::qWaitForWindowActive(update()));
}

QString FirmwareFixture::write(const char *name, const QByteArray &bytes)
{
    QFile file(folder.filePath(QString::fromLatin1(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("The file cannot be written");
    return file.fileName();
}

void FirmwareFixture::choose(const QString &path)
{
    click("selectFileButton");
    auto *dialog = childByName<QFileDialog>(update(), "firmwareFileDialog");
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto *name = childByName<QLineEdit>(dialog, "fileNameEdit");
    WAIT_VERIFY(name->hasFocus());
    name->selectAll();
    QTest::keyClicks(name, path);
    QTest::keyClick(name, Qt::Key_Return);
    WAIT_VERIFY(part<QLineEdit>("filePathEdit")->text() == path);
    QVERIFY(QTest::qWaitForWindowActive(update()));
}

void FirmwareFixture::click(const char *button)
{
    QVERIFY(part<QPushButton>(button)->isEnabled());
    QTest::mouseClick(part<QPushButton>(button), Qt::LeftButton);
}

void FirmwareFixture::abort()
{
    QCOMPARE(buttonText(), QStringLiteral("Abort"));
    click("flashButton");
    WAIT_VERIFY(update()->findChild<QPushButton *>(QStringLiteral("proceedButton")));
    QTest::mouseClick(part<QPushButton>("proceedButton"), Qt::LeftButton);
    WAIT_VERIFY(buttonText() == QStringLiteral("Read and Flash File"));
    QCOMPARE(label(), QStringLiteral("Firmware Flashing Aborted.."));
    QVERIFY(part<QProgressBar>("progressBar")->isHidden());
}

QString FirmwareFixture::label() const
{
    const auto *status = part<QLabel>("flashStatusLabel");
    return status->isVisible() ? status->text() : QString();
}
