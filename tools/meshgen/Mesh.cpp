#include "tools/meshgen/Mesh.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <numeric>

namespace kelo::meshgen {

namespace {

/// Decimals of every number written: 0.01 micrometres, a tenth of the step of a single-precision
/// coordinate at 30 mm and so no loss to any reader.
constexpr int writtenDecimals = 5;
constexpr double writtenUnitsPerMillimetre = 1e5;

using Triangle = std::array<std::uint32_t, 3>;
using RoundedPoint = std::array<std::int64_t, 3>;
using Edge = std::pair<std::uint32_t, std::uint32_t>;

RoundedPoint roundedAsWritten(const Vec3 &p)
{
    return {std::llround(p.x * writtenUnitsPerMillimetre),
            std::llround(p.y * writtenUnitsPerMillimetre),
            std::llround(p.z * writtenUnitsPerMillimetre)};
}

/// For every vertex the number of its point; vertices at one position have one number.
std::vector<std::uint32_t> pointOfVertex(const std::vector<Vec3> &positions)
{
    std::map<std::array<double, 3>, std::uint32_t> points;
    std::vector<std::uint32_t> result;
    result.reserve(positions.size());
    for (const Vec3 &p : positions) {
        const auto next = static_cast<std::uint32_t>(points.size());
        result.push_back(points.try_emplace({p.x, p.y, p.z}, next).first->second);
    }
    return result;
}

/// Twice the face's area along its normal.
Vec3 faceVector(const Mesh &mesh, const Triangle &t)
{
    const Vec3 &a = mesh.positions[t[0]];
    return cross(mesh.positions[t[1]] - a, mesh.positions[t[2]] - a);
}

double angleAtCorner(const Mesh &mesh, const Triangle &t, std::size_t corner)
{
    const Vec3 &here = mesh.positions[t[corner]];
    const Vec3 a = normalized(mesh.positions[t[(corner + 1) % 3]] - here);
    const Vec3 b = normalized(mesh.positions[t[(corner + 2) % 3]] - here);
    return std::acos(std::clamp(dot(a, b), -1.0, 1.0));
}

/// Sets of numbers that are joined pair by pair.
class DisjointSets
{
public:
    explicit DisjointSets(std::size_t count) : parent(count)
    {
        std::iota(parent.begin(), parent.end(), std::size_t{0});
    }
    std::size_t representative(std::size_t member)
    {
        while (parent[member] != member) {
            parent[member] = parent[parent[member]];
            member = parent[member];
        }
        return member;
    }
    void join(std::size_t a, std::size_t b)
    {
        a = representative(a);
        b = representative(b);
        parent[std::max(a, b)] = std::min(a, b);
    }

private:
    std::vector<std::size_t> parent;
};

/// Joins the corners (numbered 3 * triangle + corner) of every point into smooth fans: across an
/// edge whose two faces meet at no more than the crease angle, the corners at both ends are joined.
DisjointSets smoothFans(const Mesh &mesh, const std::vector<std::uint32_t> &points,
                        const std::vector<Vec3> &faceVectors, double creaseAngleDegrees)
{
    DisjointSets fans(mesh.triangles.size() * 3);
    if (creaseAngleDegrees >= 180.0) {
        std::map<std::uint32_t, std::size_t> firstCorner;
        for (std::size_t i = 0; i < mesh.triangles.size() * 3; ++i) {
            const std::uint32_t point = points[mesh.triangles[i / 3][i % 3]];
            fans.join(firstCorner.try_emplace(point, i).first->second, i);
        }
        return fans;
    }
    const double leastCosine = std::cos(creaseAngleDegrees * 3.14159265358979323846 / 180.0);
    std::map<Edge, std::vector<std::size_t>> facesOfEdge;
    const auto cornerAt = [&](std::size_t face, std::uint32_t point) {
        std::size_t corner = 0;
        while (points[mesh.triangles[face][corner]] != point)
            ++corner;
        return face * 3 + corner;
    };
    for (std::size_t face = 0; face < mesh.triangles.size(); ++face) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t a = points[mesh.triangles[face][corner]];
            const std::uint32_t b = points[mesh.triangles[face][(corner + 1) % 3]];
            std::vector<std::size_t> &neighbours = facesOfEdge[{std::min(a, b), std::max(a, b)}];
            for (const std::size_t other : neighbours) {
                const double cosine =
                    dot(normalized(faceVectors[face]), normalized(faceVectors[other]));
                if (cosine < leastCosine) continue;
                fans.join(cornerAt(face, a), cornerAt(other, a));
                fans.join(cornerAt(face, b), cornerAt(other, b));
            }
            neighbours.push_back(face);
        }
    }
    return fans;
}

