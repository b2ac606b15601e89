#include "gateway/dialogueview.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QtTest>
#include <algorithm>

namespace {

constexpr int kManyLines = 100;

void fill(DialogueView &view, int lines)
{
    for (int i = 0; i < lines; ++i)
        view.add(QStringLiteral("line %1\n").arg(i), false);
}

bool isAtEnd(const DialogueView &view)
{
    return view.verticalScrollBar()->value() == view.verticalScrollBar()->maximum();
}

/// The text of the uppermost line that is seen.
QString firstSeen(const DialogueView &view)
{
    return view.cursorForPosition(QPoint(0, 0)).block().text();
}

/// Gives the view a font that differs from its own.
void setPixels(DialogueView &view, int pixels)
{
    QFont font = view.font();
    font.setPixelSize(pixels);
    view.setFont(font);
}

} // namespace

class TstDialogueView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_view.reset(); }

    void textsAreAddedAsTheyAre();
    void viewAtItsEndFollows();
    void readerWhoScrolledUpStays();
    void readerInALongLineStays();
    void readerOfADroppedLineGoesToTheOldestOne();
    void followGoesToTheEnd();
    void lineOfUnansweredRequestsIsBroken();
    void oldLinesAreDropped();
    void oldLongLinesAreDroppedSooner();
    void readerStaysWhileOldLinesAreDropped();
    void selectionStays_data();
    void selectionStays();
    void selectionStaysWhileOldLinesAreDropped();
    void hiddenViewTakesTextsToo();
    void fontIsLookedUpWithTheFirstShow();
    void filledViewIsAtItsEndWhenItIsFirstShown_data();
    void filledViewIsAtItsEndWhenItIsFirstShown();
    void tabKeyLeavesTheView();

private:
    std::unique_ptr<DialogueView> m_view;
};

void TstDialogueView::init()
{
    m_view = std::make_unique<DialogueView>();
    m_view->resize(300, 120);
    m_view->show();
}

void TstDialogueView::textsAreAddedAsTheyAre()
{
    m_view->add("#?", false);
    m_view->add("#S;1;2\n", false);
    m_view->add("", true);
    m_view->add("a\n\nb", true);
    QCOMPARE(m_view->toPlainText(), QStringLiteral("#?#S;1;2\na\n\nb"));
}

void TstDialogueView::viewAtItsEndFollows()
{
    fill(*m_view, kManyLines);
    QVERIFY(m_view->verticalScrollBar()->maximum() > 0);
    QVERIFY(isAtEnd(*m_view));
}

void TstDialogueView::readerWhoScrolledUpStays()
{
    fill(*m_view, kManyLines);
    m_view->verticalScrollBar()->setValue(10);
    QCOMPARE(firstSeen(*m_view), QStringLiteral("line 10"));
    fill(*m_view, kManyLines);
    QCOMPARE(firstSeen(*m_view), QStringLiteral("line 10"));
}

void TstDialogueView::readerInALongLineStays()
{
    m_view->add(QString(900, QLatin1Char('m')) + QLatin1Char('\n'), false);
    fill(*m_view, kManyLines);
    m_view->verticalScrollBar()->setValue(7);
    QCOMPARE(firstSeen(*m_view).size(), 900);
    fill(*m_view, kManyLines);
    QCOMPARE(m_view->verticalScrollBar()->value(), 7);
}

void TstDialogueView::readerOfADroppedLineGoesToTheOldestOne()
{
    m_view->add(QString(900, QLatin1Char('m')) + QLatin1Char('\n'), false);
    fill(*m_view, DialogueView::kLines - 2);
    m_view->verticalScrollBar()->setValue(7);
    QCOMPARE(firstSeen(*m_view).size(), 900);
    fill(*m_view, 3);
    QCOMPARE(m_view->verticalScrollBar()->value(), 0);
}

void TstDialogueView::followGoesToTheEnd()
{
    fill(*m_view, kManyLines);
    m_view->verticalScrollBar()->setValue(10);
    m_view->add("#000_1\n", true);
    QVERIFY(isAtEnd(*m_view));
}

void TstDialogueView::lineOfUnansweredRequestsIsBroken()
{
    const QString request = QStringLiteral("#?");
    const int requests = 3 * DialogueView::kLongLine / request.size();
    for (int i = 0; i < requests; ++i)
        m_view->add(request, false);
    int longest = 0;
    for (QTextBlock line = m_view->document()->begin(); line.isValid(); line = line.next())
        longest = std::max(longest, line.text().size());
    QCOMPARE(longest, DialogueView::kLongLine);
    QCOMPARE(m_view->toPlainText().remove('\n'), request.repeated(requests));
}

