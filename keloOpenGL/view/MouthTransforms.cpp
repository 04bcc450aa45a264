#include "keloOpenGL/view/MouthTransforms.h"

#include "base/Angles.h"

#include <algorithm>
#include <cmath>

namespace kelo {
namespace {

constexpr float deadZoneInDegrees = 10.0f;
/// The part of the opening that the other jaw takes.
constexpr float followingFraction = 0.125f;
/// The hinge's distance behind the origin, as a part of the scene's depth (y).
constexpr float hingeFraction = -0.625f;

Matrix jawTransform(float effectiveAngle, float jawAngle, const Extents &extents)
{
    const float h = hingeFraction * static_cast<float>(extents.yRange());
    const float zRange = static_cast<float>(extents.zRange());
    Matrix transform;
    Matrix_loadIdentity(&transform);
    Matrix_translate(&transform, 0.0f, -h, 0.5f * zRange * std::sin(effectiveAngle));
    Matrix_rotate(&transform, Vector3{1.0f, 0.0f, 0.0f}, jawAngle);
    Matrix_translate(&transform, 0.0f, h, 0.0f);
    return transform;
}

} // namespace

float effectiveMouthOpenAngle(float mouthOpenAngleInDegrees)
{
    float angle = mouthOpenAngleInDegrees;
    if (angle < 0.0f)
        angle = std::min(angle + deadZoneInDegrees, 0.0f);
    else if (angle > 0.0f)
        angle = std::max(angle - deadZoneInDegrees, 0.0f);
    return radiansOfDegrees(angle);
}

Matrix upperMouthTransform(float effectiveAngle, const Extents &extents)
{
    const float jawAngle =
        effectiveAngle > 0.0f ? followingFraction * effectiveAngle : effectiveAngle;
    return jawTransform(effectiveAngle, jawAngle, extents);
}

Matrix lowerMouthTransform(float effectiveAngle, const Extents &extents)
{
    const float jawAngle =
        effectiveAngle < 0.0f ? followingFraction * effectiveAngle : effectiveAngle;
    return jawTransform(effectiveAngle, jawAngle, extents);
}

} // namespace kelo