/// A vertex as the renderer's order needs it: bytes that can be compared and moved.
struct PackedVertex
{
    Vec3 position;
    Vec3 normal;
};

void appendNumber(std::string &text, double value)
{
    const std::int64_t units = std::llround(value * writtenUnitsPerMillimetre);
    const std::uint64_t magnitude =
        units < 0 ? static_cast<std::uint64_t>(-units) : static_cast<std::uint64_t>(units);
    const auto perMillimetre = static_cast<std::uint64_t>(writtenUnitsPerMillimetre);
    std::string fraction = std::to_string(magnitude % perMillimetre);
    fraction.insert(0, writtenDecimals - fraction.size(), '0');
    // The number is put together from integers: no locale can change its decimal point, and no
    // zero gets a sign.
    text += ' ';
    if (units < 0) text += '-';
    text += std::to_string(magnitude / perMillimetre);
    text += '.';
    text += fraction;
}

std::string objText(const Mesh &mesh)
{
    std::string text;
    text.reserve(mesh.positions.size() * 60 + mesh.triangles.size() * 30);
    const auto line = [&text](const char *keyword, const Vec3 &v) {
        text += keyword;
        appendNumber(text, v.x);
        appendNumber(text, v.y);
        appendNumber(text, v.z);
        text += '\n';
    };
    for (const Vec3 &p : mesh.positions)
        line("v", p);
    for (const Vec3 &n : mesh.normals)
        line("vn", n);
    for (const Triangle &t : mesh.triangles) {
        text += 'f';
        for (const std::uint32_t index : t) {
            const std::string number = std::to_string(index + 1);
            text += ' ' + number + "//" + number;
        }
        text += '\n';
    }
    return text;
}

/// Möller and Trumbore: the distance along the ray, from either side of the triangle.
std::optional<double> hitDistance(const Vec3 &origin, const Vec3 &direction, const Vec3 &a,
                                  const Vec3 &b, const Vec3 &c)
{
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const Vec3 p = cross(direction, ac);
    const double determinant = dot(ab, p);
    if (determinant == 0.0) return std::nullopt;
    const Vec3 t = origin - a;
    // A hair of tolerance at the edges: a ray through an edge must not slip between its two faces.
    constexpr double slack = 1e-12;
    const double u = dot(t, p) / determinant;
    if (u < -slack || u > 1.0 + slack) return std::nullopt;
    const Vec3 q = cross(t, ab);
    const double v = dot(direction, q) / determinant;
    if (v < -slack || u + v > 1.0 + slack) return std::nullopt;
    const double distanceAlong = dot(ac, q) / determinant;
    if (distanceAlong < 0.0) return std::nullopt;
    return distanceAlong;
}

std::string counted(std::size_t count, const char *one, const char *many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

void addEdgeDefects(const std::vector<Triangle> &faces, std::vector<std::string> &defects)
{
    struct Uses
    {
        std::size_t forward = 0;
        std::size_t backward = 0;
    };
    std::map<Edge, Uses> usesOfEdge;
    for (const Triangle &t : faces) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t a = t[corner];
            const std::uint32_t b = t[(corner + 1) % 3];
            Uses &uses = usesOfEdge[{std::min(a, b), std::max(a, b)}];
            ++(a < b ? uses.forward : uses.backward);
        }
    }
    std::size_t open = 0;
    std::size_t crowded = 0;
    std::size_t reversed = 0;
    for (const auto &[edge, uses] : usesOfEdge) {
        const std::size_t count = uses.forward + uses.backward;
        if (count < 2) ++open;
        if (count > 2) ++crowded;
        if (count == 2 && uses.forward != 1) ++reversed;
    }
    if (open > 0) {
        defects.push_back(counted(open, "edge belongs", "edges belong") + " to one face only");
    }
    if (crowded > 0) {
        defects.push_back(counted(crowded, "edge belongs", "edges belong") +
                          " to more than two faces");
    }
    if (reversed > 0) {
        defects.push_back(counted(reversed, "edge has", "edges have") +
                          " faces wound against each other");
    }
}

