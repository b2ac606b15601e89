// The receive state machine of the links against a plain one, made from the description of the frame format,
// which takes each byte for itself.

#include "decoderinput.h"
#include "fuzzinput.h"
#include "fuzztarget.h"
#include "link/communication_aux.h"
#include "sim/framecodec.h"
#include "support/devicereplies.h"
#include "support/virtualtime.h"

#include <QByteArrayList>
#include <QCoreApplication>

using fuzz::require;

namespace {

constexpr int kPauseLimit = 1000; // ms
constexpr int kUsualLimit = 1500; // bytes

class PlainReceiver
{
public:
    explicit PlainReceiver(int limit)
        : m_limit(limit)
    {}

    QByteArrayList frames; ///< those that passed all checks, since the last comparison
    int resets = 0;

    bool isInFrame() const { return !m_bytes.isEmpty(); }

    int take(quint8 byte)
    {
        if (m_bytes.size() >= m_limit)
            return -2;
        if (m_bytes.isEmpty() && byte != 0x80) {
            reset();
            return -1;
        }
        m_bytes.append(static_cast<char>(byte));
        m_silentMs = 0;
        if (m_bytes.size() == sim::kHeaderSize && !isHeaderRight()) {
            reset();
            return -1;
        }
        if (m_bytes.size() < sim::kHeaderSize + 2 || m_bytes.size() < wholeSize())
            return 0;
        const bool isRight = u16(wholeSize() - 2) == sim::FrameCodec::crc(m_bytes, wholeSize() - 2);
        if (isRight)
            frames.append(m_bytes);
        reset();
        return isRight ? 0 : -9;
    }

    void passTime(int ms)
    {
        m_silentMs += ms;
        if (isInFrame() && m_silentMs >= kPauseLimit)
            reset();
    }

    void reset()
    {
        ++resets;
        m_bytes.clear();
    }

private:
    int u16(int at) const
    {
        return static_cast<quint8>(m_bytes.at(at)) | static_cast<quint8>(m_bytes.at(at + 1)) << 8;
    }

    int wholeSize() const { return sim::kHeaderSize + u16(16) + sim::kTrailerSize; }

    bool isHeaderRight() const
    {
        return m_bytes.startsWith(QByteArray("\x80\x81\x82\x83\x01")) && m_bytes.at(7) == 'K' &&
               u16(16) <= sim::kMaximumPayload && u16(18) == sim::FrameCodec::headerSum(m_bytes);
    }

    const int m_limit;
    QByteArray m_bytes;
    int m_silentMs = 0;
};

/// The decoder beside the plain receiver: both are given the same, and must come to the same.
class Pair
{
public:
    explicit Pair(int limit)
        : m_decoder(m_time, nullptr, std::chrono::milliseconds(kPauseLimit), limit)
        , m_plain(limit)
    {
        QObject::connect(&m_decoder, &Communication_Aux::Signal_RcvDatagramOk, &m_decoder,
                         [this](QByteArray &frame) { receive(frame); });
        QObject::connect(&m_decoder, &Communication_Aux::Signal_ResetRcvData, &m_decoder,
                         [this] { ++m_resets; });
    }

    bool abandons = false; ///< receivers drop the rest of a read

    void takeByte(quint8 byte)
    {
        const int result = m_decoder.RX_from_VX(byte);
        require(result == m_plain.take(byte), "a byte has the result of the frame format");
        compare();
    }

    void takeRead(const QByteArray &read)
    {
        m_decoder.takeRead(read);
        for (const char byte : read) {
            const int frames = m_plain.frames.size();
            if (m_plain.take(static_cast<quint8>(byte)) != 0)
                break;
            if (abandons && m_plain.frames.size() > frames)
                break;
        }
        compare();
    }

    void passTime(int ms)
    {
        m_time.advance(ms);
        m_plain.passTime(ms);
        compare();
        require(m_time.activeTimers() == (m_plain.isInFrame() ? 1 : 0), "the time-out runs within a frame");
    }

