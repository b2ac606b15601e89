#pragma once

class QFont;
class QString;
class QWidget;

/// Sets a style sheet if the widget does not have it already: setting one costs a polish of the widget.
void setStyleIfChanged(QWidget &widget, const QString &style);

/// Sets the font unless the widget has it already, from its parent or from the application: a font of its own
/// makes a widget work out the font of each child anew.
void setFontIfChanged(QWidget &widget, const QFont &font);
