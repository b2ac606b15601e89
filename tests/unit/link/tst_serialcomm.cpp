#include "deviceframes.h"
#include "link/permissionadvice.h"
#include "link/serialcomm.h"
#include "pseudoterminal.h"
#include "support/droppedprivileges.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QSerialPort>
#include <QSignalSpy>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

namespace {

const QString kName = QStringLiteral("COM120");
const QString kUnavailable = QStringLiteral("Error : No connection available in port COM120");
const QString kAvailable = QStringLiteral("Info : Connection with port COM120 available.");
const QString kClosed = QStringLiteral("Info : Connection with port COM120 closed.");
const QString kFailing = QStringLiteral("Warning : the connection with Port COM120 is failing.");

} // namespace

/// The port is a pseudo terminal, known as COM120 in the settings folder.
class TstSerialComm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isClosedAtFirst();
    void opensAPseudoTerminalThatRefusesParity();
    void lineSettingsReachThePort();
    void aDeviceNameStaysOpenWhenItIsWrittenTo();
    void aPortThatIsNotThereFailsAndRetries();
    void theFailureIsLoggedBeforeItIsTold();
    void aPortHeldByAnotherProgramFails();
    void lackOfPermissionIsExplained();
    void closeTellsAndFreesThePort();
    void closeWithoutAPortIsHarmless();
    void openingTwiceKeepsOnePort();
    void openingAgainAfterCloseWorks();

    void aFrameIsPassedOnAsSerial();
    void twoFramesInOneReadAreBothPassedOn();
    void aBadByteDropsTheRestOfTheRead();
    void framesCutAnywhereArePassedOn();
    void theCounterSurvivesOpeningAgain();

    void aFrameIsWrittenWhole();
    void writingOnAClosedLinkRetries();
    void writingOnAClosedLinkWithoutPortDoesNothing();
    void aWriteFindsThePortGone();
    void everyWriteOnAGonePortTellsAgain();

    void aVanishedPortIsNoticedWithoutAWrite();
    void aWriteThatFailsIsTheLossOfThePort();
    void aLostPortIsNotWrittenTo();
    void aLostPortCanBeOpenedAgain();

    void aReceiverMayCloseTheLink();
    void aReceiverMayOpenTheLinkAgain();
    void aReceiverOfTheLossMayCloseTheLink();
    void theLinkMayEndWhileOpen();

    void resettingTheReceiveBufferIsTold();

private:
    void plug();
    void unplugName() { QVERIFY(QFile::remove(m_alias)); }
    bool deliver(const QByteArray &bytes);
    QSerialPort *port() const { return m_link->findChild<QSerialPort *>(); }

    std::unique_ptr<QTemporaryDir> m_settings;
    QString m_alias;
    std::unique_ptr<PseudoTerminal> m_terminal;
    VirtualTime m_time;
    std::unique_ptr<SerialComm> m_link;
    std::unique_ptr<QSignalSpy> m_retries;
    std::unique_ptr<QSignalSpy> m_written;
    QByteArrayList m_frames;
    std::unique_ptr<MessageCatcher> m_log;
};

void TstSerialComm::init()
{
    m_settings = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_settings->path()).mkpath(QStringLiteral("ports")));
    m_alias = m_settings->filePath(QStringLiteral("ports/") + kName);
    plug();
    m_link = std::make_unique<SerialComm>(m_time, PortDirectory(m_settings->path()));
    model_Namespace::Settings settings;
    settings.portName = kName;
    model_Namespace::setDefaultSerialParameters(settings);
    m_link->SetSettings(settings);
    m_retries = std::make_unique<QSignalSpy>(m_link.get(), &SerialComm::retryPort);
    m_written = std::make_unique<QSignalSpy>(m_link.get(), &SerialComm::dataWritten);
    m_frames.clear();
    connect(m_link.get(), &SerialComm::Signal_RcvSerialDatagram, this,
            [this](Comm_Type kind, QByteArray &frame) {
                QCOMPARE(kind, Comm_Type::Serial);
                m_frames.append(frame);
            });
    m_log = std::make_unique<MessageCatcher>();
}

void TstSerialComm::cleanup()
{
    m_retries.reset();
    m_written.reset();
    m_link.reset();
    m_terminal.reset();
    m_log.reset();
}

/// An adapter appears under the known name.
void TstSerialComm::plug()
{
    QFile::remove(m_alias);
    m_terminal = std::make_unique<PseudoTerminal>();
    QVERIFY(QFile::link(m_terminal->device(), m_alias));
}

