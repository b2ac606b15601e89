#include "gateway/dialogueview.h"

#include "base/gui/firstshow.h"
#include "base/gui/fonts.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>

namespace {

/// The line of the view, counted from its beginning, in which the cursor stands.
int lineOf(const QTextCursor &cursor)
{
    const QTextBlock block = cursor.block();
    const QTextLine line = block.layout()->lineForTextPosition(cursor.positionInBlock());
    return block.firstLineNumber() + (line.isValid() ? line.lineNumber() : 0);
}

} // namespace

DialogueView::DialogueView(QWidget *parent)
    : QPlainTextEdit(parent)
{
    beforeFirstShow(*this, [this] { setFont(fonts::console()); }); // takes long to look up
    setReadOnly(true);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setMaximumBlockCount(kLines);
}

void DialogueView::add(const QString &text, bool follow)
{
    const bool toEnd = follow || isAtEnd();
    const QTextCursor firstSeen = cursorForPosition(QPoint(0, 0)); // stays with its text
    insertAtEnd(isLastLineLong() ? QLatin1Char('\n') + text : text);
    dropOldLines();
    if (toEnd)
        scrollToEnd();
    else
        verticalScrollBar()->setValue(lineOf(firstSeen));
}

void DialogueView::resizeEvent(QResizeEvent *event)
{
    const bool wasAtEnd = isAtEnd();
    QPlainTextEdit::resizeEvent(event);
    if (wasAtEnd)
        scrollToEnd();
}

void DialogueView::insertAtEnd(const QString &text)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    QTextCursor oldEnd = end;
    oldEnd.setKeepPositionOnInsert(true);
    QTextCursor reader = textCursor();
    const bool isAnchorAtEnd = reader.anchor() == end.position();
    const bool isReaderAtEnd = reader.position() == end.position();
    const bool growsSelection = reader.hasSelection() && (isAnchorAtEnd || isReaderAtEnd);
    end.insertText(text);
    if (!growsSelection)
        return;
    // The end of the selection went along with the end of the text.
    const int anchor = isAnchorAtEnd ? oldEnd.position() : textCursor().anchor();
    const int position = isReaderAtEnd ? oldEnd.position() : textCursor().position();
    reader.setPosition(anchor);
    reader.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(reader);
}

/// The view needs some 70 bytes for each character that it keeps.
void DialogueView::dropOldLines()
{
    const int excess = document()->characterCount() - kCharacters;
    if (excess <= 0)
        return;
    QTextCursor old(document());
    old.setPosition(excess);
    old.movePosition(QTextCursor::NextBlock);
    old.movePosition(QTextCursor::Start, QTextCursor::KeepAnchor);
    old.removeSelectedText();
}

bool DialogueView::isLastLineLong() const
{
    return document()->lastBlock().length() > kLongLine;
}

bool DialogueView::isAtEnd() const
{
    return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void DialogueView::scrollToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}
