#pragma once

#include <QPushButton>

/// A push button that has a fixed place instead of one in a layout, or at least a fixed size there, and takes
/// a style sheet at little cost while it is not shown: a window has hundreds of them.
class PlacedButton : public QPushButton
{
    Q_OBJECT

public:
    explicit PlacedButton(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
};
