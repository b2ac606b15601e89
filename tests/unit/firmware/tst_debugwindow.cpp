#include "base/variantcast.h"
#include "firmware/debugwindow.h"
#include "protocol/records/fpgafwcommand.h"
#include "support/childbyname.h"
#include "support/dialoglook.h"
#include "support/messagecatcher.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTextBlock>
#include <QtTest>

/// The service panel: one command per click.
class TstDebugWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void windowIsAsAgreed();
    void controlsAreNamed();
    void buttonSendsItsCommand_data();
    void buttonSendsItsCommand();
    void choiceGivesTheTarget_data();
    void choiceGivesTheTarget();
    void choicesAreTwoExclusivePairs();
    void choosingSendsNothing();
    void keysPressTheButtons();
    void textsAreAppended();
    void oldTextsGo();
    void screenIsLogged();
    void nothingIsClipped_data();
    void nothingIsClipped();

private:
    void show();
    QAbstractButton *button(const char *name) const;
    void click(const char *name) const;
    QPlainTextEdit *debugBox() const;

    const QFont m_font = QApplication::font();
    std::unique_ptr<MessageCatcher> m_log;
    std::unique_ptr<DebugWindow> m_window;
    QVector<FPGAfwCommand> m_sent;
};

void TstDebugWindow::init()
{
    m_log = std::make_unique<MessageCatcher>();
    m_sent.clear();
    show();
}

void TstDebugWindow::cleanup()
{
    m_window.reset();
    m_log.reset();
    dialoglook::resetFont();
    QApplication::setFont(m_font);
}

void TstDebugWindow::show()
{
    m_window = std::make_unique<DebugWindow>();
    connect(m_window.get(), &DebugWindow::Signal_FpgaCmd, this, [this](const QVariant &command) {
        QCOMPARE(command.userType(), qMetaTypeId<FPGAfwCommand>());
        m_sent.append(recordFromVariant<FPGAfwCommand>(command));
    });
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

QAbstractButton *TstDebugWindow::button(const char *name) const
{
    return childByName<QAbstractButton>(m_window.get(), name);
}

void TstDebugWindow::click(const char *name) const
{
    constexpr int kOnTheMark = 8; // a radio button hears of clicks on its mark and text only
    QTest::mouseClick(button(name), Qt::LeftButton, {}, {kOnTheMark, button(name)->height() / 2});
}

QPlainTextEdit *TstDebugWindow::debugBox() const
{
    return childByName<QPlainTextEdit>(m_window.get(), "debugBox");
}

void TstDebugWindow::windowIsAsAgreed()
{
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Debug Window"));
    QCOMPARE(button("controllerButton")->text(), QStringLiteral("Controller"));
    QCOMPARE(button("analogButton")->text(), QStringLiteral("Analog"));
    QCOMPARE(button("lattice4Button")->text(), QStringLiteral("Lattice 4"));
    QCOMPARE(button("lattice5Button")->text(), QStringLiteral("Lattice 5"));
    QCOMPARE(button("startButton")->text(), QStringLiteral("Start"));
    QCOMPARE(button("stopButton")->text(), QStringLiteral("Stop"));
    QCOMPARE(button("eraseButton")->text(), QStringLiteral("Erase"));
    QCOMPARE(button("programButton")->text(), QStringLiteral("Program Block"));
    QCOMPARE(m_window->findChildren<QRadioButton *>().size(), 4);
    QCOMPARE(m_window->findChildren<QPushButton *>().size(), 4);
    QVERIFY(debugBox()->isReadOnly());
    QCOMPARE(debugBox()->maximumBlockCount(), 10000);
    QVERIFY(m_sent.isEmpty());
}

void TstDebugWindow::controlsAreNamed()
{
    QCOMPARE(dialoglook::withoutAccessibleName(*m_window), QStringList());
    QVERIFY(!debugBox()->accessibleName().isEmpty());
    for (const QPushButton *pushed : m_window->findChildren<QPushButton *>())
        QVERIFY(!pushed->autoDefault() && !pushed->isDefault());
    button("analogButton")->setChecked(true); // not by a click: it would take the focus
    button("lattice5Button")->setChecked(true);
    debugBox()->setFocus();
    QTest::keyClick(debugBox(), Qt::Key_Tab);
    QCOMPARE(dialoglook::tabOrder(*m_window),
             (QStringList{"analogButton", "lattice5Button", "startButton", "stopButton", "eraseButton",
                          "programButton", "debugBox"}));
}

void TstDebugWindow::buttonSendsItsCommand_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("length");
    QTest::newRow("startButton") << 1 << 0;
    QTest::newRow("stopButton") << 0 << 0;
    QTest::newRow("eraseButton") << 224 << 0;
    QTest::newRow("programButton") << 225 << 256;
}

void TstDebugWindow::buttonSendsItsCommand()
{
    QFETCH(int, code);
    QFETCH(int, length);
    click("analogButton");
    click("lattice5Button");
    click(QTest::currentDataTag());
    QCOMPARE(m_sent.size(), 1);
    const FPGAfwCommand sent = m_sent.first();
    QCOMPARE(int(sent.b0), 1);
    QCOMPARE(int(sent.b1), 2);
    QCOMPARE(int(sent.b2), 1);
    QCOMPARE(int(sent.b3), code);
    QCOMPARE(int(sent.w1), 0);
    QCOMPARE(int(sent.w2), length);
    QCOMPARE(sent.data, QByteArray(length, '\xFF'));
    click(QTest::currentDataTag());
    QCOMPARE(m_sent.size(), 2);
    QCOMPARE(m_sent.last(), sent);
}

