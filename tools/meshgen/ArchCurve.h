#pragma once

#include "tools/meshgen/Vec.h"

#include <vector>

namespace kelo::meshgen {

/// A smooth horizontal curve along a dental arch, from the patient's right end to the left,
/// measured by its own length. Beyond both ends it runs on straight.
class ArchCurve
{
public:
    /// The polynomial curve (degrees 5 in x, 4 in y) that is nearest to `points`, which are in
    /// order from right to left; at least seven. Their z is not used.
    explicit ArchCurve(const std::vector<Vec3> &points);

    /// The point at `station` millimetres from the curve's right end, z = 0.
    Vec3 pointAt(double station) const;
    /// Unit tangent towards the left end.
    Vec3 tangentAt(double station) const;
    /// Unit normal out of the mouth.
    Vec3 outwardAt(double station) const;
    /// The station of the curve's point nearest to `point`, seen from above.
    double stationOf(const Vec3 &point) const;
    /// The whole length between the ends.
    double length() const { return stations.back(); }

private:
    std::vector<Vec3> samples;
    std::vector<double> stations;
};

} // namespace kelo::meshgen
