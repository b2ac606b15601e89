#pragma once

#include "modules/widgets/placedbutton.h"

/// A push button whose look is a picture set by its style sheet. Such a style sheet also takes away the mark
/// of the keyboard focus; this button draws one on top.
class PictureButton : public PlacedButton
{
    Q_OBJECT

public:
    explicit PictureButton(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
