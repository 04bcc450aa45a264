#include "tools/meshgen/Simplify.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <queue>
#include <tuple>

namespace kelo::meshgen {

namespace {

using Triangle = std::array<std::uint32_t, 3>;

/// The sum of the squared distances from some planes, each with its weight, as a quadratic form:
/// x'Ax + 2b'x + c (after Garland and Heckbert).
struct Quadric
{
    double xx = 0.0, xy = 0.0, xz = 0.0, yy = 0.0, yz = 0.0, zz = 0.0;
    Vec3 b;
    double c = 0.0;

    void addPlane(const Vec3 &n, double offset, double weight)
    {
        xx += weight * n.x * n.x;
        xy += weight * n.x * n.y;
        xz += weight * n.x * n.z;
        yy += weight * n.y * n.y;
        yz += weight * n.y * n.z;
        zz += weight * n.z * n.z;
        b += n * (weight * offset);
        c += weight * offset * offset;
    }
    void add(const Quadric &other)
    {
        xx += other.xx;
        xy += other.xy;
        xz += other.xz;
        yy += other.yy;
        yz += other.yz;
        zz += other.zz;
        b += other.b;
        c += other.c;
    }
    double at(const Vec3 &p) const
    {
        return p.x * (xx * p.x + 2.0 * (xy * p.y + xz * p.z + b.x)) +
               p.y * (yy * p.y + 2.0 * (yz * p.z + b.y)) + p.z * (zz * p.z + 2.0 * b.z) + c;
    }
};

/// A face may turn by no more than this (60 degrees) in one collapse, and no normal of its corners
/// may stand farther off it (53 degrees): beyond, the surface folds or is shaded against its form.
constexpr double leastTurnCosine = 0.5;
constexpr double leastNormalCosine = 0.6;
/// Slivers below this height by length are not made: they are shaded in streaks.
constexpr double leastSlimness = 0.04;
/// What a turned normal costs beside a moved surface: a highlight shows a bend of the normals long
/// before the outline shows the bend of the surface.
constexpr double normalWeight = 0.08;

/// Collapses edges of one mesh, the cheapest first; a vertex is drawn into its neighbour.
class Simplifier
{
public:
    Simplifier(const Mesh &fine, const std::vector<double> &importanceOfVertices);
    Mesh reduced(std::size_t triangleCount);

private:
    struct Collapse
    {
        double cost = 0.0;
        std::uint32_t from = 0, to = 0, version = 0;
        bool operator<(const Collapse &other) const
        {
            // The queue's top is the greatest: the cheapest, and of equals always the same.
            return std::tie(other.cost, other.from, other.to) < std::tie(cost, from, to);
        }
    };

    Vec3 faceVector(const Triangle &t) const
    {
        const Vec3 &a = mesh.positions[t[0]];
        return cross(mesh.positions[t[1]] - a, mesh.positions[t[2]] - a);
    }
    std::vector<std::uint32_t> neighbours(std::uint32_t vertex) const;
    void offer(std::uint32_t vertex);
    bool isShadedWell(const Triangle &t) const;
    bool isSliver(const Triangle &t) const;
    void mendNormal(std::uint32_t vertex);
    bool isAllowed(std::uint32_t from, std::uint32_t to) const;
    void collapse(std::uint32_t from, std::uint32_t to);

