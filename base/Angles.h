// Degrees and radians in single precision. Angles of functions are radians; what views store and
// take from their callers is degrees.
#pragma once

namespace kelo {

/// Pi as a float: the nearest one is 3.14159274, a little above pi.
inline constexpr float pi = 3.1415927f;

/// 180 / pi. A product with it and a division by pi round differently; each caller keeps its own,
/// so that stored rotations have the same bits from run to run.
inline constexpr float degreesPerRadian = 57.29578f;

[[nodiscard]] constexpr float radiansOfDegrees(float angleInDegrees)
{
    return angleInDegrees * pi / 180.0f;
}

} // namespace kelo
