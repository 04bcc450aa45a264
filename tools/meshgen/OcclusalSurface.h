#pragma once

#include "tools/meshgen/ToothAnatomy.h"

namespace kelo::meshgen {

/// The biting surface of a premolar or molar as a height over the crown's base plane: cusps and
/// ridges as the wax-up of a technician has them, then the fissures between them. All lengths are
/// millimetres in the tooth's own coordinates (x mesial, y labial, z occlusal).
class OcclusalSurface
{
public:
    /// Keeps a reference to `toothAnatomy`.
    explicit OcclusalSurface(const ToothAnatomy &toothAnatomy);

    /// Height at a point. Outside the cusps the surface falls on outwards.
    double heightAt(double x, double y) const;

    /// The same without the fissures: the lobes alone.
    double lobesAt(double x, double y) const;

private:
    double cuspAt(const Cusp &cusp, double x, double y) const;
    double distanceTo(double x, double y, const OcclusalLine &line) const;

    const ToothAnatomy &anatomy;
    double halfWidth;
    double halfDepth;
    double height;
};

} // namespace kelo::meshgen
