// Axis-aligned boxes in double precision, with a flag that tells whether they hold anything yet.
//
// `Extents` is a box that is read; its subclass `MutableExtents` is one that grows. Both are small
// values that may be held directly, copied and assigned; where a box is shared, the class
// operations and the copies hand out a `std::shared_ptr` that belongs to the caller. Neither class
// is locked.
#pragma once

#include "base/Export.h"
#include "geometry/Vector.h"

#include <memory>
#include <set>
#include <string>

namespace kelo {

class MutableExtents;

class KELO_EXPORT Extents
{
public:
    /// An empty box: all six bounds 0, not active.
    Extents() = default;
    /// Each axis from centre - inscribedRadius to centre + inscribedRadius, the components of the
    /// centre widened to double; active. A negative radius yields min > max.
    Extents(Vector3 center, double inscribedRadius);
    /// Each axis from corner to corner + size, added in double precision; active. A negative size
    /// yields min > max.
    Extents(Vector3 corner, Vector3 size);
    /// The six bounds and the flag of the other box, which may be of the subclass.
    Extents(const Extents &other) = default;
    Extents &operator=(const Extents &other) = default;
    virtual ~Extents() = default;

    /// The first three as shared objects, of the class that they are called on.
    [[nodiscard]] static std::shared_ptr<Extents> extents();
    [[nodiscard]] static std::shared_ptr<Extents>
    extentsWithCenter_inscribedRadius(Vector3 center, double inscribedRadius);
    [[nodiscard]] static std::shared_ptr<Extents> extentsWithCorner_size(Vector3 corner,
                                                                         Vector3 size);

    /// The names of the bounds whose change changes a range: {"xMin", "xMax"} and so on.
    [[nodiscard]] static std::set<std::string> keyPathsForValuesAffectingXRange();
    [[nodiscard]] static std::set<std::string> keyPathsForValuesAffectingYRange();
    [[nodiscard]] static std::set<std::string> keyPathsForValuesAffectingZRange();

    /// A new object of this object's own class: the copy of a MutableExtents is a MutableExtents.
    [[nodiscard]] virtual std::shared_ptr<Extents> copy() const;
    /// Always a MutableExtents.
    [[nodiscard]] std::shared_ptr<MutableExtents> mutableCopy() const;

    /// The bounds. Only MutableExtents::orient ensures that min <= max.
    [[nodiscard]] double xMin() const { return _xMin; }
    [[nodiscard]] double xMax() const { return _xMax; }
    [[nodiscard]] double yMin() const { return _yMin; }
    [[nodiscard]] double yMax() const { return _yMax; }
    [[nodiscard]] double zMin() const { return _zMin; }
    [[nodiscard]] double zMax() const { return _zMax; }
    /// False while nothing has been absorbed or set. None of the measures below looks at it: an
    /// empty box measures as a box of size 0 at the origin.
    [[nodiscard]] bool active() const { return _active; }

    /// max - min on one axis; negative where min > max.
    [[nodiscard]] double xRange() const { return _xMax - _xMin; }
    [[nodiscard]] double yRange() const { return _yMax - _yMin; }
    [[nodiscard]] double zRange() const { return _zMax - _zMin; }

    /// Half the largest of the three ranges.
    [[nodiscard]] double radius() const;
    /// Half the length of the diagonal: the radius of the sphere through the corners.
    [[nodiscard]] double circumscribedRadius() const;
    /// The product of the three ranges.
    [[nodiscard]] double volume() const { return xRange() * yRange() * zRange(); }
    /// The middle. Each max + min is summed in double precision, narrowed to float and halved
    /// there.
    [[nodiscard]] Vector3 center() const;

    /// Whether min <= point <= max on all three axes: a point on a face is inside.
    [[nodiscard]] bool containsPoint(Vector3 point) const;
    /// Whether min - fuzz < point < max + fuzz on all three axes. The comparisons are strict,
    /// unlike those of containsPoint: with a fuzz of 0 a point on a face is outside.
    [[nodiscard]] bool containsPoint_fuzz(Vector3 point, double fuzz) const;

    /// "x(xMin,xMax)y(yMin,yMax)z(zMin,zMax)", each number as %g prints it in the C locale (six
    /// significant digits), whatever the locale of the process.
    [[nodiscard]] std::string description() const;

protected:
    double _xMin = 0.0;
    double _xMax = 0.0;
    double _yMin = 0.0;
    double _yMax = 0.0;
    double _zMin = 0.0;
    double _zMax = 0.0;
    bool _active = false;
};

class KELO_EXPORT MutableExtents : public Extents
{
public:
    using Extents::Extents;
    MutableExtents() = default;
    explicit MutableExtents(const Extents &other) : Extents(other) {}

    [[nodiscard]] static std::shared_ptr<MutableExtents> extents();
    [[nodiscard]] static std::shared_ptr<MutableExtents>
    extentsWithCenter_inscribedRadius(Vector3 center, double inscribedRadius);
    [[nodiscard]] static std::shared_ptr<MutableExtents> extentsWithCorner_size(Vector3 corner,
                                                                                Vector3 size);

    [[nodiscard]] std::shared_ptr<Extents> copy() const override;

    /// Each stores the bound and makes the box active, the other five bounds being what they were
    /// (0 in a fresh box).
    void setXMin(double xMin);
    void setXMax(double xMax);
    void setYMin(double yMin);
    void setYMax(double yMax);
    void setZMin(double zMin);
    void setZMax(double zMax);

    /// Grow to hold one point; the first makes an empty box a box of size 0 at that point, and
    /// active. A coordinate that lowers the minimum is not tested against the maximum as well,
    /// which only shows in a box with min > max. A NaN does not move the bounds of an active box.
    void absorb(double x, double y, double z);
    void absorbPoint(Vector3 point);
    /// Three coordinates are read; the pointer must not be null.
    void absorbDoubles(const double *coordinates);
    void absorbFloats(const float *coordinates);

    /// Grow to hold a box. An empty box adopts the other's bounds and becomes active, whether
    /// the other is active or not. The other's flag is ignored: a fresh box, all zeros,
    /// pulls this one out to the origin.
    void absorbExtents(const Extents &other);

    /// Swaps min and max on each axis where min > max.
    void orient();
};

} // namespace kelo