/// The device sends these bytes in one go; true when a read has taken them.
bool TstSerialComm::deliver(const QByteArray &bytes)
{
    QSignalSpy reads(port(), &QSerialPort::readyRead);
    return m_terminal->write(bytes) && (reads.count() > 0 || reads.wait());
}

void TstSerialComm::isClosedAtFirst()
{
    QVERIFY(!m_link->IsOpen());
    QVERIFY(m_link->IsPortAvailable());
    QVERIFY(!port());
}

void TstSerialComm::opensAPseudoTerminalThatRefusesParity()
{
    QVERIFY(m_link->Open());
    QVERIFY(m_link->IsOpen());
    QCOMPARE(m_retries->count(), 0);
    QCOMPARE(m_log->lines().last(), kAvailable);
    QVERIFY(m_log->contains(QStringLiteral("Info : Port COM120 does not take the parity")));
}

void TstSerialComm::lineSettingsReachThePort()
{
    model_Namespace::Settings settings;
    settings.portName = kName;
    settings.baudRate = 19200;
    settings.dataBits = 8;
    settings.parity = QSerialPort::NoParity;
    settings.stopBits = 2;
    m_link->SetSettings(settings);
    QVERIFY(m_link->Open());
    QCOMPARE(port()->baudRate(QSerialPort::Input), 19200);
    QCOMPARE(port()->baudRate(QSerialPort::Output), 19200);
    QCOMPARE(port()->stopBits(), QSerialPort::TwoStop);
}

/// A name that is no COM name opens, and then the check before a write agrees.
void TstSerialComm::aDeviceNameStaysOpenWhenItIsWrittenTo()
{
    model_Namespace::Settings settings;
    model_Namespace::setDefaultSerialParameters(settings);
    settings.portName = m_terminal->device().mid(int(qstrlen("/dev/")));
    m_link->SetSettings(settings);
    QVERIFY(m_link->Open());
    m_link->Write(deviceframes::five());
    QCOMPARE(m_written->count(), 1);
    QCOMPARE(m_retries->count(), 0);
}

void TstSerialComm::aPortThatIsNotThereFailsAndRetries()
{
    unplugName();
    QVERIFY(!m_link->IsPortAvailable());
    QVERIFY(!m_link->Open());
    QVERIFY(!m_link->IsOpen());
    QCOMPARE(m_retries->count(), 1);
    QCOMPARE(m_log->lines().filter(kName), QStringList{kUnavailable});
}

void TstSerialComm::theFailureIsLoggedBeforeItIsTold()
{
    QStringList loggedBefore;
    connect(m_link.get(), &SerialComm::retryPort, this,
            [this, &loggedBefore] { loggedBefore = m_log->lines(); });
    unplugName();
    QVERIFY(!m_link->Open());
    QCOMPARE(loggedBefore, QStringList{kUnavailable});
}

void TstSerialComm::aPortHeldByAnotherProgramFails()
{
    QSerialPort other(m_terminal->device());
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(!m_link->Open());
    QVERIFY(m_log->contains(kUnavailable));
    QCOMPARE(m_retries->count(), 1);
    other.close();
    QVERIFY(m_link->Open());
}

void TstSerialComm::lackOfPermissionIsExplained()
{
    QVERIFY(QFile::setPermissions(m_terminal->device(), QFile::Permissions()));
    QVERIFY(QFile::setPermissions(m_settings->path(), DroppedPrivileges::kOpenFolder));
    const QFileInfo device(m_terminal->device());
    const QString advice = permissionAdvice(kName, device.filePath(), device.group(), device.groupId());
    QTest::ignoreMessage(QtWarningMsg, qPrintable(advice));
    {
        const DroppedPrivileges ordinary;
        QVERIFY(!m_link->Open());
    }
    QCOMPARE(m_retries->count(), 1);
    QVERIFY(m_log->contains(kUnavailable));
    QVERIFY(m_log->contains(QtWarningMsg, advice));
}

void TstSerialComm::closeTellsAndFreesThePort()
{
    QVERIFY(m_link->Open());
    m_link->Close();
    QVERIFY(!m_link->IsOpen());
    QCOMPARE(m_log->lines().last(), kClosed);
    QCOMPARE(m_retries->count(), 0);
    QSerialPort other(m_terminal->device());
    QVERIFY(other.open(QIODevice::ReadWrite));
    QTRY_VERIFY(!port());
}

void TstSerialComm::closeWithoutAPortIsHarmless()
{
    m_link->Close();
    QVERIFY(m_log->lines().isEmpty());
    QVERIFY(m_link->Open());
    m_link->Close();
    m_log->clear();
    m_link->Close();
    QVERIFY(m_log->lines().isEmpty());
    QVERIFY(!m_link->IsOpen());
}