void TstDialogueView::oldLinesAreDropped()
{
    fill(*m_view, DialogueView::kLines + 10);
    QCOMPARE(m_view->blockCount(), 2000);
    const QString text = m_view->toPlainText();
    QVERIFY(text.startsWith("line 11\n")); // the empty line at the end counts
    QVERIFY(text.endsWith("line 2009\n"));
    QVERIFY(isAtEnd(*m_view));
}

void TstDialogueView::oldLongLinesAreDroppedSooner()
{
    constexpr int kLength = 4000;
    constexpr int kAdded = 2 * DialogueView::kCharacters / kLength;
    for (int i = 0; i < kAdded; ++i)
        m_view->add(QStringLiteral("%1 %2\n").arg(i).arg(QString(kLength, QLatin1Char('x'))), false);
    const QTextDocument &text = *m_view->document();
    QVERIFY(text.characterCount() <= DialogueView::kCharacters);
    QVERIFY(text.characterCount() > DialogueView::kCharacters - 2 * kLength);
    QVERIFY(text.firstBlock().text().startsWith(QStringLiteral("%1 x").arg(kAdded - text.blockCount() + 1)));
    QVERIFY(text.lastBlock().previous().text().startsWith(QStringLiteral("%1 x").arg(kAdded - 1)));
    QVERIFY(isAtEnd(*m_view));
}

void TstDialogueView::readerStaysWhileOldLinesAreDropped()
{
    fill(*m_view, DialogueView::kLines);
    m_view->verticalScrollBar()->setValue(500);
    const QString seen = firstSeen(*m_view);
    fill(*m_view, kManyLines);
    QCOMPARE(firstSeen(*m_view), seen);
}

void TstDialogueView::selectionStays_data()
{
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("selected");
    QTest::newRow("in the middle") << 4 << 7 << "two";
    QTest::newRow("to the end") << 8 << 13 << "three";
    QTest::newRow("from the end") << 13 << 8 << "three";
}

void TstDialogueView::selectionStays()
{
    QFETCH(int, anchor);
    QFETCH(int, position);
    m_view->add("one two three", false);
    QTextCursor reader = m_view->textCursor();
    reader.setPosition(anchor);
    reader.setPosition(position, QTextCursor::KeepAnchor);
    m_view->setTextCursor(reader);
    QTEST(m_view->textCursor().selectedText(), "selected");
    m_view->add(" four\n", false);
    m_view->add("#000_1\n", true);
    QTEST(m_view->textCursor().selectedText(), "selected");
    QCOMPARE(m_view->textCursor().position(), position);
}

void TstDialogueView::selectionStaysWhileOldLinesAreDropped()
{
    fill(*m_view, DialogueView::kLines);
    m_view->add("the last", false);
    QTextCursor reader = m_view->textCursor();
    reader.movePosition(QTextCursor::End);
    reader.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    m_view->setTextCursor(reader);
    fill(*m_view, kManyLines);
    QCOMPARE(m_view->textCursor().selectedText(), QStringLiteral("the last"));
}

void TstDialogueView::hiddenViewTakesTextsToo()
{
    DialogueView view;
    fill(view, kManyLines);
    view.resize(300, 120);
    view.show();
    view.add("the last", true);
    QVERIFY(isAtEnd(view));
    QVERIFY(view.toPlainText().endsWith("the last"));
}

void TstDialogueView::fontIsLookedUpWithTheFirstShow()
{
    DialogueView view;
    fill(view, kManyLines);
    QVERIFY(view.font().family() != QStringLiteral("Lucida Console"));
    view.show();
    QCOMPARE(view.font().family(), QStringLiteral("Lucida Console"));
    QCOMPARE(view.font().pixelSize(), 11);
    QCOMPARE(view.document()->defaultFont().pixelSize(), 11);
}

void TstDialogueView::filledViewIsAtItsEndWhenItIsFirstShown_data()
{
    QTest::addColumn<int>("pixels");
    QTest::newRow("smaller before") << 7;
    QTest::newRow("larger before") << 20;
}

void TstDialogueView::filledViewIsAtItsEndWhenItIsFirstShown()
{
    QFETCH(int, pixels);
    DialogueView view;
    setPixels(view, pixels);
    view.resize(300, 120);
    fill(view, kManyLines);
    view.add("the last", false);
    view.show();
    QVERIFY(view.verticalScrollBar()->maximum() > 0);
    QVERIFY(isAtEnd(view));
    view.grab(); // a drawn view knows the height of each line
    QVERIFY(isAtEnd(view));
    QCOMPARE(view.cursorForPosition(view.viewport()->rect().bottomLeft()).block().text(),
             QStringLiteral("the last"));
}

void TstDialogueView::tabKeyLeavesTheView()
{
    m_view->setFocus();
    QTest::keyClick(m_view.get(), Qt::Key_Tab);
    QCOMPARE(m_view->toPlainText(), QString());
    QVERIFY(m_view->tabChangesFocus());
}

QTEST_MAIN(TstDialogueView)
#include "tst_dialogueview.moc"
