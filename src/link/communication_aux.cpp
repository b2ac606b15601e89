#include "link/communication_aux.h"

#include "base/log.h"
#include "base/timesource.h"
#include "link/framecrc.h"

#include <QLoggingCategory>
#include <QtEndian>
#include <algorithm>

namespace {

constexpr char kRxSignature[] = "int Communication_Aux::RX_from_VX(uchar)";
constexpr int kLengthEnd = frame::kLengthOffset + 1;
constexpr int kHeaderEnd = frame::kHeaderSize - 1;
constexpr int kChecksumStep = 128; ///< a power of two

} // namespace

Communication_Aux::Communication_Aux(TimeSource &time, QObject *parent,
                                     std::chrono::milliseconds receiveTimeout, int bufferLimit)
    : QObject(parent)
    , m_bufferLimit(qMin(bufferLimit, int(kBufferSize)))
    , m_receiveTimeout(receiveTimeout)
    , m_timer(time.createTimer(this))
{
    m_frame.reserve(kBufferSize);
    connect(m_timer, &Timer::timeout, this, &Communication_Aux::RcvTimeOver);
    resetReceiver();
}

Communication_Aux::~Communication_Aux() = default;

int Communication_Aux::takeAtStop(uchar byte)
{
    if (m_index >= m_bufferLimit) {
        debugLine(kRxSignature) << "RS232 Buffer Overflow!";
        return Overflow;
    }
    if (m_index == 0 && byte != frame::kStart.front()) {
        resetReceiver();
        return Refused;
    }
    m_bytes[m_index] = static_cast<char>(byte);
    noteReception();
    if (m_index == kLengthEnd) {
        m_payloadLength = valueAt(frame::kLengthOffset);
        // Asked first because this line comes with each frame, and building it in vain is not cheap.
        if (QLoggingCategory::defaultCategory()->isDebugEnabled())
            qDebug() << "Payload Size:" << m_payloadLength;
    } else if (m_index == kHeaderEnd) {
        if (!acceptHeader()) {
            debugLine(kRxSignature) << "Header Not OK!";
            resetReceiver();
            return Refused;
        }
    } else if (m_index == lastIndex()) {
        return finishFrame();
    }
    ++m_index;
    if (m_index > frame::kHeaderSize)
        takeOnChecksum(qMin(m_index, trailerIndex()));
    m_stop = nextStop();
    return Taken;
}

int Communication_Aux::nextStop() const
{
    int stop = kLengthEnd;
    if (m_index > kHeaderEnd)
        stop = qMin(m_index | (kChecksumStep - 1), lastIndex());
    else if (m_index > kLengthEnd)
        stop = kHeaderEnd;
    return qMin(stop, m_bufferLimit);
}

bool Communication_Aux::acceptHeader()
{
    const bool started =
        std::equal(frame::kStart.begin(), frame::kStart.end(), m_bytes,
                   [](quint8 expected, char byte) { return static_cast<char>(expected) == byte; });
    followCounter(static_cast<quint8>(m_bytes[frame::kCounterOffset]));
    const quint16 sum = frame::updateSum(frame::kChecksumStart, m_bytes, frame::kHeaderSumOffset);
    return started && static_cast<quint8>(m_bytes[frame::kOriginatorOffset]) == frame::kDeviceOriginator &&
           m_payloadLength <= frame::kMaxPayload && valueAt(frame::kHeaderSumOffset) == sum;
}

/// A mismatch is only told. On purpose it is not mended: the finished frame counts on once more, so the
/// mismatch repeats with each frame, until one that mismatched fails its checksum.
void Communication_Aux::followCounter(quint8 received)
{
    if (!m_counterValid) {
        m_expectedCounter = received;
        m_counterValid = true;
    } else if (received != m_expectedCounter) {
        debugLine(kRxSignature) << "Inconsistent Consistency Counter!";
        m_expectedCounter = static_cast<quint8>(received + 1);
    }
}

int Communication_Aux::finishFrame()
{
    takeOnChecksum(trailerIndex());
    const quint16 received = valueAt(trailerIndex());
    if (received != m_crc) {
        debugLine(kRxSignature).noquote()
            << QString::asprintf("!!! Invalid Checksum  received %02x Checksum Calculated %02x",
                                 unsigned(received), unsigned(m_crc));
        resetReceiver();
        return BadChecksum;
    }
    m_frame.resize(m_index + 1);
    std::copy_n(m_bytes, m_index + 1, m_frame.begin());
    emit Signal_RcvDatagramOk(m_frame);
    resetReceiver();
    ++m_expectedCounter;
    return Taken;
}

quint16 Communication_Aux::valueAt(int offset) const
{
    return qFromLittleEndian<quint16>(m_bytes + offset);
}

void Communication_Aux::takeOnChecksum(int end)
{
    m_crc = frame::updateCrc(m_crc, m_bytes + m_checked, end - m_checked);
    m_checked = end;
}

void Communication_Aux::resetReceiver()
{
    m_timer->stop();
    m_index = 0;
    m_stop = 0;
    m_frame.resize(0);
    m_payloadLength = 0;
    m_crc = frame::kChecksumStart;
    m_checked = 0;
    emit Signal_ResetRcvData();
}

/// The pause is counted from the end of the turn in which the last byte came. The running count ends here
/// already, so that a time-out which fell due before these bytes were read cannot drop them.
void Communication_Aux::noteReception()
{
    if (m_receptionNoted)
        return;
    m_receptionNoted = true;
    m_timer->stop();
    QMetaObject::invokeMethod(this, &Communication_Aux::watchPause, Qt::QueuedConnection);
}

void Communication_Aux::watchPause()
{
    m_receptionNoted = false;
    if (m_index == 0)
        return;
    m_timer->start(m_receiveTimeout);
    m_stop = m_index; // the next byte begins a new turn
}

void Communication_Aux::RcvTimeOver()
{
    criticalLine("void Communication_Aux::RcvTimeOver()") << "Receive Timeout!";
    resetReceiver();
}

void Communication_Aux::takeRead(const QByteArray &bytes)
{
    const quint32 abandonedReads = m_abandonedReads;
    for (const char byte : bytes) {
        const int result = RX_from_VX(static_cast<uchar>(byte));
        if (result != Taken) {
            qDebug().nospace() << "Rx From VX Stat " << result;
            return;
        }
        if (m_abandonedReads != abandonedReads)
            return;
    }
}

void Communication_Aux::abandonRead()
{
    ++m_abandonedReads;
}
