#pragma once

class QString;
class QWidget;

/// Sets a style sheet if the widget does not have it already: setting one costs a polish of the widget.
void setStyleIfChanged(QWidget &widget, const QString &style);
