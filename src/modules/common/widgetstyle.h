#pragma once

class QAbstractSpinBox;
class QFont;
class QString;
class QWidget;

/// Sets a style sheet if the widget does not have it already: setting one costs a polish of the widget.
void setStyleIfChanged(QWidget &widget, const QString &style);

/// To be called when a spin box with a style sheet goes. Style sheets remember something of its field, and
/// notice the end of that only if the field has a sheet of its own; to have one all the time would double
/// what a change of the box's style costs.
void forgetStyleOfField(const QAbstractSpinBox &box);

/// Sets the font unless the widget has it already, from its parent or from the application: a font of its own
/// makes a widget work out the font of each child anew.
void setFontIfChanged(QWidget &widget, const QFont &font);
