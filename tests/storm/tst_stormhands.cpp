#include "hands.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QtTest>

using namespace storm;

/// The hands of the storm reach what an operator's reach, and nothing else.
class TstStormHands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aClickPressesTheButton();
    void aPressThatIsTakenAwayPressesNothing();
    void aModalDialogKeepsTheHandsFromTheWindow();
    void theyWorkInADialogThatRunsAnEventLoop();
    void keysGoToTheActiveWindow();
    void keysReachShortcuts();
    void anItemOfAListIsPicked();
    void theTitleBarAsksTheWindow();
    void aHeldButtonIsDownMeanwhile();
    void theWheelTurnsWhatHasTheFocus();
    void aClickOnTheTitleBarBringsTheWindowToTheFront();
    void handsThatStopLetGoAndForget();
    void whatIsGoneIsLeftAlone();
    void whatAnActAddsComesNext();

private:
    /// Lets the hands do all that they have.
    void finish();

    std::unique_ptr<QWidget> m_window;
    QPushButton *m_button = nullptr;
    QLineEdit *m_field = nullptr;
    std::unique_ptr<Hands> m_hands;
};

void TstStormHands::init()
{
    m_window = std::make_unique<QWidget>();
    m_button = new QPushButton(QStringLiteral("button"));
    m_field = new QLineEdit;
    auto *layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_button);
    layout->addWidget(m_field);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_hands = std::make_unique<Hands>();
    m_hands->setPace(Hands::Time(0));
    m_hands->start();
}

void TstStormHands::cleanup()
{
    m_hands.reset();
    m_window.reset();
}

void TstStormHands::finish()
{
    QSignalSpy idle(m_hands.get(), &Hands::idle);
    QTRY_VERIFY(!idle.isEmpty() && !m_hands->isBusy());
}

void TstStormHands::aClickPressesTheButton()
{
    const QSignalSpy clicks(m_button, &QPushButton::clicked);
    m_hands->click(m_button);
    finish();
    QCOMPARE(clicks.size(), 1);
    QVERIFY(!m_button->isDown());
}

void TstStormHands::aPressThatIsTakenAwayPressesNothing()
{
    const QSignalSpy presses(m_button, &QPushButton::pressed);
    const QSignalSpy clicks(m_button, &QPushButton::clicked);
    m_hands->pressAndLeave(m_button);
    finish();
    QCOMPARE(presses.size(), 1);
    QCOMPARE(clicks.size(), 0);
}

