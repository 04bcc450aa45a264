#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"

namespace kelo {

/// How far the mouth is open, and where that puts the two jaws. A positive angle turns the lower
/// jaw away, a negative one the upper; 0 is closed, and so is all within the dead zone
/// (MouthTransforms.h has the formulas).
class KELO_EXPORT Mouth
{
public:
    /// As far as a clinician can open it either way, in degrees.
    static constexpr float largestOpenAngle = 55.0f;

    /// In degrees; 0 at first.
    float openAngle() const { return openAngle_; }
    /// Angles beyond the largest one either way are stored as that.
    void setOpenAngle(float angleInDegrees);
    /// Stores any angle: a transition goes wherever it was sent.
    void setUnlimitedOpenAngle(float angleInDegrees) { openAngle_ = angleInDegrees; }

    /// The angle in radians that the jaws are turned by.
    float effectiveAngle() const;
    Matrix upperTransform(const Extents &sceneExtents) const;
    Matrix lowerTransform(const Extents &sceneExtents) const;

private:
    float openAngle_ = 0.0f;
};

} // namespace kelo