void TstDebugWindow::choiceGivesTheTarget_data()
{
    QTest::addColumn<QByteArray>("module");
    QTest::addColumn<QByteArray>("lattice");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    const auto row = [](const char *tag, const char *module, const char *lattice, int first, int second) {
        QTest::newRow(tag) << QByteArray(module) << QByteArray(lattice) << first << second;
    };
    row("neither", "", "", 0, 1);
    row("controller", "controllerButton", "", 0, 1);
    row("analog", "analogButton", "", 1, 1);
    row("lattice 4", "", "lattice4Button", 0, 1);
    row("lattice 5", "", "lattice5Button", 0, 2);
    row("controller, lattice 4", "controllerButton", "lattice4Button", 0, 1);
    row("controller, lattice 5", "controllerButton", "lattice5Button", 0, 2);
    row("analog, lattice 4", "analogButton", "lattice4Button", 1, 1);
    row("analog, lattice 5", "analogButton", "lattice5Button", 1, 2);
}

void TstDebugWindow::choiceGivesTheTarget()
{
    QFETCH(QByteArray, module);
    QFETCH(QByteArray, lattice);
    for (const QByteArray &choice : {module, lattice}) {
        if (!choice.isEmpty())
            click(choice.constData());
    }
    for (const char *name : {"startButton", "stopButton", "eraseButton", "programButton"}) {
        click(name);
        QTEST(int(m_sent.last().b0), "first");
        QTEST(int(m_sent.last().b1), "second");
        QCOMPARE(int(m_sent.last().b2), 1);
    }
    QCOMPARE(m_sent.size(), 4);
}

void TstDebugWindow::choicesAreTwoExclusivePairs()
{
    const char *names[] = {"controllerButton", "analogButton", "lattice4Button", "lattice5Button"};
    for (const char *name : names)
        QVERIFY(!button(name)->isChecked());
    for (const char *name : names)
        click(name);
    QVERIFY(!button("controllerButton")->isChecked());
    QVERIFY(button("analogButton")->isChecked());
    QVERIFY(!button("lattice4Button")->isChecked());
    QVERIFY(button("lattice5Button")->isChecked());
    click("controllerButton");
    QVERIFY(!button("analogButton")->isChecked());
    QVERIFY(button("lattice5Button")->isChecked()); // the other pair is not touched
}

void TstDebugWindow::choosingSendsNothing()
{
    for (const char *name : {"controllerButton", "analogButton", "lattice4Button", "lattice5Button"})
        click(name);
    m_window->appendTextToDebugBox(QStringLiteral("text"));
    QVERIFY(m_sent.isEmpty());
}

void TstDebugWindow::keysPressTheButtons()
{
    button("eraseButton")->setFocus();
    QTest::keyClick(button("eraseButton"), Qt::Key_Space);
    QCOMPARE(m_sent.size(), 1);
    QTest::keyClick(button("eraseButton"), Qt::Key_Return);
    QCOMPARE(m_sent.size(), 1);
    button("analogButton")->setFocus();
    QTest::keyClick(button("analogButton"), Qt::Key_Space);
    QVERIFY(button("analogButton")->isChecked());
}

void TstDebugWindow::textsAreAppended()
{
    m_window->appendTextToDebugBox(QStringLiteral("first"));
    m_window->appendTextToDebugBox(QStringLiteral("<b>second</b>"));
    m_window->appendTextToDebugBox(QString());
    m_window->appendTextToDebugBox(QStringLiteral("fourth"));
    QCOMPARE(debugBox()->toPlainText(), QStringLiteral("first\n<b>second</b>\n\nfourth"));
}

void TstDebugWindow::oldTextsGo()
{
    for (int line = 1; line <= 10003; ++line)
        m_window->appendTextToDebugBox(QString::number(line));
    QCOMPARE(debugBox()->blockCount(), 10000);
    QCOMPARE(debugBox()->document()->firstBlock().text(), QStringLiteral("4"));
    QCOMPARE(debugBox()->document()->lastBlock().text(), QStringLiteral("10003"));
}

void TstDebugWindow::screenIsLogged()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QString expected = QStringLiteral("Screen Dpix: %1 DpiY: %2")
                                 .arg(screen->logicalDotsPerInchX())
                                 .arg(screen->logicalDotsPerInchY());
    QCOMPARE(m_log->lines(QtDebugMsg).filter(QStringLiteral("Dpi")), QStringList{expected});
}

void TstDebugWindow::nothingIsClipped_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("factor");
    QTest::newRow("Open Sans") << "Open Sans" << 1;
    QTest::newRow("DejaVu Sans") << "DejaVu Sans" << 1;
    QTest::newRow("doubled") << "Open Sans" << 2;
}

void TstDebugWindow::nothingIsClipped()
{
    QFETCH(QString, family);
    QFETCH(int, factor);
    QVERIFY(dialoglook::useFont(family));
    QFont font = m_font;
    font.setFamily(QStringLiteral("Segoe UI"));
    font.setPixelSize(factor * 12);
    QApplication::setFont(font);
    show();
    QCOMPARE(dialoglook::clipped(*m_window), QStringList());
    m_window->resize(1, 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(dialoglook::clipped(*m_window), QStringList());
}

QTEST_MAIN(TstDebugWindow)
#include "tst_debugwindow.moc"
