#include "gateway/dialogueview.h"

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
    setFont(fonts::console());
    setReadOnly(true);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setMaximumBlockCount(kLines);
    // A selection that reaches to the end is not to grow by what is added.
    QTextCursor reader = textCursor();
    reader.setKeepPositionOnInsert(true);
    setTextCursor(reader);
}

void DialogueView::add(const QString &text, bool follow)
{
    const bool toEnd = follow || isAtEnd();
    const QTextCursor firstSeen = cursorForPosition(QPoint(0, 0)); // stays with its text
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    if (toEnd)
        scrollToEnd();
    else
        verticalScrollBar()->setValue(lineOf(firstSeen));
}

bool DialogueView::isAtEnd() const
{
    return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void DialogueView::scrollToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}