/// One sentence for the shells (parts without a common point) that are turned inside out.
void addVolumeDefects(const std::vector<Triangle> &faces, const std::vector<Vec3> &points,
                      std::vector<std::string> &defects)
{
    DisjointSets shells(points.size());
    for (const Triangle &t : faces) {
        shells.join(t[0], t[1]);
        shells.join(t[0], t[2]);
    }
    std::map<std::size_t, double> volumeOfShell;
    for (const Triangle &t : faces) {
        // Relative to a point of the shell itself, so that far-away shells lose no digits.
        const std::size_t shell = shells.representative(t[0]);
        const Vec3 &origin = points[shell];
        volumeOfShell[shell] +=
            dot(points[t[0]] - origin, cross(points[t[1]] - origin, points[t[2]] - origin)) / 6.0;
    }
    const auto inverted = static_cast<std::size_t>(
        std::count_if(volumeOfShell.begin(), volumeOfShell.end(),
                      [](const auto &shell) { return !(shell.second > 0.0); }));
    if (inverted > 0) {
        defects.push_back(counted(inverted, "shell has", "shells have") + " no positive volume");
    }
}

void addNormalDefects(const Mesh &mesh, std::vector<std::string> &defects)
{
    if (mesh.normals.size() != mesh.positions.size()) {
        defects.push_back(counted(mesh.positions.size(), "vertex", "vertices") + " but " +
                          counted(mesh.normals.size(), "normal", "normals"));
        return;
    }
    // Far above rounding in double precision, far below what a shaded picture would show.
    constexpr double tolerance = 1e-6;
    const auto wrong = static_cast<std::size_t>(
        std::count_if(mesh.normals.begin(), mesh.normals.end(),
                      [](const Vec3 &n) { return !(std::abs(length(n) - 1.0) <= tolerance); }));
    if (wrong > 0) {
        defects.push_back(counted(wrong, "normal is", "normals are") + " not of length 1");
    }
}

} // namespace

void computeSmoothNormals(Mesh &mesh, double creaseAngleDegrees)
{
    const std::vector<std::uint32_t> points = pointOfVertex(mesh.positions);
    std::vector<Vec3> faceVectors;
    faceVectors.reserve(mesh.triangles.size());
    for (const Triangle &t : mesh.triangles)
        faceVectors.push_back(faceVector(mesh, t));
    DisjointSets fans = smoothFans(mesh, points, faceVectors, creaseAngleDegrees);

    Mesh result;
    result.triangles.resize(mesh.triangles.size());
    std::map<std::size_t, std::uint32_t> vertexOfFan;
    for (std::size_t face = 0; face < mesh.triangles.size(); ++face) {
        const Triangle &t = mesh.triangles[face];
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const auto next = static_cast<std::uint32_t>(result.positions.size());
            const auto [entry, isNew] =
                vertexOfFan.try_emplace(fans.representative(face * 3 + corner), next);
            if (isNew) {
                result.positions.push_back(mesh.positions[t[corner]]);
                result.normals.emplace_back();
            }
            // The face vector's length is twice the face's area: the weight by area.
            result.normals[entry->second] += faceVectors[face] * angleAtCorner(mesh, t, corner);
            result.triangles[face][corner] = entry->second;
        }
    }
    for (Vec3 &n : result.normals)
        n = normalized(n);
    mesh = std::move(result);
}

void append(Mesh &mesh, const Mesh &other)
{
    const auto offset = static_cast<std::uint32_t>(mesh.positions.size());
    mesh.positions.insert(mesh.positions.end(), other.positions.begin(), other.positions.end());
    mesh.normals.insert(mesh.normals.end(), other.normals.begin(), other.normals.end());
    mesh.triangles.reserve(mesh.triangles.size() + other.triangles.size());
    for (const Triangle &t : other.triangles) {
        mesh.triangles.push_back({t[0] + offset, t[1] + offset, t[2] + offset});
    }
}

