#pragma once

#include "system/rates/ratepairs.h"

#include <QIcon>

namespace rates {

/// How a pair of figures looks on its cell.
struct RatePicture
{
    QIcon icon;
    QSize size; ///< of the icon, in device independent pixels
};

/// Draws the pair: the large figure above the small one, which is red, on a transparent ground; a dead cell
/// shows both in grey. The icon has pictures for screens with a device pixel ratio of 1 and of 2.
RatePicture ratePicture(const RatePair &pair);

} // namespace rates
