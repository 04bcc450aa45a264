#include "keloOpenGL/view/Mouth.h"

#include "keloOpenGL/view/MouthTransforms.h"

#include <algorithm>

namespace kelo {

void Mouth::setOpenAngle(float angleInDegrees)
{
    openAngle_ = std::clamp(angleInDegrees, -largestOpenAngle, largestOpenAngle);
}

float Mouth::effectiveAngle() const
{
    return effectiveMouthOpenAngle(openAngle_);
}

Matrix Mouth::upperTransform(const Extents &sceneExtents) const
{
    return upperMouthTransform(effectiveAngle(), sceneExtents);
}

Matrix Mouth::lowerTransform(const Extents &sceneExtents) const
{
    return lowerMouthTransform(effectiveAngle(), sceneExtents);
}

} // namespace kelo
