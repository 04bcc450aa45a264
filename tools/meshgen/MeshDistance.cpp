#include "tools/meshgen/MeshDistance.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace kelo::meshgen {

namespace {

constexpr std::uint32_t facesOfALeaf = 4;

/// No axis and no symmetry of a dental arch, so that the ray meets no edge.
const Vec3 rayDirection = normalized({0.3717, 0.5311, 0.7613});

double &coordinate(Vec3 &v, int axis)
{
    return axis == 0 ? v.x : axis == 1 ? v.y : v.z;
}

bool rayMeets(const Vec3 &origin, const Vec3 &a, const Vec3 &b, const Vec3 &c)
{
    // Moller and Trumbore.
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const Vec3 p = cross(rayDirection, ac);
    const double determinant = dot(ab, p);
    if (determinant == 0.0) return false;
    const Vec3 t = origin - a;
    const double u = dot(t, p) / determinant;
    if (u < 0.0 || u > 1.0) return false;
    const Vec3 q = cross(t, ab);
    const double v = dot(rayDirection, q) / determinant;
    if (v < 0.0 || u + v > 1.0) return false;
    return dot(ac, q) / determinant > 0.0;
}

} // namespace

Vec3 nearestOnTriangle(const Vec3 &p, const Vec3 &a, const Vec3 &b, const Vec3 &c)
{
    // The plane is divided by the triangle's sides and corners into regions; see in which p lies.
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const double d1 = dot(ab, p - a);
    const double d2 = dot(ac, p - a);
    if (d1 <= 0.0 && d2 <= 0.0) return a;
    const double d3 = dot(ab, p - b);
    const double d4 = dot(ac, p - b);
    if (d3 >= 0.0 && d4 <= d3) return b;
    const double vc = d1 * d4 - d3 * d2;
    if (vc <= 0.0 && d1 >= 0.0 && d3 <= 0.0) return a + ab * (d1 / (d1 - d3));
    const double d5 = dot(ab, p - c);
    const double d6 = dot(ac, p - c);
    if (d6 >= 0.0 && d5 <= d6) return c;
    const double vb = d5 * d2 - d1 * d6;
    if (vb <= 0.0 && d2 >= 0.0 && d6 <= 0.0) return a + ac * (d2 / (d2 - d6));
    const double va = d3 * d6 - d5 * d4;
    if (va <= 0.0 && d4 - d3 >= 0.0 && d5 - d6 >= 0.0)
        return b + (c - b) * ((d4 - d3) / ((d4 - d3) + (d5 - d6)));
    const double sum = va + vb + vc;
    return a + ab * (vb / sum) + ac * (vc / sum);
}

MeshDistance::MeshDistance(const Mesh &mesh)
{
    if (mesh.triangles.empty()) throw std::invalid_argument("A mesh without triangles");
    for (const auto &t : mesh.triangles)
        faces.push_back({mesh.positions[t[0]], mesh.positions[t[1]], mesh.positions[t[2]]});
    nodes.emplace_back();
    build(0, 0, static_cast<std::uint32_t>(faces.size()));
}

void MeshDistance::build(std::uint32_t node, std::uint32_t first, std::uint32_t count)
{
    Box box;
    for (std::uint32_t i = first; i < first + count; ++i)
        for (const Vec3 &p : {faces[i].a, faces[i].b, faces[i].c}) {
            box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y),
                       std::min(box.low.z, p.z)};
            box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y),
                        std::max(box.high.z, p.z)};
        }
    nodes[node].box = box;
    if (count <= facesOfALeaf) {
        nodes[node].first = first;
        nodes[node].count = count;
        return;
    }
    Vec3 size = box.high - box.low;
    int axis = size.x >= size.y ? 0 : 1;
    if (size.z > coordinate(size, axis)) axis = 2;
    const auto middle = [axis](const Face &face) {
        Vec3 sum = face.a + face.b + face.c;
        return coordinate(sum, axis);
    };
    const std::uint32_t half = count / 2;
    const auto begin = faces.begin() + first;
    std::nth_element(begin, begin + half, begin + count,
                     [&](const Face &a, const Face &b) { return middle(a) < middle(b); });
    const auto children = static_cast<std::uint32_t>(nodes.size());
    nodes[node].first = children;
    nodes.resize(nodes.size() + 2);
    build(children, first, half);
    build(children + 1, first + half, count - half);
}

double MeshDistance::squaredDistance(const Box &box, const Vec3 &point)
{
    const Vec3 outside{std::max({box.low.x - point.x, 0.0, point.x - box.high.x}),
                       std::max({box.low.y - point.y, 0.0, point.y - box.high.y}),
                       std::max({box.low.z - point.z, 0.0, point.z - box.high.z})};
    return dot(outside, outside);
}

void MeshDistance::nearest(std::uint32_t node, const Vec3 &point, double &squaredLimit) const
{
    const Node &here = nodes[node];
    for (std::uint32_t i = here.first; i < here.first + here.count; ++i) {
        const Vec3 offset = point - nearestOnTriangle(point, faces[i].a, faces[i].b, faces[i].c);
        squaredLimit = std::min(squaredLimit, dot(offset, offset));
    }
    if (here.count > 0) return;
    const double left = squaredDistance(nodes[here.first].box, point);
    const double right = squaredDistance(nodes[here.first + 1].box, point);
    const std::uint32_t nearer = left <= right ? here.first : here.first + 1;
    if (std::min(left, right) < squaredLimit) nearest(nearer, point, squaredLimit);
    if (std::max(left, right) < squaredLimit)
        nearest(2 * here.first + 1 - nearer, point, squaredLimit);
}

std::size_t MeshDistance::crossings(std::uint32_t node, const Vec3 &point) const
{
    const Node &here = nodes[node];
    // The ray's direction is positive on every axis: where it enters and leaves is plain.
    const Vec3 enter{(here.box.low.x - point.x) / rayDirection.x,
                     (here.box.low.y - point.y) / rayDirection.y,
                     (here.box.low.z - point.z) / rayDirection.z};
    const Vec3 leave{(here.box.high.x - point.x) / rayDirection.x,
                     (here.box.high.y - point.y) / rayDirection.y,
                     (here.box.high.z - point.z) / rayDirection.z};
    const double last = std::min({leave.x, leave.y, leave.z});
    // A hair of room for the rounding of the divisions.
    if (last < -1e-9 || std::max({enter.x, enter.y, enter.z}) > last + 1e-9) return 0;
    std::size_t count = 0;
    for (std::uint32_t i = here.first; i < here.first + here.count; ++i)
        count += rayMeets(point, faces[i].a, faces[i].b, faces[i].c) ? 1 : 0;
    if (here.count > 0) return count;
    return crossings(here.first, point) + crossings(here.first + 1, point);
}

double MeshDistance::distanceWithin(const Vec3 &point, double limit) const
{
    double squared = limit * limit;
    if (squaredDistance(nodes[0].box, point) < squared) nearest(0, point, squared);
    return std::sqrt(squared);
}

bool MeshDistance::isInside(const Vec3 &point) const
{
    return crossings(0, point) % 2 == 1;
}

bool MeshDistance::isNear(const Vec3 &point, double margin) const
{
    return squaredDistance(nodes[0].box, point) <= margin * margin;
}

double MeshDistance::signedDistance(const Vec3 &point) const
{
    const double size = distanceWithin(point, 1e15);
    return isInside(point) ? -size : size;
}

} // namespace kelo::meshgen
