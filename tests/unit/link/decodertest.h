#pragma once

#include "link/communication_aux.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QByteArrayList>
#include <QObject>
#include <memory>

/// What came of the bytes that were fed.
struct Feeding
{
    QList<int> results; ///< one for each byte

    int last() const { return results.last(); }
    bool allTaken() const { return allTakenBut(-1); }
    bool allTakenBut(int index) const;
};

Feeding feed(Communication_Aux &decoder, const QByteArray &bytes);

/// Lines that the decoder writes.
extern const QString kHeaderLine;
extern const QString kCounterLine;
extern const QString kOverflowLine;
extern const QString kTimeoutLine;

/// Base of the tests of the decoder: each test has a decoder in virtual time.
class DecoderTest : public QObject
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    /// The decoder takes the next frame, after the time-out at the latest.
    void expectRecovery();

    /// The decoder is to log one time-out.
    static void expectTimeOut();

    std::unique_ptr<MessageCatcher> m_log;
    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<Communication_Aux> m_decoder;
    QByteArrayList m_frames;
    int m_resets = 0;
};
