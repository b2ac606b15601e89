#pragma once

#include <QLabel>

/// A label for texts whose length the device decides: one that does not fit ends in "…", and the tool tip
/// shows it whole. text() is always the whole text. Plain text only.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    /// What is on screen: the text, or as much of it as fits.
    QString shownText() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    bool isElided() const { return shownText() != text(); }
};
