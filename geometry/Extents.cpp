#include "geometry/Extents.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace kelo {

namespace {

/// As "%g", which would take its decimal point from the process locale.
std::string shortNumber(double value)
{
    char digits[32];
    const std::to_chars_result end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 6);
    return std::string(digits, end.ptr);
}

std::string interval(const char *axis, double min, double max)
{
    return std::string(axis) + "(" + shortNumber(min) + "," + shortNumber(max) + ")";
}

float middle(double min, double max)
{
    return static_cast<float>(max + min) * 0.5f;
}

bool holds(double min, double max, double value)
{
    return min <= value && value <= max;
}

bool holdsInside(double min, double max, double value)
{
    return min < value && value < max;
}

/// The "else" is part of the rule: see MutableExtents::absorb.
void absorbValue(double &min, double &max, double value)
{
    if (min > value)
        min = value;
    else if (value > max)
        max = value;
}

void absorbInterval(double &min, double &max, double otherMin, double otherMax)
{
    if (min > otherMin) min = otherMin;
    if (otherMax > max) max = otherMax;
}

} // namespace

Extents::Extents(Vector3 center, double inscribedRadius)
    : _xMin(center.x - inscribedRadius),
      _xMax(center.x + inscribedRadius),
      _yMin(center.y - inscribedRadius),
      _yMax(center.y + inscribedRadius),
      _zMin(center.z - inscribedRadius),
      _zMax(center.z + inscribedRadius),
      _active(true)
{}

Extents::Extents(Vector3 corner, Vector3 size)
    : _xMin(corner.x),
      _xMax(_xMin + size.x),
      _yMin(corner.y),
      _yMax(_yMin + size.y),
      _zMin(corner.z),
      _zMax(_zMin + size.z),
      _active(true)
{}

std::shared_ptr<Extents> Extents::extents()
{
    return std::make_shared<Extents>();
}

std::shared_ptr<Extents> Extents::extentsWithCenter_inscribedRadius(Vector3 center,
                                                                    double inscribedRadius)
{
    return std::make_shared<Extents>(center, inscribedRadius);
}

std::shared_ptr<Extents> Extents::extentsWithCorner_size(Vector3 corner, Vector3 size)
{
    return std::make_shared<Extents>(corner, size);
}

std::set<std::string> Extents::keyPathsForValuesAffectingXRange()
{
    return {"xMin", "xMax"};
}

std::set<std::string> Extents::keyPathsForValuesAffectingYRange()
{
    return {"yMin", "yMax"};
}

std::set<std::string> Extents::keyPathsForValuesAffectingZRange()
{
    return {"zMin", "zMax"};
}

std::shared_ptr<Extents> Extents::copy() const
{
    return std::make_shared<Extents>(*this);
}

std::shared_ptr<MutableExtents> Extents::mutableCopy() const
{
    return std::make_shared<MutableExtents>(*this);
}

double Extents::radius() const
{
    return 0.5 * std::max({xRange(), yRange(), zRange()});
}

double Extents::circumscribedRadius() const
{
    return 0.5 * std::sqrt(xRange() * xRange() + yRange() * yRange() + zRange() * zRange());
}

Vector3 Extents::center() const
{
    return {middle(_xMin, _xMax), middle(_yMin, _yMax), middle(_zMin, _zMax)};
}

bool Extents::containsPoint(Vector3 point) const
{
    return holds(_xMin, _xMax, point.x) && holds(_yMin, _yMax, point.y) &&
           holds(_zMin, _zMax, point.z);
}

bool Extents::containsPoint_fuzz(Vector3 point, double fuzz) const
{
    return holdsInside(_xMin - fuzz, _xMax + fuzz, point.x) &&
           holdsInside(_yMin - fuzz, _yMax + fuzz, point.y) &&
           holdsInside(_zMin - fuzz, _zMax + fuzz, point.z);
}

std::string Extents::description() const
{
    return interval("x", _xMin, _xMax) + interval("y", _yMin, _yMax) + interval("z", _zMin, _zMax);
}

std::shared_ptr<MutableExtents> MutableExtents::extents()
{
    return std::make_shared<MutableExtents>();
}

std::shared_ptr<MutableExtents>
MutableExtents::extentsWithCenter_inscribedRadius(Vector3 center, double inscribedRadius)
{
    return std::make_shared<MutableExtents>(center, inscribedRadius);
}

std::shared_ptr<MutableExtents> MutableExtents::extentsWithCorner_size(Vector3 corner, Vector3 size)
{
    return std::make_shared<MutableExtents>(corner, size);
}

std::shared_ptr<Extents> MutableExtents::copy() const
{
    return mutableCopy();
}

void MutableExtents::setXMin(double xMin)
{
    _xMin = xMin;
    _active = true;
}

void MutableExtents::setXMax(double xMax)
{
    _xMax = xMax;
    _active = true;
}

void MutableExtents::setYMin(double yMin)
{
    _yMin = yMin;
    _active = true;
}

void MutableExtents::setYMax(double yMax)
{
    _yMax = yMax;
    _active = true;
}

void MutableExtents::setZMin(double zMin)
{
    _zMin = zMin;
    _active = true;
}

void MutableExtents::setZMax(double zMax)
{
    _zMax = zMax;
    _active = true;
}

void MutableExtents::absorb(double x, double y, double z)
{
    if (!_active) {
        _xMin = _xMax = x;
        _yMin = _yMax = y;
        _zMin = _zMax = z;
        _active = true;
        return;
    }
    absorbValue(_xMin, _xMax, x);
    absorbValue(_yMin, _yMax, y);
    absorbValue(_zMin, _zMax, z);
}

void MutableExtents::absorbPoint(Vector3 point)
{
    absorb(point.x, point.y, point.z);
}

void MutableExtents::absorbDoubles(const double *coordinates)
{
    absorb(coordinates[0], coordinates[1], coordinates[2]);
}

void MutableExtents::absorbFloats(const float *coordinates)
{
    const double widened[3] = {coordinates[0], coordinates[1], coordinates[2]};
    absorbDoubles(widened);
}

void MutableExtents::absorbExtents(const Extents &other)
{
    if (!_active) {
        Extents::operator=(other);
        _active = true;
        return;
    }
    absorbInterval(_xMin, _xMax, other.xMin(), other.xMax());
    absorbInterval(_yMin, _yMax, other.yMin(), other.yMax());
    absorbInterval(_zMin, _zMax, other.zMin(), other.zMax());
}

void MutableExtents::orient()
{
    if (_xMin > _xMax) std::swap(_xMin, _xMax);
    if (_yMin > _yMax) std::swap(_yMin, _yMax);
    if (_zMin > _zMax) std::swap(_zMin, _zMax);
}

} // namespace kelo