void optimizeOrder(Mesh &mesh)
{
    if (mesh.triangles.empty()) {
        mesh = Mesh{};
        return;
    }
    const bool hasNormals = mesh.normals.size() == mesh.positions.size();
    std::vector<std::uint32_t> indices;
    indices.reserve(mesh.triangles.size() * 3);
    for (const Triangle &t : mesh.triangles)
        indices.insert(indices.end(), t.begin(), t.end());
    std::vector<PackedVertex> vertices(mesh.positions.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        vertices[i].position = mesh.positions[i];
        if (hasNormals) vertices[i].normal = mesh.normals[i];
    }
    std::vector<std::uint32_t> ordered(indices.size());
    meshopt_optimizeVertexCache(ordered.data(), indices.data(), indices.size(), vertices.size());
    std::vector<PackedVertex> fetched(vertices.size());
    fetched.resize(meshopt_optimizeVertexFetch(fetched.data(), ordered.data(), ordered.size(),
                                               vertices.data(), vertices.size(),
                                               sizeof(PackedVertex)));
    mesh.positions.clear();
    mesh.normals.clear();
    for (const PackedVertex &vertex : fetched) {
        mesh.positions.push_back(vertex.position);
        if (hasNormals) mesh.normals.push_back(vertex.normal);
    }
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        mesh.triangles[i] = {ordered[3 * i], ordered[3 * i + 1], ordered[3 * i + 2]};
    }
}

bool writeOBJ(const std::string &path, const Mesh &mesh, std::string *error)
{
    const auto fail = [&](int code) {
        if (error) *error = "Cannot write \"" + path + "\": " + std::strerror(code);
        return false;
    };
    if (mesh.normals.size() != mesh.positions.size()) {
        if (error) *error = "Cannot write \"" + path + "\": a normal is missing";
        return false;
    }
    const std::string text = objText(mesh);
    // Written under another name first: a reader never meets half a file under the right one.
    const std::string unfinished = path + ".part";
    std::FILE *file = std::fopen(unfinished.c_str(), "wb");
    if (!file) return fail(errno);
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    int code = written ? 0 : errno;
    if (std::fclose(file) != 0 && code == 0) code = errno;
    if (code == 0 && std::rename(unfinished.c_str(), path.c_str()) != 0) code = errno;
    if (code == 0) return true;
    std::remove(unfinished.c_str());
    return fail(code);
}

std::optional<RayHit> raycast(const Mesh &mesh, Vec3 origin, Vec3 direction)
{
    std::optional<RayHit> nearest;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const Triangle &t = mesh.triangles[i];
        const std::optional<double> along = hitDistance(origin, direction, mesh.positions[t[0]],
                                                        mesh.positions[t[1]], mesh.positions[t[2]]);
        if (!along || (nearest && nearest->distance <= *along)) continue;
        nearest = RayHit{*along, origin + direction * *along, normalized(faceVector(mesh, t)),
                         static_cast<std::uint32_t>(i)};
    }
    return nearest;
}

std::vector<std::string> meshDefects(const Mesh &mesh)
{
    // Points differ where they differ in the written file.
    std::map<RoundedPoint, std::uint32_t> numberOfPoint;
    std::vector<std::uint32_t> pointNumbers;
    std::vector<Vec3> points;
    for (const Vec3 &p : mesh.positions) {
        const auto next = static_cast<std::uint32_t>(points.size());
        const auto [entry, isNew] = numberOfPoint.try_emplace(roundedAsWritten(p), next);
        if (isNew) points.push_back(p);
        pointNumbers.push_back(entry->second);
    }
    std::vector<Triangle> faces;
    std::size_t degenerate = 0;
    for (const Triangle &t : mesh.triangles) {
        const Triangle face{pointNumbers[t[0]], pointNumbers[t[1]], pointNumbers[t[2]]};
        faces.push_back(face);
        const bool collapsed = face[0] == face[1] || face[1] == face[2] || face[2] == face[0];
        if (collapsed || !(length(faceVector(mesh, t)) > 0.0)) ++degenerate;
    }
    std::vector<std::string> defects;
    if (faces.empty()) defects.emplace_back("no triangles");
    if (degenerate > 0) {
        defects.push_back(counted(degenerate, "triangle has", "triangles have") + " no area");
    }
    addEdgeDefects(faces, defects);
    addVolumeDefects(faces, points, defects);
    addNormalDefects(mesh, defects);
    return defects;
}

} // namespace kelo::meshgen
