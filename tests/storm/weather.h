#pragma once

#include "chance.h"

#include <QObject>
#include <QStringList>

class QTimer;

namespace storm {

class World;
struct WorldCounts;

/// What goes wrong on the way to the devices, by chance, from a seed: spells of calm, rough and wild weather
/// follow each other, and now and then the chain goes away and comes back, or another one does.
class Weather : public QObject
{
    Q_OBJECT

public:
    Weather(World &world, quint32 seed, QObject *parent = nullptr);

    /// The chain is there and all is well, until start().
    void clear();
    void start();

    /// The chain of the clear weather, and the first one of the next storm.
    void setChain(int chain);
    int chain() const { return m_chain; }

    /// The chain goes away now, until clear(); no spell follows until start().
    void takeDeviceAway();

    /// This goes wrong with each request, until clear().
    void hold(const QString &fault);

    /// Whether replies may come with a foreign code. The session takes such a one for an answer and knows
    /// nothing of what was in it.
    void setForeignReplies(bool allowed) { m_foreignReplies = allowed; }

    /// Spells so far, by their names.
    QStringList spells() const;

    /// Kinds of faults that each storm has to have and that were not met: those of the device by their names,
    /// and "gateway" for any of the gateway.
    static QStringList missingKinds(const WorldCounts &counts);

    enum class Spell { Calm, Rough, Wild };

    /// Rules for a spell; by chance. Of the device and of the gateway.
    static QString deviceRules(Spell spell, Chance &chance);
    static QString gatewayRules(Spell spell, Chance &chance);
    /// Rules for the device that bring each of these kinds once, in its first requests, and for the gateway.
    static QString wantedDeviceRules(const QStringList &kinds, Chance &chance);
    static QString wantedGatewayRules(const QStringList &kinds, Chance &chance);

private:
    void nextSpell();
    void askWhatIsMissing();
    int spellCount() const { return m_calm + m_rough + m_wild; }

    World &m_world;
    Chance m_chance;
    QTimer *m_spellTimer;  // child
    QTimer *m_returnTimer; // child; runs while the chain is away
    int m_chain = 0;
    bool m_isAway = true;
    bool m_foreignReplies = true;
    QStringList m_missing; ///< kinds, at the last spell
    int m_calm = 0;
    int m_rough = 0;
    int m_wild = 0;
    int m_absences = 0;
};

} // namespace storm
