#pragma once

#include <QString>
#include <optional>

namespace gateway {

enum class ByteOrder { Big, Little };
enum class SampleWidth { Bits16, Bits18 };
enum class SampleFormat { Unsigned, TwosComplement };
enum class PcmSync { Unknown, Missing, Present };

/// What one status line tells. A field that the line does not have reads as empty; an empty or unreadable
/// number is 0 where an index is meant. An optional without a value: the line tells nothing known, what is
/// shown stays.
struct Status
{
    QString version;
    int simulation = 0; ///< index in the list of simulations, may be beyond it
    QString bitRate;    ///< kBit/s
    QString channelCount;
    std::optional<int> mode; ///< index in the list of modes
    std::optional<ByteOrder> byteOrder;
    std::optional<SampleWidth> sampleWidth;
    QString extAddress;
    QString extPort;
    std::optional<SampleFormat> sampleFormat;
    QString serialNumber; ///< at least six characters
    QString coreTemperature;
    QString pcbTemperature;
    std::optional<double> highestRate; ///< the highest sampling rate that the system allows
    QString unixTime;
    int activeCom = 0; ///< index in the list of ports, may be beyond it
    std::optional<PcmSync> pcmSync;
    int ptpMode = 0; ///< 0 to 2
    QString ptpState;
    QString ptpAccuracy; ///< nanoseconds
    QString minimumSamples;
    QString maximumSamples;
    std::optional<int> dataProtocol; ///< index in the list of protocols
};

/// What one received piece says. Pieces are not put together: each is read as a whole.
struct Reply
{
    bool isStatus = false;        ///< holds the tag of a status line, whatever else it holds
    std::optional<Status> status; ///< of a status line that is valid
    bool hasPrompt = false;       ///< not looked for in a status line
    bool hasNewAddress = false;   ///< the gateway took a new address; not looked for in a status line
};

/// `piece` is text of one character per byte, of any length and content.
Reply readReply(const QString &piece);

} // namespace gateway
