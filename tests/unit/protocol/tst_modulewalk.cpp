#include "protocol/modulewalk.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

constexpr quint8 kAnalog = 1;
constexpr quint8 kController = 100;
constexpr quint8 kPower = 120;
constexpr int kEndless = 100000;

/// Indices that the walk asks for one after the other, the first included, if no reply says "power".
QVector<int> indicesAsked(quint16 modules, bool withPower)
{
    ModuleWalk walk;
    walk.begin(modules, withPower);
    QVector<int> indices{walk.next()};
    while (indices.size() < kEndless && walk.takeReply(kAnalog) == ModuleWalk::Step::Continue)
        indices.append(walk.next());
    return indices;
}

} // namespace

class TstModuleWalk : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<MessageCatcher>(); }
    void cleanup() { m_log.reset(); }

    void walkEndsAfterTheLastModuleWithoutPower();
    void powerModuleComesLast();
    void noModulesGoesStraightToThePowerModule();
    void noModulesAndNoPowerEndsAfterTheController();
    void modules128LeadIntoThePowerModulesAddress();
    void aClaimOf65535ModulesEndsAfterTheController();
    void aPowerReplyEndsTheWalkWhereverItComes();
    void aPowerModuleOfAnotherTypeEndsTheWalkToo();
    void clearForgetsIndexAndCountOnly();
    void fetchingThePowerModuleIsLogged();

private:
    std::unique_ptr<MessageCatcher> m_log;
};

void TstModuleWalk::walkEndsAfterTheLastModuleWithoutPower()
{
    QCOMPARE(indicesAsked(3, false), QVector<int>({0, 1, 2, 3}));
}

void TstModuleWalk::powerModuleComesLast()
{
    QCOMPARE(indicesAsked(3, true), QVector<int>({0, 1, 2, 3, 0x81}));
}

void TstModuleWalk::noModulesGoesStraightToThePowerModule()
{
    QCOMPARE(indicesAsked(0, true), QVector<int>({0, 0x81}));
}

void TstModuleWalk::noModulesAndNoPowerEndsAfterTheController()
{
    QCOMPARE(indicesAsked(0, false), QVector<int>({0}));
}

void TstModuleWalk::modules128LeadIntoThePowerModulesAddress()
{
    QVector<int> expected;
    for (int i = 0; i <= 128; ++i)
        expected.append(i);
    QCOMPARE(indicesAsked(128, false), expected);
    expected.append(0x81);
    QCOMPARE(indicesAsked(128, true), expected);
}

void TstModuleWalk::aClaimOf65535ModulesEndsAfterTheController()
{
    // The count is a 16-bit value: 65535 plus one comes to 0.
    QCOMPARE(indicesAsked(65535, false), QVector<int>({0}));
    QCOMPARE(indicesAsked(65535, true), QVector<int>({0}));
}

void TstModuleWalk::aPowerReplyEndsTheWalkWhereverItComes()
{
    ModuleWalk walk;
    walk.begin(5, true);
    QCOMPARE(walk.takeReply(kController), ModuleWalk::Step::Continue);
    QCOMPARE(walk.takeReply(kPower), ModuleWalk::Step::Finished);
    QCOMPARE(int(walk.next()), 2);
    QCOMPARE(int(walk.count()), 6);
}

void TstModuleWalk::aPowerModuleOfAnotherTypeEndsTheWalkToo()
{
    ModuleWalk walk;
    walk.begin(0, true);
    QCOMPARE(walk.takeReply(kController), ModuleWalk::Step::Continue);
    QCOMPARE(int(walk.next()), 0x81);
    QCOMPARE(walk.takeReply(kAnalog), ModuleWalk::Step::Finished);
}

void TstModuleWalk::clearForgetsIndexAndCountOnly()
{
    ModuleWalk walk;
    walk.begin(2, true);
    walk.takeReply(kController);
    walk.clear();
    QCOMPARE(int(walk.next()), 0);
    QCOMPARE(int(walk.count()), 0);
    // The power module is still known: the index, of 16 bits, comes round to the count and goes on to it.
    for (int reply = 1; reply <= 0xFFFF; ++reply)
        QCOMPARE(walk.takeReply(kAnalog), ModuleWalk::Step::Finished);
    QCOMPARE(walk.takeReply(kAnalog), ModuleWalk::Step::Continue);
    QCOMPARE(int(walk.next()), 0x81);
}

void TstModuleWalk::fetchingThePowerModuleIsLogged()
{
    indicesAsked(1, false);
    QVERIFY(!m_log->containsText(QStringLiteral("****Fetch next Module Power*****")));
    indicesAsked(1, true);
    QVERIFY(m_log->contains(QStringLiteral("****Fetch next Module Power*****")));
}

QTEST_GUILESS_MAIN(TstModuleWalk)
#include "tst_modulewalk.moc"
