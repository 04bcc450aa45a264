#include "models/Color.h"

#include "platform/gl.h"

#include <functional>

namespace kelo {

const float *Color::rgba() const
{
    static float slots[8][4];
    static int slot = -1;
    slot = (slot + 1) % 8;
    getRedGreenBlueAlphaIntoArray(slots[slot]);
    return slots[slot];
}

void Color::glColor() const
{
    const float *components = rgba();
    glColor4f(components[0], components[1], components[2], components[3]);
}

void Color::epoxy_glClearColor() const
{
    const float *components = rgba();
    ::glClearColor(components[0], components[1], components[2], components[3]);
}

void Color::getRedGreenBlueAlphaIntoArray(float *fourFloats) const
{
    fourFloats[0] = static_cast<float>(red);
    fourFloats[1] = static_cast<float>(green);
    fourFloats[2] = static_cast<float>(blue);
    fourFloats[3] = static_cast<float>(alpha);
}

std::size_t Color::hash() const
{
    // std::hash gives 0.0 and -0.0, which are equal, the same value.
    std::size_t combined = 0;
    for (const double component : {red, green, blue, alpha})
        combined = combined * 1000003u ^ std::hash<double>()(component);
    return combined;
}

// Last, because the member's own name has to be free of the loader's macro from here on.
#undef glClearColor
void Color::glClearColor() const
{
    epoxy_glClearColor();
}

} // namespace kelo
