#include "sim/framecodec.h"

#include "sim/bytes.h"

namespace sim {

namespace {

constexpr quint16 kStart = 0xF0F1;
constexpr quint16 kPolynomial = 0x1021;
constexpr int kSummedBytes = 18;
const QByteArray kPreamble = QByteArray::fromHex("8081828301");

enum Offset { CounterAt = 5, AddresseeAt = 6, OriginatorAt = 7, ReservedAt = 8, LengthAt = 16, SumAt = 18 };

} // namespace

quint16 FrameCodec::headerSum(const QByteArray &frame)
{
    quint16 sum = kStart;
    for (int i = 0; i < kSummedBytes; ++i)
        sum = static_cast<quint16>(sum + u8At(frame, i));
    return sum;
}

quint16 FrameCodec::crc(const QByteArray &frame, int size)
{
    quint16 crc = kStart;
    for (int i = 0; i < size; ++i) {
        crc = static_cast<quint16>(crc ^ (u8At(frame, i) << 8));
        for (int bit = 0; bit < 8; ++bit) {
            const bool top = (crc & 0x8000) != 0;
            crc = static_cast<quint16>(crc << 1);
            if (top)
                crc ^= kPolynomial;
        }
    }
    return crc;
}

QByteArray FrameCodec::encode(const FrameHeader &header, const QByteArray &payload)
{
    QByteArray frame = kPreamble + QByteArray(kHeaderSize - kPreamble.size(), '\0');
    putU8(frame, CounterAt, header.counter);
    putU8(frame, AddresseeAt, header.addressee);
    putU8(frame, OriginatorAt, header.originator);
    putU16(frame, LengthAt, payload.size());
    putU16(frame, SumAt, headerSum(frame));
    frame += payload;
    const int size = frame.size();
    frame += QByteArray(kTrailerSize, '\0');
    putU16(frame, size, crc(frame, size));
    return frame;
}

QVector<Reception> RequestReceiver::feed(quint8 byte, qint64 timeNs)
{
    QVector<Reception> out;
    if (!m_bytes.isEmpty() && timeNs - m_lastNs > kPauseNs)
        refuse(out, m_bytes.size(), QStringLiteral("pause inside a frame"));
    m_lastNs = timeNs;
    m_bytes.append(static_cast<char>(byte));
    while (!m_bytes.isEmpty()) {
        if (takeNoise(out) == Step::NeedMore && takeFrame(out) == Step::NeedMore)
            break;
    }
    for (Reception &reception : out)
        reception.timeNs = timeNs;
    return out;
}

RequestReceiver::Step RequestReceiver::takeNoise(QVector<Reception> &out)
{
    const int common = qMin(m_bytes.size(), kPreamble.size());
    if (m_bytes.left(common) == kPreamble.left(common))
        return Step::NeedMore;
    const int next = m_bytes.indexOf(kPreamble.at(0), 1);
    const int size = next < 0 ? m_bytes.size() : next;
    if (m_inNoise)
        m_bytes.remove(0, size);
    else
        refuse(out, size, QStringLiteral("no sync bytes"));
    m_inNoise = true;
    return Step::Again;
}

RequestReceiver::Step RequestReceiver::takeFrame(QVector<Reception> &out)
{
    if (m_bytes.size() < kHeaderSize)
        return Step::NeedMore;
    const QString fault = headerFault();
    if (!fault.isEmpty()) {
        refuse(out, kHeaderSize, fault);
        m_inNoise = true; // what follows of this frame
        return Step::Again;
    }
    const int payloadSize = u16At(m_bytes, LengthAt);
    const int size = kHeaderSize + payloadSize + kTrailerSize;
    if (m_bytes.size() < size)
        return Step::NeedMore;
    if (u16At(m_bytes, size - kTrailerSize) != FrameCodec::crc(m_bytes, size - kTrailerSize)) {
        refuse(out, size, QStringLiteral("wrong CRC"));
        return Step::Again;
    }
    Reception request;
    request.valid = true;
    request.counter = u8At(m_bytes, CounterAt);
    request.payload = m_bytes.mid(kHeaderSize, payloadSize);
    request.raw = m_bytes.left(size);
    m_bytes.remove(0, size);
    m_inNoise = false;
    out.append(request);
    return Step::Again;
}

QString RequestReceiver::headerFault() const
{
    if (u16At(m_bytes, SumAt) != FrameCodec::headerSum(m_bytes))
        return QStringLiteral("wrong header sum");
    if (u8At(m_bytes, AddresseeAt) != kDeviceAddressee)
        return QStringLiteral("addressee %1").arg(hexCode(u8At(m_bytes, AddresseeAt)));
    if (u8At(m_bytes, OriginatorAt) != kProgramOriginator)
        return QStringLiteral("originator %1").arg(hexCode(u8At(m_bytes, OriginatorAt)));
    if (m_bytes.mid(ReservedAt, LengthAt - ReservedAt).count('\0') != LengthAt - ReservedAt)
        return QStringLiteral("reserved bytes are not zero");
    if (u16At(m_bytes, LengthAt) > kMaximumPayload)
        return QStringLiteral("payload length %1").arg(u16At(m_bytes, LengthAt));
    return {};
}

void RequestReceiver::refuse(QVector<Reception> &out, int size, const QString &fault)
{
    Reception refused;
    refused.fault = fault;
    refused.raw = m_bytes.left(size);
    m_bytes.remove(0, size);
    out.append(refused);
}

} // namespace sim
