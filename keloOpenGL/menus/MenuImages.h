#pragma once

#include "models/Color.h"

#include <memory>

class QImage;
class QPainter;

namespace kelo {

// The pictures of the menus' rows, drawn by code but for the pencil. Sizes are in points; an image
// has as many pixels a point as the finest screen, rounded up, and at least two. A desktop before
// Mountain Lion (VersionChecker) gets the same pictures but for placeAllMenuItemImage.
//
// An image is painted once for each colour and number of pixels and then shared. Main thread only.

using MenuImagePointer = std::shared_ptr<const QImage>;

/// 24 x 24: a swatch of the colour.
MenuImagePointer colorMenuItemImage(const Color &color);
/// 29 x 29: two swatches, one behind the other.
MenuImagePointer doubleColorMenuItemImage(const Color &color);
/// 24 x 24: a green plus.
MenuImagePointer addMenuItemImage();
/// 29 x 29: the plus of the row that places all brackets; on desktops before Mountain Lion two.
MenuImagePointer placeAllMenuItemImage();
/// 24 x 24: an orange cross.
MenuImagePointer removeMenuItemImage();
/// 29 x 29: two crosses.
MenuImagePointer doubleRemoveMenuItemImage();
/// 24 x 24: the bundle's picture "pencil_edit"; null where there is none.
MenuImagePointer pencilMenuItemImage();

/// @name The drawing itself
/// In points, with the origin at the bottom left: the painter's y axis points up.
/// @{
void drawColorMenuItemImageWithColor(QPainter &painter, const Color &color);
void drawDoubleColorMenuItemImageWithColor(QPainter &painter, const Color &color);
void drawAddMenuItemImage(QPainter &painter);
void drawRemoveMenuItemImage(QPainter &painter);
void drawDoubleRemoveMenuItemImage(QPainter &painter);
/// @}

} // namespace kelo
