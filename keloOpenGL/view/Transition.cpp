#include "keloOpenGL/view/Transition.h"

namespace kelo {

float valueBetween(float start, float target, double weight)
{
    return static_cast<float>(start * (1.0 - weight) + target * weight);
}

Vector3 valueBetween(const Vector3 &start, const Vector3 &target, double weight)
{
    return {valueBetween(start.x, target.x, weight), valueBetween(start.y, target.y, weight),
            valueBetween(start.z, target.z, weight)};
}

AngleAndAxis valueBetween(const AngleAndAxis &start, const AngleAndAxis &target, double weight)
{
    const Quaternion initial = quaternionOfRotation(start);
    const Quaternion final = quaternionOfRotation(target);
    AngleAndAxis turn =
        rotationOfQuaternion(Quaternion_multiplied(Quaternion_inverted(initial), final));
    turn[0] = static_cast<float>(weight * static_cast<double>(turn[0]));
    return rotationOfQuaternion(Quaternion_multiplied(initial, quaternionOfRotation(turn)));
}

} // namespace kelo
