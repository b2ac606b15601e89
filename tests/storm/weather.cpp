#include "weather.h"

#include "world.h"

#include <QRegularExpression>
#include <QTimer>
#include <algorithm>

namespace storm {

namespace {

constexpr int kShortestSpellMs = 500;
constexpr int kLongestSpellMs = 2200;
constexpr int kShortestAbsenceMs = 60;
constexpr int kLongestAbsenceMs = 900;
constexpr double kAbsence = 0.12;  ///< of a spell
constexpr int kSpellsOfChance = 8; ///< what did not come by then is brought

/// How many rules a spell has, and how often each of them acts.
struct Strength
{
    int fewestRules;
    int mostRules;
    double leastProbability;
    double mostProbability;
};

Strength strengthOf(Weather::Spell spell)
{
    switch (spell) {
    case Weather::Spell::Calm:
        break;
    case Weather::Spell::Rough:
        return {2, 4, 0.005, 0.05};
    case Weather::Spell::Wild:
        return {4, 8, 0.01, 0.15};
    }
    return {0, 0, 0, 0};
}

QString deviceFault(Chance &chance)
{
    switch (chance.number(0, 14)) {
    case 0:
        return QStringLiteral("lose");
    case 1:
        return QStringLiteral("silence ms=%1").arg(chance.number(0, 600));
    case 2:
        return QStringLiteral("close ms=%1").arg(chance.number(10, 400));
    case 3:
        return QStringLiteral("reset-flag");
    case 4:
        return QStringLiteral("delay ms=%1").arg(chance.number(1, 250));
    case 5:
        return QStringLiteral("unknown-code value=%1").arg(chance.number(0, 255));
    case 6:
        return QStringLiteral("originator value=%1").arg(chance.number(0, 255));
    case 7:
        return QStringLiteral("corrupt part=header byte=%1").arg(chance.number(0, 15));
    case 8:
        return QStringLiteral("corrupt part=payload byte=%1").arg(chance.number(0, 1200));
    case 9:
        return QStringLiteral("corrupt part=crc byte=%1").arg(chance.number(0, 1));
    case 10:
        return QStringLiteral("cut size=%1 gap=%2").arg(chance.number(8, 400)).arg(chance.number(0, 3));
    case 11:
        return QStringLiteral("twice");
    case 12:
        return QStringLiteral("hot");
    case 13:
        return QStringLiteral("reset ms=%1").arg(chance.number(10, 400));
    default:
        return QStringLiteral("input volts=%1").arg(chance.number(0, 600));
    }
}

QString gatewayFault(Chance &chance)
{
    switch (chance.number(0, 8)) {
    case 0:
        return QStringLiteral("cut size=%1 gap=%2").arg(chance.number(5, 60)).arg(chance.number(0, 20));
    case 1:
        return QStringLiteral("merge");
    case 2:
        return QStringLiteral("silent ms=%1").arg(chance.number(0, 900));
    case 3:
        return QStringLiteral("lose");
    case 4:
        return QStringLiteral("close ms=%1").arg(chance.number(0, 700));
    case 5:
        return QStringLiteral("odd field=%1 value=%2")
            .arg(chance.number(0, 40))
            .arg(chance.oneOf(QStringList{QStringLiteral("-1"), QStringLiteral("x"), QStringLiteral("999999"),
                                          QStringLiteral("2500")}));
    case 6:
        return QStringLiteral("flood bytes=%1").arg(chance.number(1, 30000));
    case 7:
        return QStringLiteral("delay ms=%1").arg(chance.number(1, 400));
    default:
        return QStringLiteral("prompt gap=%1").arg(chance.number(0, 30));
    }
}

/// Those of the device that each storm has to have; the ones behind which a session goes on come first.
const QStringList &wantedFaults()
{
    static const QStringList names{QStringLiteral("cut"),   QStringLiteral("delay"),
                                   QStringLiteral("reset"), QStringLiteral("close"),
                                   QStringLiteral("lose"),  QStringLiteral("corrupt")};
    return names;
}

const QString kGateway = QStringLiteral("gateway");

QString rules(const Strength &strength, double factor, Chance &chance, QString (*fault)(Chance &))
{
    QString text;
    const int count = chance.number(strength.fewestRules, strength.mostRules);
    for (int i = 0; i < count; ++i) {
        const double probability =
            strength.leastProbability +
            (strength.mostProbability - strength.leastProbability) * chance.fraction() * chance.fraction();
        text += QStringLiteral("%1 probability=%2\n").arg(fault(chance)).arg(factor * probability, 0, 'f', 4);
    }
    return text;
}

} // namespace

Weather::Weather(World &world, quint32 seed, QObject *parent)
    : QObject(parent)
    , m_world(world)
    , m_chance(seed)
    , m_spellTimer(new QTimer(this))
    , m_returnTimer(new QTimer(this))
{
    m_spellTimer->setSingleShot(true);
    m_returnTimer->setSingleShot(true);
    connect(m_spellTimer, &QTimer::timeout, this, &Weather::nextSpell);
    connect(m_returnTimer, &QTimer::timeout, this, [this] { setChain(m_chain); });
}

void Weather::setChain(int chain)
{
    m_chain = chain;
    m_isAway = false;
    m_returnTimer->stop();
    m_world.plug(chain);
}

void Weather::takeDeviceAway()
{
    ++m_absences;
    m_isAway = true;
    m_spellTimer->stop();
    m_returnTimer->stop();
    m_world.unplug();
}

void Weather::clear()
{
    m_spellTimer->stop();
    m_world.clearFaults();
    if (m_isAway)
        setChain(m_chain);
}

void Weather::hold(const QString &fault)
{
    m_spellTimer->stop();
    if (m_isAway)
        setChain(m_chain);
    m_world.setFaults(fault, {});
}

void Weather::start()
{
    nextSpell();
}

void Weather::nextSpell()
{
    constexpr double kCalm = 0.3;
    constexpr double kWild = 0.2;
    Spell spell = Spell::Rough;
    const double luck = m_chance.fraction();
    if (luck < kCalm)
        spell = Spell::Calm;
    else if (luck > 1 - kWild)
        spell = Spell::Wild;
    ++(spell == Spell::Calm ? m_calm : spell == Spell::Rough ? m_rough : m_wild);
    QStringList device = deviceRules(spell, m_chance).split(QLatin1Char('\n'));
    if (!m_foreignReplies)
        device = device.filter(QRegularExpression(QStringLiteral("^(?!unknown-code)")));
    QString gateway = gatewayRules(spell, m_chance);
    if (spellCount() > kSpellsOfChance) {
        device.append(wantedDeviceRules(m_missing, m_chance));
        gateway += wantedGatewayRules(m_missing, m_chance);
    }
    m_world.setFaults(device.join(QLatin1Char('\n')), gateway);
    askWhatIsMissing();
    if (spell != Spell::Calm && !m_isAway && m_chance.happens(kAbsence)) {
        takeDeviceAway();
        if (m_chance.happens(0.5))
            m_chain = m_chance.number(0, stormChains().size() - 1);
        m_returnTimer->start(m_chance.number(kShortestAbsenceMs, kLongestAbsenceMs));
    }
    if (m_chance.happens(0.1))
        m_world.cutGateway();
    if (m_chance.happens(0.3)) {
        const QByteArray number = QByteArray::number(m_chance.number(50, 70));
        m_world.setVersions("vxconfig v1.1." + number + "\n", "14.03.24  1.4." + number + "  *\n");
    }
    m_spellTimer->start(m_chance.number(kShortestSpellMs, kLongestSpellMs));
}

QString Weather::deviceRules(Spell spell, Chance &chance)
{
    return rules(strengthOf(spell), 1, chance, deviceFault);
}

QString Weather::gatewayRules(Spell spell, Chance &chance)
{
    constexpr double kFewerLines = 4; // than requests of the device
    return rules(strengthOf(spell), kFewerLines, chance, gatewayFault);
}

QString Weather::wantedDeviceRules(const QStringList &kinds, Chance &chance)
{
    constexpr int kApart = 3; // so that no two of them meet the same request
    QString text;
    int request = 1;
    for (const QString &kind : kinds) {
        if (kind == kGateway)
            continue;
        QString fault;
        while (fault.section(QLatin1Char(' '), 0, 0) != kind)
            fault = deviceFault(chance);
        text += QStringLiteral("%1 nth=%2\n").arg(fault).arg(request + chance.number(0, kApart - 1));
        request += kApart;
    }
    return text;
}

QString Weather::wantedGatewayRules(const QStringList &kinds, Chance &chance)
{
    return kinds.contains(kGateway) ? gatewayFault(chance) + QStringLiteral(" nth=1\n") : QString();
}

QStringList Weather::missingKinds(const WorldCounts &counts)
{
    QStringList kinds;
    for (const QString &name : wantedFaults()) {
        if (counts.faults.value(name) == 0)
            kinds.append(name);
    }
    const QStringList met = counts.faults.keys();
    const auto isOfTheGateway = [](const QString &name) { return name.startsWith(kGateway); };
    if (std::none_of(met.cbegin(), met.cend(), isOfTheGateway))
        kinds.append(kGateway);
    return kinds;
}

void Weather::askWhatIsMissing()
{
    m_world.count(this, [this](const WorldCounts &counts) { m_missing = missingKinds(counts); });
}

QStringList Weather::spells() const
{
    return {QStringLiteral("%1 calm").arg(m_calm), QStringLiteral("%1 rough").arg(m_rough),
            QStringLiteral("%1 wild").arg(m_wild), QStringLiteral("%1 absences").arg(m_absences)};
}

} // namespace storm