void TstSerialComm::openingTwiceKeepsOnePort()
{
    QVERIFY(m_link->Open());
    QVERIFY(m_link->Open());
    QVERIFY(m_link->IsOpen());
    QTRY_COMPARE(m_link->findChildren<QSerialPort *>().size(), 1);
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames.size(), 1);
    unplugName();
    QVERIFY(!m_link->Open() && !m_link->Open());
    QTRY_COMPARE(m_link->findChildren<QSerialPort *>().size(), 1);
}

void TstSerialComm::openingAgainAfterCloseWorks()
{
    QVERIFY(m_link->Open());
    m_link->Close();
    QVERIFY(m_link->Open());
    QTRY_COMPARE(m_link->findChildren<QSerialPort *>().size(), 1);
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames.size(), 1);
}

void TstSerialComm::aFrameIsPassedOnAsSerial()
{
    QVERIFY(m_link->Open());
    QVERIFY(m_terminal->write(deviceframes::largest()));
    QTRY_COMPARE(m_frames, QByteArrayList{deviceframes::largest()});
}

void TstSerialComm::twoFramesInOneReadAreBothPassedOn()
{
    QVERIFY(m_link->Open());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight()));
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
}

void TstSerialComm::aBadByteDropsTheRestOfTheRead()
{
    QVERIFY(m_link->Open());
    QVERIFY(deliver(deviceframes::five() + QByteArray(1, '\0') + deviceframes::eight()));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QCOMPARE(m_log->lines().last(), QStringLiteral("Rx From VX Stat -1"));
    QVERIFY(deliver(deviceframes::eight()));
    QCOMPARE(m_frames.size(), 2);
}

void TstSerialComm::framesCutAnywhereArePassedOn()
{
    QVERIFY(m_link->Open());
    const QByteArray frame = deviceframes::eight();
    for (int cut = 1; cut < frame.size(); ++cut) {
        m_frames.clear();
        QVERIFY(deliver(frame.left(cut)));
        QVERIFY(m_frames.isEmpty());
        QVERIFY(deliver(frame.mid(cut)));
        QCOMPARE(m_frames, QByteArrayList{frame});
    }
}

void TstSerialComm::theCounterSurvivesOpeningAgain()
{
    const QString line =
        QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : Inconsistent Consistency Counter!");
    QVERIFY(m_link->Open());
    QVERIFY(deliver(deviceframes::counterFE()));
    m_link->Close();
    QVERIFY(m_link->Open());
    QTRY_COMPARE(m_link->findChildren<QSerialPort *>().size(), 1);
    QVERIFY(deliver(deviceframes::counterFF()));
    QVERIFY(!m_log->contains(line));
    QVERIFY(deliver(deviceframes::counter02()));
    QVERIFY(m_log->contains(line));
}

void TstSerialComm::aFrameIsWrittenWhole()
{
    QVERIFY(m_link->Open());
    m_link->Write(deviceframes::largest());
    QCOMPARE(m_written->count(), 1);
    QByteArray received;
    QTRY_VERIFY((received += m_terminal->readAll()).size() >= deviceframes::largest().size());
    QCOMPARE(received, deviceframes::largest());
    QCOMPARE(m_retries->count(), 0);
}

void TstSerialComm::writingOnAClosedLinkRetries()
{
    m_link->Write(deviceframes::five());
    QCOMPARE(m_retries->count(), 1);
    QVERIFY(m_link->Open());
    m_link->Close();
    m_link->Write(deviceframes::five());
    QCOMPARE(m_retries->count(), 2);
    QCOMPARE(m_written->count(), 0);
    QVERIFY(!m_log->contains(kFailing));
}

void TstSerialComm::writingOnAClosedLinkWithoutPortDoesNothing()
{
    unplugName();
    m_link->Write(deviceframes::five());
    QCOMPARE(m_retries->count(), 0);
    QCOMPARE(m_written->count(), 0);
    QVERIFY(m_log->lines().isEmpty());
}

void TstSerialComm::aWriteFindsThePortGone()
{
    QVERIFY(m_link->Open());
    unplugName();
    m_link->Write(deviceframes::five());
    QCOMPARE(m_retries->count(), 1);
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(m_log->lines().last(), kFailing);
    QVERIFY(m_terminal->readAll().isEmpty());
    m_terminal->write(deviceframes::five());
    QVERIFY(port()->findChildren<QSocketNotifier *>().isEmpty()); // nothing is read any more
    QVERIFY(m_frames.isEmpty());
}

