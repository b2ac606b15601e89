#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace sim {

constexpr quint8 kProgramAddressee = 0x50;
constexpr quint8 kDeviceOriginator = 0x4B;
constexpr quint8 kProgramOriginator = 0x50;
constexpr quint8 kDeviceAddressee = 0x43;

/// A frame's own fields. The defaults are those of a frame from the device to the program.
struct FrameHeader
{
    quint8 counter = 0;
    quint8 addressee = kProgramAddressee;
    quint8 originator = kDeviceOriginator;
};

constexpr int kHeaderSize = 20;
constexpr int kTrailerSize = 2;
constexpr int kMaximumPayload = 1300;

/// Builds frames: 20 bytes of header, the payload, a CRC of 2 bytes.
class FrameCodec
{
public:
    static QByteArray encode(const FrameHeader &header, const QByteArray &payload);

    /// Sum of the first 18 bytes, starting at 0xF0F1.
    static quint16 headerSum(const QByteArray &frame);
    /// CRC of the first `size` bytes: polynomial 0x1021, most significant bit first, starting at 0xF0F1.
    static quint16 crc(const QByteArray &frame, int size);
};

/// What the receiver made of the bytes so far: a request, or bytes that were refused.
struct Reception
{
    bool valid = false;
    QString fault;      ///< why it was refused
    quint8 counter = 0; ///< of a valid frame
    QByteArray payload; ///< of a valid frame
    QByteArray raw;     ///< the bytes it was made of
    qint64 timeNs = 0;  ///< when its last byte had arrived
};

/// Finds requests in a stream of bytes and checks every field of them. Bytes that cannot begin a frame
/// are skipped up to the next sync byte, and one run of them is reported once, at its start; a pause
/// inside a frame drops what came before it.
class RequestReceiver
{
public:
    static constexpr qint64 kPauseNs = 1000000000;

    /// Takes one byte that arrived at `timeNs`. Returns what it completed: mostly nothing.
    QVector<Reception> feed(quint8 byte, qint64 timeNs);

private:
    enum class Step { NeedMore, Again };

    Step takeNoise(QVector<Reception> &out);
    Step takeFrame(QVector<Reception> &out);
    QString headerFault() const;
    void refuse(QVector<Reception> &out, int size, const QString &fault);

    QByteArray m_bytes;
    qint64 m_lastNs = 0;
    bool m_inNoise = false;
};

} // namespace sim
