#include "modules/channels/stripgeometry.h"

#include <QWidget>

namespace stripgeometry {

namespace {

constexpr int kBoxHeight = 24;
constexpr int kPictureSide = 20;

constexpr int topFor(int height)
{
    return (rowcolumns::kStripHeight - height) / 2;
}

} // namespace

void placeBox(QWidget &widget, const rowcolumns::Column &column)
{
    widget.setGeometry(column.left, topFor(kBoxHeight), column.width, kBoxHeight);
}

void placeHigh(QWidget &widget, const rowcolumns::Column &column)
{
    widget.setGeometry(column.left, 0, column.width, rowcolumns::kStripHeight);
}

void placePicture(QWidget &widget, const rowcolumns::Column &column)
{
    const int left = column.left + (column.width - kPictureSide) / 2;
    widget.setGeometry(left, topFor(kPictureSide), kPictureSide, kPictureSide);
}

void placeInShuntLine(QWidget &widget, const rowcolumns::Column &column, int line)
{
    const int pitch = rowcolumns::kShuntSide + rowcolumns::kGap;
    widget.setGeometry(column.left, line * pitch, column.width, rowcolumns::kShuntSide);
}

} // namespace stripgeometry
