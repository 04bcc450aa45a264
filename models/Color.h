#pragma once

#include "base/Export.h"

#include <array>
#include <cstddef>
#include <optional>

namespace kelo {

/// A colour: red, green, blue and alpha, each from 0 to 1, in double precision.
///
/// There is one RGB space: device and calibrated RGB are the same here, so no conversion is ever
/// needed before the components are read. Components outside 0 to 1 are kept as they are.
struct KELO_EXPORT Color
{
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    /// Opaque black.
    constexpr Color() = default;
    constexpr Color(double redComponent, double greenComponent, double blueComponent,
                    double alphaComponent = 1.0)
        : red(redComponent), green(greenComponent), blue(blueComponent), alpha(alphaComponent)
    {}
    /// From red, green, blue, alpha in this order, as the catalogue records hold them.
    constexpr explicit Color(const std::array<double, 4> &components)
        : Color(components[0], components[1], components[2], components[3])
    {}

    static constexpr Color whiteColor() { return {1.0, 1.0, 1.0, 1.0}; }
    static constexpr Color blackColor() { return {0.0, 0.0, 0.0, 1.0}; }
    /// The grey between black (0) and white (1).
    static constexpr Color calibratedWhite(double white, double alpha)
    {
        return {white, white, white, alpha};
    }

    /// The colour of a catalogue record, whose components may be absent.
    static constexpr std::optional<Color>
    fromComponents(const std::optional<std::array<double, 4>> &components)
    {
        return components ? std::optional(Color(*components)) : std::nullopt;
    }

    constexpr bool operator==(const Color &) const = default;

    /// Each component as (1 - fraction) * this + fraction * other, alpha included.
    constexpr Color blendedColorWithFraction_ofColor(double fraction, const Color &other) const
    {
        const double rest = 1.0 - fraction;
        return {rest * red + fraction * other.red, rest * green + fraction * other.green,
                rest * blue + fraction * other.blue, rest * alpha + fraction * other.alpha};
    }

    /// Four floats red, green, blue, alpha, for handing straight to an OpenGL call. They are in
    /// one of eight slots that all colours share and that are filled in turn: the pointer is good
    /// until eight further calls. Only on the thread that owns the OpenGL context.
    const float *rgba() const;
    /// Makes this OpenGL's current colour. Needs a current context.
    void glColor() const;

    // OpenGL loaders define the bare name as a macro, so that a caller that includes one before or
    // after this header would ask for a renamed member. Both spellings are therefore declared, and
    // the call `color.glClearColor()` compiles to the same function in either kind of caller.
#pragma push_macro("glClearColor")
#undef glClearColor
    /// Makes this the colour that OpenGL clears with. Needs a current context.
    void glClearColor() const;
    void epoxy_glClearColor() const;
#pragma pop_macro("glClearColor")

    /// Writes red, green, blue, alpha into the caller's four floats.
    void getRedGreenBlueAlphaIntoArray(float *fourFloats) const;

    /// Equal colours have equal hashes.
    std::size_t hash() const;
};

} // namespace kelo
