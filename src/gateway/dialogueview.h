#pragma once

#include <QPlainTextEdit>

/// The dialogue with the gateway as the operator sees it: its last lines, which cannot be changed. A reader
/// who scrolled up or selected a text keeps what he sees while more is added.
class DialogueView : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int kLines = 2000;        ///< older ones are dropped
    static constexpr int kCharacters = 400000; ///< the same for lines that are very long
    /// Characters after which a line is broken: requests of a status stand on one line until a reply comes.
    static constexpr int kLongLine = 1024;

    explicit DialogueView(QWidget *parent = nullptr);

    /// Adds a text at the end. The view goes to its end if it stood there, or if `follow` is set.
    void add(const QString &text, bool follow);

protected:
    /// A view that stood at its end stands there afterwards.
    void resizeEvent(QResizeEvent *event) override;

private:
    void insertAtEnd(const QString &text);
    void dropOldLines();
    bool isLastLineLong() const;
    bool isAtEnd() const;
    void scrollToEnd();
};
