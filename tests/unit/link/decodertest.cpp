#include "decodertest.h"

#include "deviceframes.h"

#include <QtTest>

const QString kHeaderLine = QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : Header Not OK!");
const QString kCounterLine =
    QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : Inconsistent Consistency Counter!");
const QString kOverflowLine =
    QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : RS232 Buffer Overflow!");
const QString kTimeoutLine = QStringLiteral("void Communication_Aux::RcvTimeOver() : Receive Timeout!");

bool Feeding::allTakenBut(int index) const
{
    for (int i = 0; i < results.size(); ++i) {
        if (i != index && results.at(i) != Communication_Aux::Taken)
            return false;
    }
    return true;
}

Feeding feed(Communication_Aux &decoder, const QByteArray &bytes)
{
    Feeding feeding;
    for (const char byte : bytes)
        feeding.results.append(decoder.RX_from_VX(static_cast<uchar>(byte)));
    return feeding;
}

void DecoderTest::init()
{
    m_log = std::make_unique<MessageCatcher>();
    m_time = std::make_unique<VirtualTime>();
    m_decoder = std::make_unique<Communication_Aux>(*m_time);
    m_frames.clear();
    m_resets = 0;
    connect(m_decoder.get(), &Communication_Aux::Signal_RcvDatagramOk, this,
            [this](QByteArray &frame) { m_frames.append(frame); });
    connect(m_decoder.get(), &Communication_Aux::Signal_ResetRcvData, this, [this] { ++m_resets; });
}

void DecoderTest::expectTimeOut()
{
    QTest::ignoreMessage(QtCriticalMsg, qPrintable(kTimeoutLine));
}

void DecoderTest::cleanup()
{
    m_decoder.reset();
    m_time.reset();
    m_log.reset();
}

void DecoderTest::expectRecovery()
{
    m_time->advance(1000);
    m_frames.clear();
    QVERIFY(feed(*m_decoder, deviceframes::five()).allTakenBut(-1));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
}
