#pragma once

#include "modules/common/rowcolumns.h"

class QWidget;

/// Puts the controls of a strip under the headers of their columns, in the middle of the strip's height.
namespace stripgeometry {

/// A box or button of one line of text, as wide as the column.
void placeBox(QWidget &widget, const rowcolumns::Column &column);

/// A widget as wide as the column and as high as the strip.
void placeHigh(QWidget &widget, const rowcolumns::Column &column);

/// A button of the size of its picture, in the middle of the column.
void placePicture(QWidget &widget, const rowcolumns::Column &column);

/// A widget as wide as the column, in the first or second of the two lines of the shunts.
void placeInShuntLine(QWidget &widget, const rowcolumns::Column &column, int line);

} // namespace stripgeometry
