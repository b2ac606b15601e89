#include "gateway/dialogueview.h"

#include "base/gui/firstshow.h"
#include "base/gui/fonts.h"

#include <QScrollBar>
#include <QTextBlock>

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
    // Nothing is asked by a place in a line: for that the view would keep the shapes of all letters of the
    // line.
    const QTextBlock seen = firstVisibleBlock();
    const QTextCursor firstSeen(seen); // both stay with their texts
    const QTextCursor behind = seen.next().isValid() ? QTextCursor(seen.next()) : QTextCursor();
    const int lineInBlock = verticalScrollBar()->value() - seen.firstLineNumber();
    insertAtEnd(isLastLineLong() ? QLatin1Char('\n') + text : text);
    dropOldLines();
    const bool isDropped = firstSeen.position() == behind.position();
    if (toEnd)
        scrollToEnd();
    else
        verticalScrollBar()->setValue(firstSeen.block().firstLineNumber() + (isDropped ? 0 : lineInBlock));
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