void TstStormHands::aModalDialogKeepsTheHandsFromTheWindow()
{
    QDialog dialog(m_window.get());
    QLineEdit field(&dialog);
    dialog.setModal(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const QSignalSpy clicks(m_button, &QPushButton::clicked);
    m_hands->click(m_button);
    m_hands->turnWheel(m_button, true);
    m_hands->key(Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    finish();
    QCOMPARE(clicks.size(), 0);
    QCOMPARE(m_field->text(), QString());
    QCOMPARE(field.text(), QStringLiteral("x"));
}

void TstStormHands::theyWorkInADialogThatRunsAnEventLoop()
{
    QDialog dialog(m_window.get());
    QPushButton leave(&dialog);
    connect(&leave, &QPushButton::clicked, &dialog, &QDialog::accept);
    int result = -1;
    connect(m_button, &QPushButton::pressed, this, [&] { result = dialog.exec(); });
    m_hands->click(m_button);
    m_hands->click(&leave);
    QTRY_COMPARE(result, int(QDialog::Accepted));
}

void TstStormHands::keysGoToTheActiveWindow()
{
    m_hands->click(m_field);
    m_hands->typeOver(QStringLiteral("abc"));
    m_hands->typeOver(QStringLiteral("7.b"));
    finish();
    QCOMPARE(m_field->text(), QStringLiteral("7.b"));
}

void TstStormHands::keysReachShortcuts()
{
    const QShortcut shortcut(QKeySequence(QStringLiteral("Ctrl+U")), m_window.get());
    const QSignalSpy activations(&shortcut, &QShortcut::activated);
    m_hands->key(Qt::Key_U, Qt::ControlModifier);
    finish();
    QCOMPARE(activations.size(), 1);
}

void TstStormHands::anItemOfAListIsPicked()
{
    QComboBox list(m_window.get());
    list.addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    list.show();
    const QSignalSpy picks(&list, qOverload<int>(&QComboBox::activated));
    m_hands->click(&list);
    finish();
    QAbstractItemView *view = list.view();
    QVERIFY(QTest::qWaitForWindowActive(view->window()));
    const QRect item = view->visualRect(list.model()->index(2, 0)); // may be wider than the list
    m_hands->clickAt(view->viewport(), QPoint(item.left() + 6, item.center().y()));
    finish();
    QCOMPARE(picks.size(), 1);
    QCOMPARE(list.currentIndex(), 2);
}

void TstStormHands::theTitleBarAsksTheWindow()
{
    QDialog dialog(m_window.get());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const QSignalSpy rejections(&dialog, &QDialog::rejected);
    m_hands->close(&dialog);
    finish();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(rejections.size(), 1);
}

void TstStormHands::aHeldButtonIsDownMeanwhile()
{
    constexpr Hands::Time kHeld(50);
    QElapsedTimer clock;
    qint64 heldMs = -1;
    connect(m_button, &QPushButton::pressed, this, [&clock] { clock.start(); });
    connect(m_button, &QPushButton::released, this, [&] { heldMs = clock.elapsed(); });
    m_hands->click(m_button, Qt::NoModifier, kHeld);
    QTRY_VERIFY(m_button->isDown());
    QCOMPARE(heldMs, -1);
    QTRY_VERIFY(!m_button->isDown());
    QVERIFY2(heldMs >= kHeld.count() - 1, qPrintable(QString::number(heldMs)));
}

void TstStormHands::theWheelTurnsWhatHasTheFocus()
{
    QSpinBox box;
    m_window->layout()->addWidget(&box);
    QTRY_VERIFY(box.isVisible());
    m_hands->click(&box);
    finish();
    QVERIFY(box.hasFocus());
    box.setValue(5);
    m_hands->turnWheel(&box, true);
    m_hands->turnWheel(&box, true);
    finish();
    QCOMPARE(box.value(), 7);
    m_hands->turnWheel(&box, false);
    finish();
    QCOMPARE(box.value(), 6);
}

void TstStormHands::aClickOnTheTitleBarBringsTheWindowToTheFront()
{
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    m_hands->activate(m_window.get());
    QTRY_VERIFY(m_window->isActiveWindow());
    m_hands->activate(&other);
    QTRY_VERIFY(other.isActiveWindow());
}

void TstStormHands::handsThatStopLetGoAndForget()
{
    const QSignalSpy clicks(m_button, &QPushButton::clicked);
    m_hands->click(m_button, Qt::NoModifier, std::chrono::minutes(10));
    m_hands->click(m_button);
    QTRY_VERIFY(m_button->isDown());
    m_hands->stop();
    QVERIFY(!m_button->isDown());
    QVERIFY(!m_hands->isBusy());
    const int acts = m_hands->actCount();
    m_hands->start();
    finish();
    QCOMPARE(clicks.size(), 1); // that which was held
    QCOMPARE(m_hands->actCount(), acts);
}

void TstStormHands::whatIsGoneIsLeftAlone()
{
    auto *gone = new QPushButton(m_window.get());
    gone->show();
    m_hands->click(gone);
    m_hands->close(gone);
    delete gone;
    m_hands->click(m_button);
    const QSignalSpy clicks(m_button, &QPushButton::clicked);
    finish();
    QCOMPARE(clicks.size(), 1);
}

void TstStormHands::whatAnActAddsComesNext()
{
    QStringList done;
    m_hands->then([this, &done] {
        done.append(QStringLiteral("1"));
        m_hands->then([&done] { done.append(QStringLiteral("1a")); });
        m_hands->then([&done] { done.append(QStringLiteral("1b")); });
    });
    m_hands->then([&done] { done.append(QStringLiteral("2")); });
    finish();
    QCOMPARE(done.join(QLatin1Char(' ')), QStringLiteral("1 1a 1b 2"));
}

QTEST_MAIN(TstStormHands)

#include "tst_stormhands.moc"
