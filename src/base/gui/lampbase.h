#pragma once

class QColor;
class QLineEdit;

/// Colours a lamp, which is a line edit, by the base role of its palette in all colour groups.
void setLampBase(QLineEdit &lamp, const QColor &colour);