void TstSerialComm::everyWriteOnAGonePortTellsAgain()
{
    QVERIFY(m_link->Open());
    unplugName();
    m_link->Write(deviceframes::five());
    QVERIFY(m_link->IsOpen());
    m_link->Write(deviceframes::five());
    QCOMPARE(m_retries->count(), 2);
    QCOMPARE(m_log->lines().filter(kFailing).size(), 2);
}

void TstSerialComm::aVanishedPortIsNoticedWithoutAWrite()
{
    QVERIFY(m_link->Open());
    m_terminal->vanish();
    QTRY_COMPARE(m_retries->count(), 1);
    QCOMPARE(m_log->lines().last(), kFailing);
    // Nothing is left that could wake the event loop or tell the loss once more.
    QVERIFY(!port()->isOpen());
    QVERIFY(port()->findChildren<QSocketNotifier *>().isEmpty());
    QVERIFY(m_link->IsOpen());
}

void TstSerialComm::aWriteThatFailsIsTheLossOfThePort()
{
    QVERIFY(m_link->Open());
    m_terminal->vanish();
    plug(); // at once, so that the name is still there
    m_link->Write(deviceframes::five());
    QCOMPARE(m_retries->count(), 1);
    QCOMPARE(m_written->count(), 0);
    QCOMPARE(m_log->lines().last(), kFailing);
    QVERIFY(port()->findChildren<QSocketNotifier *>().isEmpty());
}

void TstSerialComm::aLostPortIsNotWrittenTo()
{
    QVERIFY(m_link->Open());
    m_terminal->vanish();
    QTRY_COMPARE(m_retries->count(), 1);
    plug(); // back under its name, but not opened again
    m_link->Write(deviceframes::five());
    QCOMPARE(m_retries->count(), 2);
    QCOMPARE(m_written->count(), 0);
}

void TstSerialComm::aLostPortCanBeOpenedAgain()
{
    QVERIFY(m_link->Open());
    m_terminal->vanish();
    QTRY_COMPARE(m_retries->count(), 1);
    QVERIFY(!m_link->Open());
    QCOMPARE(m_retries->count(), 2);
    plug();
    QVERIFY(m_link->Open());
    QTRY_COMPARE(m_link->findChildren<QSerialPort *>().size(), 1);
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames.size(), 1);
    QCOMPARE(m_retries->count(), 2);
}

void TstSerialComm::aReceiverMayCloseTheLink()
{
    connect(m_link.get(), &SerialComm::Signal_RcvSerialDatagram, m_link.get(), [this] { m_link->Close(); });
    QVERIFY(m_link->Open());
    QVERIFY(m_terminal->write(deviceframes::five() + deviceframes::eight()));
    QTRY_COMPARE(m_frames.size(), 1);
    QTRY_VERIFY(!port());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
}

void TstSerialComm::aReceiverMayOpenTheLinkAgain()
{
    const auto reopening = connect(m_link.get(), &SerialComm::Signal_RcvSerialDatagram, m_link.get(), [this] {
        m_link->Close();
        QVERIFY(m_link->Open());
    });
    QVERIFY(m_link->Open());
    QVERIFY(m_terminal->write(deviceframes::five() + deviceframes::eight().left(10)));
    QTRY_COMPARE(m_frames.size(), 1);
    QTRY_COMPARE(m_link->findChildren<QSerialPort *>().size(), 1);
    QVERIFY(m_link->IsOpen());
    disconnect(reopening);
    // The rest of the old read was dropped: a whole frame is understood at once.
    QVERIFY(deliver(deviceframes::eight()));
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
}

void TstSerialComm::aReceiverOfTheLossMayCloseTheLink()
{
    connect(m_link.get(), &SerialComm::retryPort, m_link.get(), [this] { m_link->Close(); });
    QVERIFY(m_link->Open());
    m_terminal->vanish();
    QTRY_COMPARE(m_retries->count(), 1);
    QTRY_VERIFY(!port());
    QVERIFY(!m_link->IsOpen());
}

void TstSerialComm::theLinkMayEndWhileOpen()
{
    QVERIFY(m_link->Open());
    m_terminal->write(deviceframes::five());
    m_link.reset();
    QSerialPort other(m_terminal->device());
    QVERIFY(other.open(QIODevice::ReadWrite));
}

void TstSerialComm::resettingTheReceiveBufferIsTold()
{
    m_link->Slot_ResetReceivedData();
    QCOMPARE(m_log->lines(), QStringList{QStringLiteral(
                                 "void SerialComm::Slot_ResetReceivedData() : Resetting reception buffer!")});
}

QTEST_GUILESS_MAIN(TstSerialComm)
#include "tst_serialcomm.moc"
