#pragma once

#include "tools/meshgen/Arrangement.h"
#include "tools/meshgen/Mesh.h"

#include <optional>

namespace kelo::meshgen {

/// A place on a tooth with its own coordinates: `along` and `up` across the surface, `out` off it.
/// Coordinates in it are millimetres from `origin`, a point of the surface.
struct SurfaceFrame
{
    Vec3 origin;
    Vec3 along; ///< towards the midline of the arch
    Vec3 up;    ///< towards the tooth's edge or cusps
    Vec3 out;   ///< off the tooth

    Vec3 point(double x, double y, double z) const { return origin + along * x + up * y + out * z; }
    Vec3 own(const Vec3 &point) const
    {
        const Vec3 offset = point - origin;
        return {dot(offset, along), dot(offset, up), dot(offset, out)};
    }
    Vec3 ownDirection(const Vec3 &direction) const
    {
        return {dot(direction, along), dot(direction, up), dot(direction, out)};
    }
};

/// The frame on the surface that the ray from 8 mm outside `near` against `outward` meets; its
/// `out` is the mean normal of the surface within `radius`. Where the ray misses, the frame stands
/// at `near` itself.
SurfaceFrame frameOnSurface(const Mesh &tooth, const ToothPlacement &placement, const Vec3 &near,
                            const Vec3 &outward, double radius);

/// The height of the tooth's surface over the frame's plane at (x, y); nothing beside the tooth.
std::optional<double> surfaceHeight(const Mesh &tooth, const SurfaceFrame &frame, double x,
                                    double y);

/// The size of a bonding pad.
struct PadSize
{
    double width = 0.0;     ///< along the arch
    double height = 0.0;    ///< along the crown
    double thickness = 0.0; ///< over the surface, in the middle
    double roundness = 4.0; ///< exponent of the outline: 2 is an ellipse, more is squarer
    int corners = 20;       ///< points of the outline
};

/// A bonding pad that fits the tooth: its underside follows the surface, sunk into it by a few
/// hundredths of a millimetre, its upper side the same at the pad's thickness, with a bevelled
/// rim. Where the tooth ends or turns away inside the outline, the pad is cut back to it.
Mesh makePad(const Mesh &tooth, const SurfaceFrame &frame, const PadSize &size);

} // namespace kelo::meshgen
