#include "keloOpenGL/view/MouthSteps.h"

namespace kelo {
namespace {

constexpr float stepAngle = 45.0f;
/// Between closed and open, as the steps see it: the same dead zone as the jaws have.
constexpr float closedAngle = 10.0f;

} // namespace

bool mouthSnapsClosed(float angle)
{
    return angle > -mouthSnapAngle && angle < mouthSnapAngle;
}

std::optional<float> mouthAngleOneStepUp(float angle)
{
    if (angle > closedAngle) return 0.0f;
    return angle > -stepAngle ? std::optional(-stepAngle) : std::nullopt;
}

std::optional<float> mouthAngleOneStepDown(float angle)
{
    if (angle < -closedAngle) return 0.0f;
    return angle < stepAngle ? std::optional(stepAngle) : std::nullopt;
}

} // namespace kelo
