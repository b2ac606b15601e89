#include "deviceframes.h"
#include "link/serialcomm.h"
#include "pseudoterminal.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QSerialPort>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

/// A device that is there and takes no bytes: the terminal is not drained.
class TstSerialOutput : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aFullPortIsNotALostOne();
    void whatWaitsIsSentWhenThePortTakesBytesAgain();
    void whatWaitsIsBounded();
    void theLossOfAFullPortIsNoticed();

private:
    void fill();
    QSerialPort *port() const { return m_link->findChild<QSerialPort *>(); }

    std::unique_ptr<PseudoTerminal> m_terminal;
    VirtualTime m_time;
    std::unique_ptr<SerialComm> m_link;
    std::unique_ptr<QSignalSpy> m_retries;
    std::unique_ptr<QSignalSpy> m_written;
    std::unique_ptr<MessageCatcher> m_log;
};

void TstSerialOutput::init()
{
    m_terminal = std::make_unique<PseudoTerminal>();
    m_log = std::make_unique<MessageCatcher>();
    m_link = std::make_unique<SerialComm>(m_time, PortDirectory(QString()));
    model_Namespace::Settings settings;
    model_Namespace::setDefaultSerialParameters(settings);
    settings.portName = m_terminal->device();
    m_link->SetSettings(settings);
    m_retries = std::make_unique<QSignalSpy>(m_link.get(), &SerialComm::retryPort);
    m_written = std::make_unique<QSignalSpy>(m_link.get(), &SerialComm::dataWritten);
    QVERIFY(m_link->Open());
}

void TstSerialOutput::cleanup()
{
    m_retries.reset();
    m_written.reset();
    m_link.reset();
    m_terminal.reset();
    m_log.reset();
}

/// Writes until bytes are left waiting, and once more.
void TstSerialOutput::fill()
{
    constexpr int kMany = 200; // more than any terminal keeps
    for (int i = 0; i < kMany && port()->bytesToWrite() == 0; ++i)
        m_link->Write(deviceframes::largest());
    QVERIFY(port()->bytesToWrite() > 0);
    m_link->Write(deviceframes::largest());
}

void TstSerialOutput::aFullPortIsNotALostOne()
{
    fill();
    QCoreApplication::processEvents();
    QCOMPARE(m_retries->count(), 0);
    QVERIFY(port()->isOpen());
    QVERIFY(!m_log->containsText(QStringLiteral("is failing")));
    QVERIFY(m_terminal->write(deviceframes::five())); // and it is still read from
    int frames = 0;
    connect(m_link.get(), &SerialComm::Signal_RcvSerialDatagram, this, [&frames] { ++frames; });
    QTRY_COMPARE(frames, 1);
}

void TstSerialOutput::whatWaitsIsSentWhenThePortTakesBytesAgain()
{
    fill();
    const QByteArray expected = deviceframes::largest().repeated(m_written->count());
    QByteArray received;
    QTRY_VERIFY((received += m_terminal->readAll()).size() >= expected.size());
    QVERIFY(received == expected);
    QCOMPARE(port()->bytesToWrite(), qint64(0));
    m_link->Write(deviceframes::five());
    received.clear();
    QTRY_COMPARE(received += m_terminal->readAll(), deviceframes::five());
    QCOMPARE(m_retries->count(), 0);
}

void TstSerialOutput::whatWaitsIsBounded()
{
    constexpr int kLimit = 64 * 1024;
    fill();
    const int writtenBefore = m_written->count();
    constexpr int kFrames = 2 * kLimit / 1322;
    for (int i = 0; i < kFrames; ++i)
        m_link->Write(deviceframes::largest());
    QVERIFY(port()->bytesToWrite() <= kLimit);
    QVERIFY(port()->bytesToWrite() > kLimit - 1322);
    const int lost = m_log->lines().filter(QStringLiteral("takes no bytes; a frame is lost.")).size();
    QVERIFY(lost > 0);
    QCOMPARE(m_written->count() - writtenBefore, kFrames - lost);
    QCOMPARE(m_retries->count(), 0);
}

void TstSerialOutput::theLossOfAFullPortIsNoticed()
{
    fill();
    m_terminal->vanish();
    QTRY_COMPARE(m_retries->count(), 1);
    QVERIFY(m_log->lines().last().endsWith(QStringLiteral(" is failing.")));
    QVERIFY(!port()->isOpen());
}

QTEST_GUILESS_MAIN(TstSerialOutput)
#include "tst_serialoutput.moc"
