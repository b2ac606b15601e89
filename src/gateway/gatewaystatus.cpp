#include "gateway/gatewaystatus.h"

#include "gateway/gatewaytexts.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace gateway {

namespace {

/// Where the values stand in the line, counted from 0.
namespace field {
constexpr int kVersion = 2;
constexpr int kGuard = 3;
constexpr int kSimulation = 5;
constexpr int kBitRate = 6;
constexpr int kChannelCount = 7;
constexpr int kMode = 8;
constexpr int kByteOrder = 9;
constexpr int kSampleWidth = 10;
constexpr int kExtAddress = 11;
constexpr int kExtPort = 12;
constexpr int kSampleFormat = 13;
constexpr int kSerialNumber = 17;
constexpr int kCoreTemperature = 18;
constexpr int kPcbTemperature = 19;
constexpr int kHighestRate = 28;
constexpr int kUnixTime = 29;
constexpr int kActiveCom = 31;
constexpr int kPcmSync = 32;
constexpr int kPtpMode = 33;
constexpr int kPtpState = 34;
constexpr int kPtpAccuracy = 35;
constexpr int kMinimumSamples = 36;
constexpr int kMaximumSamples = 37;
constexpr int kDataProtocol = 38;
constexpr int kCount = 39;
} // namespace field

struct TextField
{
    int number;
    QString Status::*member;
};

/// Those that are shown as they come.
constexpr TextField kTextFields[] = {
    {field::kVersion, &Status::version},
    {field::kBitRate, &Status::bitRate},
    {field::kChannelCount, &Status::channelCount},
    {field::kExtAddress, &Status::extAddress},
    {field::kExtPort, &Status::extPort},
    {field::kCoreTemperature, &Status::coreTemperature},
    {field::kPcbTemperature, &Status::pcbTemperature},
    {field::kUnixTime, &Status::unixTime},
    {field::kPtpState, &Status::ptpState},
    {field::kPtpAccuracy, &Status::ptpAccuracy},
    {field::kMinimumSamples, &Status::minimumSamples},
    {field::kMaximumSamples, &Status::maximumSamples},
};

/// The piece without what stands behind the status line.
QString upToLineEnd(const QString &piece, int tag)
{
    const auto isLineEnd = [](QChar character) {
        return character == QLatin1Char('\r') || character == QLatin1Char('\n');
    };
    const auto end = std::find_if(piece.cbegin() + tag, piece.cend(), isLineEnd);
    return piece.left(int(end - piece.cbegin()));
}

/// Cuts no more fields than are read, whatever the length of the line; a missing one is empty.
QStringList fieldsOf(const QString &line)
{
    QStringList fields;
    int begin = 0;
    while (fields.size() < field::kCount && begin <= line.size()) {
        const int separator = line.indexOf(QLatin1Char(';'), begin);
        const int end = separator < 0 ? line.size() : separator;
        fields.append(line.mid(begin, end - begin));
        begin = end + 1;
    }
    while (fields.size() < field::kCount)
        fields.append(QString());
    return fields;
}

std::optional<double> realNumber(const QString &text)
{
    bool readable = false;
    const double number = text.toDouble(&readable);
    if (!readable || !std::isfinite(number))
        return {};
    return number;
}

std::optional<int> indexIn(const QStringList &list, const QString &text)
{
    const int index = list.indexOf(text);
    if (index < 0)
        return {};
    return index;
}

template <typename Value>
struct Meaning
{
    const char *text;
    Value value;
};

/// What the text means; nothing if it is none of the list.
template <typename Value, std::size_t size>
std::optional<Value> meaningOf(const QString &text, const Meaning<Value> (&meanings)[size])
{
    for (const Meaning<Value> &meaning : meanings) {
        if (text == QLatin1String(meaning.text))
            return meaning.value;
    }
    return {};
}

constexpr Meaning<ByteOrder> kByteOrders[] = {{"B", ByteOrder::Big}, {"L", ByteOrder::Little}};
constexpr Meaning<SampleWidth> kSampleWidths[] = {{"16", SampleWidth::Bits16}, {"18", SampleWidth::Bits18}};
constexpr Meaning<SampleFormat> kSampleFormats[] = {{"U", SampleFormat::Unsigned},
                                                    {"2", SampleFormat::TwosComplement}};
constexpr Meaning<PcmSync> kPcmSyncs[] = {
    {"X", PcmSync::Unknown}, {"0", PcmSync::Missing}, {"1", PcmSync::Present}};

int ptpModeOf(const QString &text)
{
    const int mode = text.toInt();
    return mode == 1 || mode == 2 ? mode : 0;
}

QString paddedSerialNumber(const QString &text)
{
    constexpr int kWidth = 6;
    return text.rightJustified(kWidth, QLatin1Char('0'));
}

Status statusOf(const QStringList &fields)
{
    Status status;
    for (const TextField &text : kTextFields)
        status.*text.member = fields.at(text.number);
    status.simulation = fields.at(field::kSimulation).toInt();
    status.mode = indexIn(modeTexts(), fields.at(field::kMode));
    status.byteOrder = meaningOf(fields.at(field::kByteOrder), kByteOrders);
    status.sampleWidth = meaningOf(fields.at(field::kSampleWidth), kSampleWidths);
    status.sampleFormat = meaningOf(fields.at(field::kSampleFormat).left(1), kSampleFormats);
    status.serialNumber = paddedSerialNumber(fields.at(field::kSerialNumber));
    status.highestRate = realNumber(fields.at(field::kHighestRate));
    status.activeCom = fields.at(field::kActiveCom).toInt();
    status.pcmSync = meaningOf(fields.at(field::kPcmSync), kPcmSyncs);
    status.ptpMode = ptpModeOf(fields.at(field::kPtpMode));
    status.dataProtocol = indexIn(dataProtocolTexts(), fields.at(field::kDataProtocol));
    return status;
}

} // namespace

Reply readReply(const QString &piece)
{
    constexpr double kGuard = 1; // a valid status line tells more
    Reply reply;
    const int tag = piece.indexOf(QLatin1String("#S"));
    if (tag >= 0) {
        reply.isStatus = true;
        const QStringList fields = fieldsOf(upToLineEnd(piece, tag));
        if (realNumber(fields.at(field::kGuard)).value_or(kGuard) > kGuard)
            reply.status = statusOf(fields);
        return reply;
    }
    reply.hasPrompt = piece.contains(QLatin1String("]----"));
    reply.hasNewAddress = piece.contains(QLatin1String("[NEW IP ADDRESS"));
    return reply;
}

} // namespace gateway
