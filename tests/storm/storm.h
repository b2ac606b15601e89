#pragma once

#include "comparison.h"
#include "dialogbook.h"
#include "logwatch.h"
#include "operator.h"
#include "program.h"
#include "stallmeter.h"
#include "verdict.h"
#include "weather.h"
#include "world.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <optional>

struct CertifiedKey;

namespace storm {

struct Options
{
    quint32 seed = 1;
    int seconds = 60;
    bool isVerbose = false; ///< prints each gesture
    bool hasLog = false;    ///< writes the program's log
};

QString asText(const MemorySample &sample);

/// One run: a tour through all dialogs, then rounds of storm, each of which ends with a recovery and a look
/// at what the program shows, then the end.
class Storm : public QObject
{
    Q_OBJECT

public:
    Storm(const Options &options, LogWatch &log, const CertifiedKey &identity);
    ~Storm() override;

    /// Runs from the event loop; emits finished() at the end.
    void begin();

    /// At the end: whether the verdict is empty.
    bool isGood() const { return m_verdict.isEmpty(); }

signals:
    void finished();

private:
    enum class Phase {
        TourOffline,
        Tour,
        Mismatch,
        Gestures,
        Leaving,
        Aftermath,
        Outage,
        Recovery,
        Looking,
        Connecting,
        Calm,
        Over,
        Closing
    };

    void after(int ms, void (Storm::*next)());
    void startTour();
    void startMismatch();
    void endTour();
    void startRound();
    void stopGestures();
    void gesturesAreOver();
    void startOutage();
    void endOutage();
    void recover(Comparison::Reach reach);
    void startRecovery();
    void lookWhetherReady();
    void look();
    void noteRecovery();
    bool isSessionLost(const Snapshot &snapshot);
    void compare(const Snapshot &snapshot);
    void compareNow(const Snapshot &snapshot);
    void compareGateway(const Snapshot &snapshot);
    void note(const Comparison &comparison);
    void watchCalm();
    void startCalm();
    void endCalm();
    void endRound();
    void giveUp();
    void sample();
    void goOn();
    void end();
    void closeSomewhere();
    void leaveDialogs();
    void askForCounts();
    void finish(const WorldCounts &counts);
    void collect(const WorldCounts &counts);
    void report() const;
    void notice(const QString &text) const;
    double secondsNow() const { return static_cast<double>(m_clock.elapsed()) / 1000; }
    bool isTimeUp() const;

    const Options m_options;
    LogWatch &m_log;
    const Addresses m_addresses;
    StallMeter m_meter;
    DialogBook m_book;
    std::unique_ptr<World> m_world;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<Weather> m_weather;
    std::unique_ptr<Operator> m_operator;
    Chance m_chance;
    QElapsedTimer m_clock;
    QTimer m_phaseTimer;
    QTimer m_lookTimer;
    Phase m_phase = Phase::TourOffline;
    Comparison::Reach m_reach = Comparison::Reach::Whole;
    int m_round = 0;
    bool m_isLast = false;
    bool m_mismatchWanted = false;
    double m_tourSeconds = 0;

    // Of the recovery under way.
    QElapsedTimer m_recovery;
    kernelclocks::Denied m_deniedAtRecovery; ///< of processors to the program, until then
    qint64 m_worldWaitedAtRecovery = 0;      ///< and the devices
    kernelclocks::Denied m_deniedAtReady;    ///< the same two, until READY
    qint64 m_worldWaitedAtReady = 0;
    Recovery m_times;
    int m_slatesAtReady = 0;
    int m_sessionsAtOutage = 0;
    int m_pollsAtRecovery = 0;
    int m_pollsAtCalm = 0;
    int m_refreshesAtRecovery = 0;
    std::optional<Snapshot> m_gatewayAtCalm; ///< nothing: the panel was not connected

    // Of all.
    double m_longestWalkMs = 0;
    Evidence m_evidence;
    QStringList m_verdict;
    QMap<QString, int> m_classesAtFirst; ///< objects by their classes, at the first sample
    QMap<QString, int> m_classesAtLast;
};

} // namespace storm
