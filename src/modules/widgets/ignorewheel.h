#pragma once

class QWidget;

/// The wheel over this widget does nothing, be the focus there or not. The open list of a box still scrolls.
void ignoreWheel(QWidget &widget);
