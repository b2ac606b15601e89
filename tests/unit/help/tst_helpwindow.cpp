#include "help/helpwindow.h"

#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <QTextList>
#include <QtTest>

class TstHelpWindow : public QObject
{
    Q_OBJECT

private slots:
    void isTheHelpManual();
    void textIsReadOnly();
    void stepsAreNumbered();
    void textTellsWhatMatters_data();
    void textTellsWhatMatters();
    void linkAsksForTheManual_data();
    void linkAsksForTheManual();
    void wordsAroundTheLinkDoNothing();
    void escapeCloses();
    void textFitsWithoutSidewaysScrolling();

private:
    static QTextBrowser *box(const HelpWindow &window)
    {
        auto *found = window.findChild<QTextBrowser *>(QStringLiteral("helpTextBox"));
        Q_ASSERT(found);
        return found;
    }
};

void TstHelpWindow::isTheHelpManual()
{
    const HelpWindow window;
    QCOMPARE(window.windowTitle(), QString("Help Manual"));
    QVERIFY(!box(window)->accessibleName().isEmpty());
}

void TstHelpWindow::textIsReadOnly()
{
    HelpWindow window;
    window.show();
    const QString before = box(window)->toPlainText();
    QVERIFY(!before.isEmpty());
    QVERIFY(box(window)->isReadOnly());
    QTest::keyClicks(box(window), QStringLiteral("abc"));
    QCOMPARE(box(window)->toPlainText(), before);
}

void TstHelpWindow::stepsAreNumbered()
{
    const HelpWindow window;
    int steps = 0;
    const QTextDocument *text = box(window)->document();
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next()) {
        if (block.textList() && block.textList()->format().style() == QTextListFormat::ListDecimal)
            ++steps;
    }
    QCOMPARE(steps, 7);
}

void TstHelpWindow::textTellsWhatMatters_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("where to click") << "Click the white field with the COM port at the top left";
    QTest::newRow("number") << "enter the number of the COM port";
    QTest::newRow("ports") << "shows the ports 1 to 150";
    QTest::newRow("serial configuration") << "to change the serial configuration";
    QTest::newRow("green") << "green: the system was read";
    QTest::newRow("yellow") << "yellow: the link is open and the controller has not answered";
    QTest::newRow("gray") << "gray: the port or the address could not be opened";
    QTest::newRow("box") << "the box at the upper right";
    QTest::newRow("ready") << "READY: nothing is waiting";
    QTest::newRow("busy") << "1.50 s: busy";
    QTest::newRow("reading") << "3 / 12: the system is being read";
    QTest::newRow("reset") << "Holding the button for two seconds resets the system";
}

void TstHelpWindow::textTellsWhatMatters()
{
    QFETCH(QString, words);
    const HelpWindow window;
    QVERIFY(box(window)->toPlainText().simplified().contains(words));
}

void TstHelpWindow::linkAsksForTheManual_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("mouse") << false;
    QTest::newRow("key") << true;
}

void TstHelpWindow::linkAsksForTheManual()
{
    QFETCH(bool, byKey);
    HelpWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy manual(&window, &HelpWindow::manualRequested);
    QTextBrowser *text = box(window);
    const QString before = text->toPlainText();
    if (byKey) {
        text->setFocus();
        QTest::keyClick(text, Qt::Key_Tab);
        QTest::keyClick(text, Qt::Key_Return);
    } else {
        QVERIFY(text->find(QStringLiteral("complete manual")));
        const QPoint place = text->cursorRect().center() - QPoint(10, 0);
        QTest::mouseClick(text->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
    QCOMPARE(manual.count(), 1);
    QCOMPARE(text->toPlainText(), before); // the text does not go elsewhere
}

void TstHelpWindow::wordsAroundTheLinkDoNothing()
{
    HelpWindow window;
    window.show();
    QSignalSpy manual(&window, &HelpWindow::manualRequested);
    QTextBrowser *text = box(window);
    QVERIFY(text->find(QStringLiteral("READY")));
    QTest::mouseClick(text->viewport(), Qt::LeftButton, Qt::NoModifier, text->cursorRect().center());
    QCOMPARE(manual.count(), 0);
}

void TstHelpWindow::escapeCloses()
{
    HelpWindow window;
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    QVERIFY(!window.isVisible());
}

void TstHelpWindow::textFitsWithoutSidewaysScrolling()
{
    HelpWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(box(window)->document()->size().width() <= box(window)->viewport()->width());
}

QTEST_MAIN(TstHelpWindow)

#include "tst_helpwindow.moc"
