// Measures the frame decoder, fed byte by byte, beside a plain CRC with one table over the same bytes: with
// the decoder's debug lines filtered, and with the lines built for a log that drops them.

#include "base/timesource.h"
#include "link/communication_aux.h"
#include "link/frameformat.h"
#include "number.h"
#include "support/devicereplies.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <optional>

namespace {

constexpr int kRounds = 15;
constexpr int kBytesPerRound = 16 * 1024 * 1024;
constexpr double kAimMegabytes = 350; ///< a second, while no debug lines are written
constexpr int kBytesPerRead = 4096;   ///< the event loop turns after so many bytes, as behind a transport

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

/// 256 frames, so that the consistency counter goes on evenly when the stream starts again.
QByteArray makeStream(int payloadSize)
{
    QByteArray stream;
    for (int counter = 0; counter < 256; ++counter) {
        QByteArray payload;
        for (int i = 0; i < payloadSize; ++i)
            payload.append(static_cast<char>(i * 7 + counter));
        stream.append(device::frame(payload, static_cast<quint8>(counter)));
    }
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

/// Has `aim` megabytes a second, if there is one, as its aim. False if the decoder did not decode.
bool measure(int payloadSize, const char *condition, std::optional<double> aim)
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

    Number number("decoder, payload of " + std::to_string(payloadSize) + " bytes, lines " + condition,
                  decoded, "MB/s");
    number.beside("bare table CRC", plain);
    if (aim)
        number.atLeast(*aim).asAim();
    number.report();
    const qint64 streams = (kBytesPerRound + stream.size() - 1) / stream.size();
    const bool isCorrect = faults == 0 && frames == streams * 256 * kRounds;
    if (!isCorrect)
        std::fprintf(stderr, "%lld frames, %lld faults, sink %u\n", frames, faults, sink);
    return isCorrect;
}

bool measureAll(const char *condition, std::optional<double> aim)
{
    bool correct = true;
    for (const int payloadSize : {frame::kMaxPayload, 256, 32, 4})
        correct = measure(payloadSize, condition, aim) && correct;
    return correct;
}

void dropLine(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const bool quiet = measureAll("filtered", kAimMegabytes);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
    const QtMessageHandler before = qInstallMessageHandler(dropLine);
    const bool talking = measureAll("dropped", std::nullopt);
    qInstallMessageHandler(before);
    return quiet && talking ? 0 : 1;
}
