#include "tools/meshgen/Simplify.h"

#include <map>
#include <stdexcept>
#include <utility>

#include <meshoptimizer.h>

namespace kelo::meshgen {

namespace {

using Triangle = std::array<std::uint32_t, 3>;
using Edge = std::pair<std::uint32_t, std::uint32_t>;

/// Whether a triangle faces against the surface that its vertices' normals describe.
bool isFolded(const Mesh &mesh, const Triangle &t)
{
    const Vec3 face = cross(mesh.positions[t[1]] - mesh.positions[t[0]],
                            mesh.positions[t[2]] - mesh.positions[t[0]]);
    return dot(face, mesh.normals[t[0]] + mesh.normals[t[1]] + mesh.normals[t[2]]) <= 0.0;
}

/// Turns the edge between a folded triangle and one of its neighbours so that neither of the two is
/// folded any more; false when no edge allows it. `faces` knows the triangle left of every edge.
bool turnAnEdge(Mesh &mesh, std::size_t folded, std::map<Edge, std::size_t> &faces)
{
    for (std::size_t k = 0; k < 3; ++k) {
        const Triangle t = mesh.triangles[folded];
        const std::uint32_t a = t[k];
        const std::uint32_t b = t[(k + 1) % 3];
        const std::uint32_t c = t[(k + 2) % 3];
        const auto neighbour = faces.find({b, a});
        if (neighbour == faces.end()) continue;
        const std::size_t other = neighbour->second;
        std::uint32_t d = a;
        for (const std::uint32_t v : mesh.triangles[other])
            if (v != a && v != b) d = v;
        if (faces.contains({c, d}) || faces.contains({d, c})) continue;
        const Triangle first = {a, d, c};
        const Triangle second = {d, b, c};
        if (isFolded(mesh, first) || isFolded(mesh, second)) continue;
        mesh.triangles[folded] = first;
        mesh.triangles[other] = second;
        faces.erase({a, b});
        faces.erase({b, a});
        for (const std::size_t index : {folded, other})
            for (std::size_t i = 0; i < 3; ++i)
                faces[{mesh.triangles[index][i], mesh.triangles[index][(i + 1) % 3]}] = index;
        return true;
    }
    return false;
}

/// Collapsing edges leaves a few slivers folded over; seen from outside each would be a slit.
void unfold(Mesh &mesh)
{
    std::map<Edge, std::size_t> faces;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k)
            faces[{mesh.triangles[i][k], mesh.triangles[i][(k + 1) % 3]}] = i;
    for (int round = 0; round < 4; ++round) {
        bool changed = false;
        for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
            if (isFolded(mesh, mesh.triangles[i])) changed |= turnAnEdge(mesh, i, faces);
        if (!changed) return;
    }
}

} // namespace

void relax(Mesh &mesh, int rounds, double weight)
{
    for (int round = 0; round < rounds; ++round) {
        std::vector<Vec3> sums(mesh.positions.size());
        std::vector<double> counts(mesh.positions.size(), 0.0);
        for (const auto &triangle : mesh.triangles)
            for (std::size_t k = 0; k < 3; ++k) {
                sums[triangle[k]] += mesh.positions[triangle[(k + 1) % 3]];
                sums[triangle[k]] += mesh.positions[triangle[(k + 2) % 3]];
                counts[triangle[k]] += 2.0;
            }
        for (std::size_t i = 0; i < mesh.positions.size(); ++i)
            mesh.positions[i] = mesh.positions[i] * (1.0 - weight) + sums[i] * (weight / counts[i]);
    }
}

Mesh simplified(const Mesh &mesh, std::size_t triangleCount)
{
    if (mesh.triangles.size() <= triangleCount) return mesh;
    std::vector<float> positions;
    positions.reserve(mesh.positions.size() * 3);
    for (const Vec3 &p : mesh.positions)
        for (const double c : {p.x, p.y, p.z})
            positions.push_back(static_cast<float>(c));
    std::vector<unsigned int> indices;
    indices.reserve(mesh.triangles.size() * 3);
    for (const auto &triangle : mesh.triangles)
        indices.insert(indices.end(), triangle.begin(), triangle.end());
    Mesh simple = mesh;
    // Sometimes a collapse pinches the surface along an edge. Another number of triangles takes
    // other collapses; fewer, so that the caller's budget holds.
    for (int attempt = 0; attempt < 30; ++attempt) {
        const std::size_t wanted =
            triangleCount - triangleCount * static_cast<std::size_t>(attempt) / 150;
        std::vector<unsigned int> result(indices.size());
        const std::size_t count = meshopt_simplify(result.data(), indices.data(), indices.size(),
                                                   positions.data(), mesh.positions.size(),
                                                   3 * sizeof(float), wanted * 3, 1.0F, 0, nullptr);
        simple.triangles.clear();
        for (std::size_t i = 0; i + 2 < count; i += 3)
            simple.triangles.push_back({result[i], result[i + 1], result[i + 2]});
        unfold(simple);
        if (meshDefects(simple).empty()) return simple;
    }
    throw std::runtime_error("A surface could not be simplified without pinching it");
}

} // namespace kelo::meshgen
