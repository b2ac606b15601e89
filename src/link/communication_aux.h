#pragma once

#include "link/frameformat.h"

#include <QByteArray>
#include <QObject>
#include <chrono>

class Timer;
class TimeSource;

/// Receive state machine of a transport: takes the bytes of the link one at a time and passes on each
/// frame whose header and checksum are right. Lives as long as its transport, so that the state of the
/// consistency counter survives a link that is opened again.
///
/// Most bytes are only stored. Work is done at a few stops on the way through a frame: when the length or
/// the header is complete, at steps of the payload, where the checksum is taken on over what came since,
/// and at the last byte. The first byte of each turn of the event loop is such a stop as well; it sees to
/// the reception time-out, so that no timer is touched for each byte.
class Communication_Aux : public QObject
{
    Q_OBJECT

public:
    enum Result { Taken = 0, Refused = -1, Overflow = -2, BadChecksum = -9 };

    static constexpr int kBufferSize = 1500;

    /// A frame whose next byte does not come within `receiveTimeout` is dropped; the time counts from the
    /// turn of the event loop after the one in which the last byte came. `bufferLimit`, at most kBufferSize,
    /// is the number of bytes that a frame may have before it counts as an overflow. `time` must outlive the
    /// object.
    explicit Communication_Aux(TimeSource &time, QObject *parent = nullptr,
                               std::chrono::milliseconds receiveTimeout = std::chrono::milliseconds(1000),
                               int bufferLimit = kBufferSize);
    ~Communication_Aux() override;

    /// Takes one received byte. Results as in Result: 0 taken, the frame may or may not be complete;
    /// -1 refused as a first byte, or bad header; -2 buffer overflow; -9 bad frame CRC.
    int RX_from_VX(uchar byte)
    {
        if (Q_UNLIKELY(m_index >= m_stop))
            return takeAtStop(byte);
        m_bytes[m_index] = static_cast<char>(byte);
        ++m_index;
        return Taken;
    }

    /// Takes the bytes of one read of a transport in order. At the first that is not taken the result is
    /// logged and the rest of the read is dropped.
    void takeRead(const QByteArray &bytes);

    /// Drops the rest of the read that is being taken, if there is one: its link was closed or opened
    /// again by a receiver of a frame.
    void abandonRead();

public slots:
    /// The rest of a frame did not come in time: logs that and drops what came.
    void RcvTimeOver();

signals:
    /// A whole frame, header and trailer included, passed all checks. The array is emptied after the
    /// emission, so a receiver deals with it inside the call.
    void Signal_RcvDatagramOk(QByteArray &frame);

    /// The receiver was reset: after a good or a bad frame, a refused first byte or a time-out.
    void Signal_ResetRcvData();

private:
    int takeAtStop(uchar byte);
    int finishFrame();
    bool acceptHeader();
    void followCounter(quint8 received);
    void takeOnChecksum(int end);
    quint16 valueAt(int offset) const;
    int nextStop() const;
    void resetReceiver();
    void noteReception();
    void watchPause();

    /// Index of the first trailer byte: the checksum covers what stands before it.
    int trailerIndex() const { return frame::kHeaderSize + m_payloadLength; }
    int lastIndex() const { return trailerIndex() + 1; }

    int m_index = 0; ///< where the next byte is stored
    int m_stop = 0;  ///< the byte of this index, and each one behind it, needs more than storing
    char m_bytes[kBufferSize] = {}; ///< apart from m_frame, which receivers may share: storing stays cheap
    int m_checked = 0;              ///< number of bytes that m_crc covers
    quint16 m_crc = frame::kChecksumStart;
    quint16 m_payloadLength = 0;
    quint8 m_expectedCounter = 0;
    bool m_counterValid = false;   ///< false until the first complete header was seen
    bool m_receptionNoted = false; ///< a byte came in this turn of the event loop
    quint32 m_abandonedReads = 0;
    const int m_bufferLimit;
    const std::chrono::milliseconds m_receiveTimeout;
    Timer *m_timer;     ///< child
    QByteArray m_frame; ///< empty but for the emission of a frame
};
