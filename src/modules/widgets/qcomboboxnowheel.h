#pragma once

#include "modules/widgets/wheelwithfocus.h"

#include <QComboBox>

/// A combo box whose wheel acts only with the focus, and whose list knows a pick with the Shift key.
class QComboBoxNoWheel : public WheelWithFocus<QComboBox>
{
    Q_OBJECT

public:
    explicit QComboBoxNoWheel(QWidget *parent = nullptr);

    /// What the closed box shows: the current text, or as much of it as fits, with "…" at its end. The tool
    /// tip shows it whole then.
    QString shownText() const;

    /// The open list is wide enough for its entries.
    void showPopup() override;

signals:
    /// Emitted when a mouse button is pressed on the open list with Shift and no other key. The item is
    /// picked by the release that follows, so activated() comes after this signal.
    void Signal_ShiftClick();

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool hasList() const;
};
