#include "gateway/dialogueview.h"

#include <QScrollBar>
#include <QtTest>

namespace {

constexpr QSize kSize(400, 160);
constexpr int kLines = 60;

bool isAtEnd(const DialogueView &view)
{
    return view.verticalScrollBar()->value() == view.verticalScrollBar()->maximum();
}

} // namespace

/// The dialogue in a window whose size changes.
class TstDialogueViewResize : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_view.reset(); }

    void viewAtItsEndStaysThere_data();
    void viewAtItsEndStaysThere();
    void viewThatShowedAllGoesToTheEnd();
    void readerWhoScrolledUpStays();

private:
    std::unique_ptr<DialogueView> m_view;
};

void TstDialogueViewResize::init()
{
    m_view = std::make_unique<DialogueView>();
    m_view->resize(kSize);
    m_view->show();
}

void TstDialogueViewResize::viewAtItsEndStaysThere_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("lower") << QSize(400, 60);
    QTest::newRow("little lower") << QSize(400, 150);
    QTest::newRow("narrower") << QSize(150, 160);
    QTest::newRow("lower and narrower") << QSize(200, 90);
    QTest::newRow("higher") << QSize(400, 300);
    QTest::newRow("wider") << QSize(900, 160);
    QTest::newRow("higher and narrower") << QSize(120, 300);
}

void TstDialogueViewResize::viewAtItsEndStaysThere()
{
    QFETCH(QSize, size);
    for (int i = 0; i < kLines; ++i)
        m_view->add(QStringLiteral("line %1 %2\n").arg(i).arg(QString(60, QLatin1Char('x'))), false);
    m_view->grab(); // a drawn view knows the height of each line
    for (const QSize &next : {size, kSize, size}) {
        m_view->resize(next);
        QVERIFY(isAtEnd(*m_view));
        m_view->grab();
        QVERIFY(isAtEnd(*m_view));
    }
    m_view->add("more\n", false);
    QVERIFY(isAtEnd(*m_view));
}

void TstDialogueViewResize::viewThatShowedAllGoesToTheEnd()
{
    for (int i = 0; i < 5; ++i)
        m_view->add(QStringLiteral("line\n"), false);
    QCOMPARE(m_view->verticalScrollBar()->maximum(), 0);
    m_view->resize(400, 40);
    QVERIFY(m_view->verticalScrollBar()->maximum() > 0);
    QVERIFY(isAtEnd(*m_view));
}

void TstDialogueViewResize::readerWhoScrolledUpStays()
{
    for (int i = 0; i < kLines; ++i)
        m_view->add(QStringLiteral("line %1\n").arg(i), false);
    m_view->verticalScrollBar()->setValue(10);
    m_view->resize(400, 90);
    QCOMPARE(m_view->verticalScrollBar()->value(), 10);
    m_view->resize(400, 200);
    QCOMPARE(m_view->verticalScrollBar()->value(), 10);
}

QTEST_MAIN(TstDialogueViewResize)
#include "tst_dialogueview_resize.moc"