    Mesh mesh;
    std::vector<double> importance; // of every vertex
    std::vector<Quadric> quadrics;
    std::vector<std::vector<std::uint32_t>> facesOf; // of every vertex
    std::vector<bool> isGone;                        // of every face
    std::vector<std::uint32_t> versions;             // of every vertex: an older offer is void
    std::priority_queue<Collapse> queue;
};

Simplifier::Simplifier(const Mesh &fine, const std::vector<double> &importanceOfVertices)
    : mesh(fine),
      importance(importanceOfVertices),
      quadrics(fine.positions.size()),
      facesOf(fine.positions.size()),
      isGone(fine.triangles.size(), false),
      versions(fine.positions.size(), 0)
{
    importance.resize(mesh.positions.size(), 1.0);
    for (std::uint32_t f = 0; f < mesh.triangles.size(); ++f) {
        const Triangle &t = mesh.triangles[f];
        const Vec3 face = faceVector(t);
        const Vec3 normal = normalized(face);
        for (const std::uint32_t v : t) {
            facesOf[v].push_back(f);
            quadrics[v].addPlane(normal, -dot(normal, mesh.positions[t[0]]),
                                 importance[v] * length(face));
        }
    }
    for (std::uint32_t v = 0; v < mesh.positions.size(); ++v)
        offer(v);
}

std::vector<std::uint32_t> Simplifier::neighbours(std::uint32_t vertex) const
{
    std::vector<std::uint32_t> result;
    for (const std::uint32_t f : facesOf[vertex])
        for (const std::uint32_t v : mesh.triangles[f])
            if (v != vertex) result.push_back(v);
    std::sort(result.begin(), result.end());
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

/// Puts the ways to draw `vertex` into a neighbour into the queue.
void Simplifier::offer(std::uint32_t vertex)
{
    double area = 0.0;
    for (const std::uint32_t f : facesOf[vertex])
        area += length(faceVector(mesh.triangles[f]));
    for (const std::uint32_t to : neighbours(vertex)) {
        Quadric sum = quadrics[vertex];
        sum.add(quadrics[to]);
        const double bend = 1.0 - dot(mesh.normals[vertex], mesh.normals[to]);
        queue.push(
            {sum.at(mesh.positions[to]) + importance[vertex] * normalWeight * area * bend * bend,
             vertex, to, versions[vertex]});
    }
}

/// Whether the normals of a face's corners stand well on it.
bool Simplifier::isShadedWell(const Triangle &t) const
{
    const Vec3 face = faceVector(t);
    const double least = leastNormalCosine * length(face);
    return std::all_of(t.begin(), t.end(),
                       [&](std::uint32_t v) { return dot(face, mesh.normals[v]) >= least; });
}

bool Simplifier::isSliver(const Triangle &t) const
{
    double longest = 0.0;
    for (std::size_t k = 0; k < 3; ++k)
        longest = std::max(longest, distance(mesh.positions[t[k]], mesh.positions[t[(k + 1) % 3]]));
    return length(faceVector(t)) <= leastSlimness * longest * longest;
}

/// Where faces that were folded in the fine mesh are left, a vertex gets the normal that stands
/// least far off all faces round it: turned towards the worst of them, by less and less.
void Simplifier::mendNormal(std::uint32_t vertex)
{
    Vec3 &normal = mesh.normals[vertex];
    for (int round = 1; round <= 30; ++round) {
        double least = 1.0;
        Vec3 worst;
        for (const std::uint32_t f : facesOf[vertex]) {
            const Vec3 face = normalized(faceVector(mesh.triangles[f]));
            if (dot(face, normal) >= least) continue;
            least = dot(face, normal);
            worst = face;
        }
        if (least >= leastNormalCosine) return;
        normal = normalized(normal + worst * (1.0 / (1.0 + round)));
    }
}

bool Simplifier::isAllowed(std::uint32_t from, std::uint32_t to) const
{
    // The surface stays one surface only while both ends have just the two neighbours in common
    // that stand across the edge.
    const std::vector<std::uint32_t> a = neighbours(from);
    const std::vector<std::uint32_t> b = neighbours(to);
    std::vector<std::uint32_t> common;
    std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(common));
    if (common.size() != 2 || a.size() + b.size() < 8) return false;
    for (const std::uint32_t f : facesOf[from]) {
        Triangle t = mesh.triangles[f];
        if (std::find(t.begin(), t.end(), to) != t.end()) continue;
        const Triangle before = t;
        std::replace(t.begin(), t.end(), from, to);
        const Vec3 old = faceVector(before);
        const Vec3 now = faceVector(t);
        if (dot(old, now) < leastTurnCosine * length(old) * length(now)) return false;
        if (!isShadedWell(t) && isShadedWell(before)) return false;
        if (isSliver(t) && !isSliver(before)) return false;
    }
    return true;
}

void Simplifier::collapse(std::uint32_t from, std::uint32_t to)
{
    const std::vector<std::uint32_t> touched = neighbours(from);
    for (const std::uint32_t f : facesOf[from]) {
        Triangle &t = mesh.triangles[f];
        if (std::find(t.begin(), t.end(), to) != t.end()) {
            isGone[f] = true;
            for (const std::uint32_t v : t)
                if (v != from) std::erase(facesOf[v], f);
        } else {
            std::replace(t.begin(), t.end(), from, to);
            facesOf[to].push_back(f);
        }
    }
    facesOf[from].clear();
    ++versions[from];
    quadrics[to].add(quadrics[from]);
    for (const std::uint32_t v : touched) {
        ++versions[v];
        offer(v);
    }
}

Mesh Simplifier::reduced(std::size_t triangleCount)
{
    std::size_t count = mesh.triangles.size();
    while (count > triangleCount && !queue.empty()) {
        const Collapse next = queue.top();
        queue.pop();
        if (versions[next.from] != next.version || facesOf[next.to].empty()) continue;
        if (!isAllowed(next.from, next.to)) continue;
        collapse(next.from, next.to);
        count -= 2;
    }
    for (std::uint32_t v = 0; v < mesh.positions.size(); ++v)
        mendNormal(v);
    std::vector<Triangle> left;
    for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
        if (!isGone[f]) left.push_back(mesh.triangles[f]);
    mesh.triangles = std::move(left);
    return std::move(mesh);
}

/// Moves every vertex by its part of the way to the mean of its neighbours.
void relaxOnce(Mesh &mesh, const std::vector<double> &weights)
{
    std::vector<Vec3> sums(mesh.positions.size());
    std::vector<double> counts(mesh.positions.size(), 0.0);
    for (const Triangle &triangle : mesh.triangles)
        for (std::size_t k = 0; k < 3; ++k) {
            sums[triangle[k]] += mesh.positions[triangle[(k + 1) % 3]];
            sums[triangle[k]] += mesh.positions[triangle[(k + 2) % 3]];
            counts[triangle[k]] += 2.0;
        }
    for (std::size_t i = 0; i < mesh.positions.size(); ++i)
        mesh.positions[i] =
            mesh.positions[i] * (1.0 - weights[i]) + sums[i] * (weights[i] / counts[i]);
}

/// Normals for a mesh with one vertex for every point, quickly: each face weighs by its area.
void refreshNormals(Mesh &mesh)
{
    std::fill(mesh.normals.begin(), mesh.normals.end(), Vec3{});
    for (const Triangle &t : mesh.triangles) {
        const Vec3 &a = mesh.positions[t[0]];
        const Vec3 face = cross(mesh.positions[t[1]] - a, mesh.positions[t[2]] - a);
        for (const std::uint32_t v : t)
            mesh.normals[v] += face;
    }
    for (Vec3 &normal : mesh.normals)
        normal = normalized(normal);
}

} // namespace

void relax(Mesh &mesh, int rounds, double weight)
{
    const std::vector<double> weights(mesh.positions.size(), weight);
    for (int round = 0; round < rounds; ++round)
        relaxOnce(mesh, weights);
}

void relaxFolds(Mesh &mesh, double degrees)
{
    const double leastCosine = std::cos(degrees * std::numbers::pi / 180.0);
    computeSmoothNormals(mesh, 180.0);
    for (int round = 0; round < 100; ++round) {
        refreshNormals(mesh);
        std::vector<double> weights(mesh.positions.size(), 0.0);
        bool isFolded = false;
        for (const Triangle &t : mesh.triangles) {
            const Vec3 &a = mesh.positions[t[0]];
            const Vec3 face = cross(mesh.positions[t[1]] - a, mesh.positions[t[2]] - a);
            for (const std::uint32_t v : t) {
                if (dot(face, mesh.normals[v]) >= leastCosine * length(face)) continue;
                isFolded = true;
                for (const std::uint32_t w : t)
                    weights[w] = 0.5;
            }
        }
        if (!isFolded) return;
        // The ring round them gives way too; else the fold only moves about.
        const std::vector<double> marked = weights;
        for (const Triangle &t : mesh.triangles)
            if (marked[t[0]] + marked[t[1]] + marked[t[2]] > 0.0)
                for (const std::uint32_t v : t)
                    weights[v] = std::max(weights[v], 0.3);
        relaxOnce(mesh, weights);
    }
    refreshNormals(mesh);
}

Mesh simplified(const Mesh &mesh, std::size_t triangleCount, const std::vector<double> &importance)
{
    if (mesh.triangles.size() <= triangleCount) return mesh;
    return Simplifier(mesh, importance).reduced(triangleCount);
}

} // namespace kelo::meshgen
