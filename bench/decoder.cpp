// Measures the frame decoder, fed byte by byte, beside a plain CRC with one table over the same bytes.

#include "base/timesource.h"
#include "link/communication_aux.h"
#include "link/frameformat.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

namespace {

constexpr int kRounds = 15;
constexpr int kBytesPerRound = 16 * 1024 * 1024;
constexpr int kBytesPerRead = 4096; ///< the event loop turns after so many bytes, as behind a transport

using Table = std::array<quint16, 256>;

Table makeTable()
{
    Table table{};
    for (unsigned value = 0; value < 256; ++value) {
        unsigned crc = value << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x8000U) != 0 ? (crc << 1) ^ 0x1021U : crc << 1;
        table[value] = static_cast<quint16>(crc);
    }
    return table;
}

const Table kTable = makeTable();

quint16 plainCrc(const QByteArray &bytes)
{
    quint16 crc = frame::kChecksumStart;
    for (const char byte : bytes)
        crc = static_cast<quint16>((crc << 8) ^ kTable[(crc >> 8) ^ static_cast<quint8>(byte)]);
    return crc;
}

void appendU16(QByteArray &bytes, unsigned value)
{
    bytes.append(static_cast<char>(value & 0xFFU)).append(static_cast<char>(value >> 8));
}

/// A frame as the device sends it.
QByteArray replyFrame(quint8 counter, int payloadSize)
{
    QByteArray frame = QByteArray::fromHex("8081828301");
    frame.append(static_cast<char>(counter)).append(char(0x50)).append(char(frame::kDeviceOriginator));
    frame.append(frame::kReservedSize, '\0');
    appendU16(frame, static_cast<unsigned>(payloadSize));
    unsigned sum = frame::kChecksumStart;
    for (const char byte : qAsConst(frame))
        sum += static_cast<quint8>(byte);
    appendU16(frame, sum & 0xFFFFU);
    for (int i = 0; i < payloadSize; ++i)
        frame.append(static_cast<char>(i * 7 + counter));
    appendU16(frame, plainCrc(frame));
    return frame;
}

/// 256 frames, so that the consistency counter goes on evenly when the stream starts again.
QByteArray makeStream(int payloadSize)
{
    QByteArray stream;
    for (int counter = 0; counter < 256; ++counter)
        stream.append(replyFrame(static_cast<quint8>(counter), payloadSize));
    return stream;
}

/// The best of some rounds, in time of the processor, so that other programs disturb little.
template <typename Work>
double megabytesPerSecond(const QByteArray &stream, const Work &work)
{
    double best = 0;
    for (int round = 0; round < kRounds; ++round) {
        const std::clock_t start = std::clock();
        qint64 bytes = 0;
        for (; bytes < kBytesPerRound; bytes += stream.size())
            work(stream);
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        best = std::max(best, double(bytes) / seconds / 1e6);
    }
    return best;
}

bool measure(int payloadSize)
{
    const QByteArray stream = makeStream(payloadSize);
    SystemTime time;
    Communication_Aux decoder(time);
    qint64 frames = 0;
    qint64 faults = 0;
    QObject::connect(&decoder, &Communication_Aux::Signal_RcvDatagramOk, &decoder, [&frames] { ++frames; });

    const double decoded = megabytesPerSecond(stream, [&decoder, &faults](const QByteArray &bytes) {
        const char *const end = bytes.cend();
        for (const char *byte = bytes.cbegin(); byte != end;) {
            const char *const readEnd = byte + std::min(kBytesPerRead, int(end - byte));
            for (; byte != readEnd; ++byte)
                faults += decoder.RX_from_VX(static_cast<uchar>(*byte)) != Communication_Aux::Taken;
            QCoreApplication::sendPostedEvents();
        }
    });
    unsigned sink = 0;
    const double plain =
        megabytesPerSecond(stream, [&sink](const QByteArray &bytes) { sink ^= plainCrc(bytes); });

    std::printf(
        "payload %4d: decoder %7.1f MB/s, plain table CRC %7.1f MB/s, ratio %.2f (%lld frames, %lld faults, "
        "sink %u)\n",
        payloadSize, decoded, plain, decoded / plain, frames, faults, sink);
    const qint64 streams = (kBytesPerRound + stream.size() - 1) / stream.size();
    return faults == 0 && frames == streams * 256 * kRounds;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    bool correct = true;
    for (const int payloadSize : {frame::kMaxPayload, 256, 32, 4})
        correct = measure(payloadSize) && correct;
    return correct ? 0 : 1;
}
