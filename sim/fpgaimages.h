#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>

#include <functional>

namespace sim {

/// One kind of FPGA in all modules of one kind.
struct FpgaTarget
{
    quint8 module = 0; ///< 0 controllers, 1 analog modules, 2 gateways
    quint8 fpga = 1;   ///< 1 or 2

    bool isKnown() const;
    /// As "analog-fpga2".
    QString name() const;
};

/// The flash memories of the FPGAs, written by commands. A run of one target is a start, the erasing of the
/// pages from 0 on, the blocks from 0 on, and a stop. What departs from that is a breach: it is noted and, as
/// far as it makes sense, carried out.
///
/// As in a flash, programming can only clear bits; a page that was never erased holds zeros.
class FpgaImages
{
public:
    static constexpr int kBlockSize = 256;
    static constexpr int kPageSize = 65536;
    /// Blocks have 16 bits; an image that fills their pages has one more erased.
    static constexpr int kPages = 257;
    static constexpr int kRememberedBreaches = 1000;

    /// Carries out the payload of an FPGA command, at least its head. Returns what there is to tell, for the
    /// log; empty if nothing.
    QString take(const QByteArray &payload);

    /// Ends all runs without a stop, as a reboot does. What was written stays.
    void endRuns();

    /// What the last run of this target left: the flash from its start to the last block that this run
    /// wrote. Empty if it wrote none.
    QByteArray image(const FpgaTarget &target) const;
    bool isRunning(const FpgaTarget &target) const { return m_flashes.value(key(target)).isRunning; }
    /// Runs of this target that were ended by a stop.
    int finishedRuns(const FpgaTarget &target) const { return m_flashes.value(key(target)).finishedRuns; }

    /// The latest last; no more than kRememberedBreaches.
    const QStringList &breaches() const { return m_breaches; }
    int breachCount() const { return m_breachCount; }

    /// Called at each stop of a run.
    using Sink = std::function<void(const FpgaTarget &target, const QByteArray &image)>;
    void setSink(Sink sink) { m_sink = std::move(sink); }

private:
    struct Flash
    {
        QMap<int, QByteArray> pages; ///< those that were erased or written
        QMap<int, QByteArray> blank; ///< per page a byte for each block, 1 if it is erased
        bool isRunning = false;
        int nextPage = 0;
        int nextBlock = 0;
        int writtenBlocks = 0; ///< end of the highest block of the last run
        int finishedRuns = 0;
    };

    /// One command with what it is for.
    struct Command
    {
        FpgaTarget target;
        int first = 0;
        int second = 0;
        QByteArray data;
    };

    static int key(const FpgaTarget &target) { return target.module << 8 | target.fpga; }
    void start(const Command &command);
    void erase(const Command &command);
    void program(const Command &command);
    void stop(const Command &command);
    void checkPlain(const Command &command, const QString &what);
    void checkRunning(const Command &command, const QString &what);
    void breach(const FpgaTarget &target, const QString &text);
    void tell(const FpgaTarget &target, const QString &text);

    QMap<int, Flash> m_flashes;
    QStringList m_breaches;
    int m_breachCount = 0;
    QStringList m_told; ///< by the command that is being carried out
    Sink m_sink;
};

} // namespace sim