    void timeOut()
    {
        m_decoder.RcvTimeOver();
        m_plain.reset();
        compare();
    }

    /// After a pause the next frame is taken, whatever came before.
    void finish()
    {
        passTime(kPauseLimit);
        const int frames = m_frameCount;
        takeRead(device::frame("the end", 7));
        require(m_frameCount == frames + 1, "a right frame behind a pause is taken");
    }

private:
    void receive(const QByteArray &frame)
    {
        m_frames.append(QByteArray(frame.constData(), frame.size())); // the frame's own bytes are used again
        if (abandons)
            m_decoder.abandonRead();
    }

    void compare()
    {
        require(m_frames == m_plain.frames, "the frames are those that the format allows");
        require(m_resets == m_plain.resets, "each end of a frame is a reset");
        m_frameCount += m_frames.size();
        m_frames.clear();
        m_plain.frames.clear();
    }

    VirtualTime m_time;
    Communication_Aux m_decoder;
    PlainReceiver m_plain;
    QByteArrayList m_frames; ///< since the last comparison
    int m_frameCount = 0;    ///< before it
    int m_resets = 0;
};

QByteArray repeated(const QByteArray &pattern, int size)
{
    const QByteArray base = pattern.isEmpty() ? QByteArray(1, '\0') : pattern;
    return base.repeated(size / base.size() + 1).left(size);
}

QByteArray damaged(QByteArray frame, decoderinput::Damage damage, int place)
{
    using decoderinput::Damage;
    const int at = place % frame.size();
    switch (damage) {
    case Damage::None:
    case Damage::Count:
        break;
    case Damage::FlippedBit:
        frame[at] = static_cast<char>(frame.at(at) ^ 1 << place % 8);
        break;
    case Damage::LostByte:
        frame.remove(at, 1);
        break;
    case Damage::DoubledByte:
        frame.insert(at, frame.at(at));
        break;
    case Damage::Originator: {
        sim::FrameHeader header;
        header.originator = sim::kProgramOriginator;
        frame = sim::FrameCodec::encode(header, frame.mid(sim::kHeaderSize).chopped(sim::kTrailerSize));
        break;
    }
    }
    return frame;
}

void takeFrame(fuzz::Input &input, Pair &pair)
{
    const quint8 counter = input.u8();
    const int size = input.u16() % (decoderinput::kLongestPayload + 1);
    const QByteArray whole = device::frame(repeated(input.shortBlock(), size), counter);
    const auto damage = input.choice<decoderinput::Damage>();
    const QByteArray frame = damaged(whole, damage, input.u16());
    const int cut = input.u16() % (frame.size() + 1);
    pair.takeRead(frame.left(cut));
    pair.takeRead(frame.mid(cut));
}

void takeStep(fuzz::Input &input, Pair &pair)
{
    using decoderinput::Step;
    switch (input.choice<Step>()) {
    case Step::Bytes: {
        const QByteArray bytes = input.shortBlock();
        for (const char byte : bytes)
            pair.takeByte(static_cast<quint8>(byte));
        break;
    }
    case Step::Read:
        pair.takeRead(input.shortBlock());
        break;
    case Step::Frame:
        takeFrame(input, pair);
        break;
    case Step::Pause:
        pair.passTime(input.u16() % (decoderinput::kLongestPause + 1));
        break;
    case Step::Turn:
        pair.passTime(0);
        break;
    case Step::Abandon:
        pair.abandons = input.flag();
        break;
    case Step::TimeOut:
        pair.timeOut();
        break;
    case Step::Count:
        break;
    }
}

} // namespace

void fuzz::begin(int &argc, char **argv)
{
    new QCoreApplication(argc, argv);
}

void fuzz::tryInput(const QByteArray &bytes)
{
    Input input(bytes);
    const quint8 limit = input.u8();
    Pair pair(limit < 128 ? kUsualLimit : limit); // a small one shows what happens at the limit
    while (!input.atEnd())
        takeStep(input, pair);
    pair.finish();
}
