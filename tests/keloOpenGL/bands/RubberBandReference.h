#pragma once

#include "geometry/Matrix.h"
#include "tests/keloOpenGL/bands/BandTables.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// The shape of a band again, in double precision, from the table files: what the band's own
/// code is compared with. Nothing of that code is used here.
namespace kelo::test {

struct Point3
{
    double x = 0.0, y = 0.0, z = 0.0;

    friend Point3 operator+(const Point3 &a, const Point3 &b)
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend Point3 operator-(const Point3 &a, const Point3 &b)
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend Point3 operator*(double factor, const Point3 &a)
    {
        return {factor * a.x, factor * a.y, factor * a.z};
    }
    double squaredLength() const { return x * x + y * y + z * z; }
    Point3 unit() const
    {
        const double length = std::sqrt(squaredLength());
        return length > 0.0 ? Point3{x / length, y / length, z / length} : *this;
    }
};

inline Point3 cross(const Point3 &a, const Point3 &b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Squared lengths below 2 to the power of -16 count as none.
inline bool isShort(const Point3 &vector)
{
    return vector.squaredLength() < std::ldexp(1.0, -16);
}

/// w is 1 for a point and 0 for a direction.
inline Point3 moved(const Matrix &matrix, const Point3 &p, double w)
{
    const auto row = [&](int r) {
        return static_cast<double>(matrix.m[r]) * p.x + static_cast<double>(matrix.m[4 + r]) * p.y +
               static_cast<double>(matrix.m[8 + r]) * p.z +
               static_cast<double>(matrix.m[12 + r]) * w;
    };
    return {row(0), row(1), row(2)};
}

struct ReferenceHook
{
    Point3 position, axis;
    double radius = 0.0;
};

struct ReferenceAnchor
{
    Point3 position, axis;
    bool movesWithUpperJaw = false;
};

/// From one hook to another, through these anchors.
struct ReferenceRecord
{
    std::string from, to;
    std::vector<std::size_t> anchors;
};

struct ReferenceTables
{
    std::map<std::string, ReferenceHook> hooks;
    std::vector<ReferenceAnchor> anchors;
    std::array<std::vector<ReferenceRecord>, 3> records; ///< closed, partly open, open

    ReferenceTables()
    {
        const auto point = [](const TableRow &row, std::size_t column) {
            return Point3{numberOf<double>(row.at(column)), numberOf<double>(row.at(column + 1)),
                          numberOf<double>(row.at(column + 2))};
        };
        for (const TableRow &row : rowsOfTable("hooks.csv"))
            hooks[row[0]] = {point(row, 1), point(row, 4), numberOf<double>(row.at(7))};
        for (const TableRow &row : rowsOfTable("anchors.csv"))
            anchors.push_back({point(row, 1), point(row, 4), row.at(7) == "yes"});
        for (std::size_t table = 0; table < records.size(); ++table) {
            const std::string file = "anchor_sequences_" + std::to_string(table) + ".csv";
            for (const TableRow &row : rowsOfTable(file)) {
                ReferenceRecord record{row[0], row[1], {numberOf<std::size_t>(row.at(2))}};
                if (row.at(3) != "-1") record.anchors.push_back(numberOf<std::size_t>(row[3]));
                records[table].push_back(record);
            }
        }
    }

    static const ReferenceTables &shared()
    {
        static const ReferenceTables tables;
        return tables;
    }

    /// The anchors on the way from one hook to another, in the way's order.
    std::vector<std::size_t> anchorsBetween(const std::string &from, const std::string &to,
                                            std::size_t table) const
    {
        for (const ReferenceRecord &record : records.at(table)) {
            if (record.from == from && record.to == to) return record.anchors;
            if (record.from == to && record.to == from)
                return {record.anchors.rbegin(), record.anchors.rend()};
        }
        return {};
    }
};

/// "2" to "15", and the same followed by an l.
inline bool isUpperHook(const std::string &key)
{
    const int tooth = std::stoi(key);
    return tooth >= 2 && tooth <= 15;
}

struct ReferenceNode
{
    std::string name; ///< empty for an anchor
    Point3 position, axis;
    double radius = 0.0;
    Point3 entry, apex, exit; ///< unit offsets
};

struct ReferenceVertex
{
    Point3 position, normal;
};

struct ReferenceBand
{
    std::vector<ReferenceNode> nodes;

    /// The place of a cross-section: three to a node.
    Point3 placeOfSection(std::size_t section) const
    {
        const ReferenceNode &node = nodes[section / 3];
        const std::array<Point3, 3> offsets{node.entry, node.apex, node.exit};
        return node.position + (node.radius + 0.5) * offsets[section % 3];
    }

    /// Which way the band runs where a cross-section stands.
    Point3 runAtSection(std::size_t section) const
    {
        if (section == 0)
            return (nodes.front().position + nodes.front().entry) -
                   (nodes.back().position + nodes.back().exit);
        // Where a straight run arrives, the section is the one that left on it.
        if (section % 3 == 0) return runAtSection(section - 1);
        return placeOfSection((section + 1) % (3 * nodes.size())) - placeOfSection(section);
    }

    std::array<ReferenceVertex, 4> section(std::size_t section) const
    {
        const Point3 run = runAtSection(section);
        Point3 sideways = cross(run, {0.0, 1.0, 0.0});
        if (isShort(sideways)) sideways = cross(run, {1.0, 0.0, 0.0});
        const Point3 u = sideways.unit();
        const Point3 v = cross(u, run).unit();
        const Point3 place = placeOfSection(section);
        return {{{place - 0.5 * u, -1.0 * u},
                 {place - 0.5 * v, -1.0 * v},
                 {place + 0.5 * u, u},
                 {place + 0.5 * v, v}}};
    }
};

inline constexpr double fiveDegrees = 0.08726646259971647;
inline constexpr double twentyDegrees = 0.3490658503988659;

/// 0 below 5 degrees, 1 from there, 2 from 20 degrees on.
inline std::size_t tableForAngle(double radians)
{
    return (std::fabs(radians) >= fiveDegrees ? 1u : 0u) +
           (std::fabs(radians) >= twentyDegrees ? 1u : 0u);
}

inline void findOffsets(ReferenceBand &band)
{
    const std::size_t count = band.nodes.size();
    for (std::size_t j = 0; j < count; ++j) {
        ReferenceNode &node = band.nodes[j];
        const ReferenceNode &next = band.nodes[(j + 1) % count];
        const ReferenceNode &previous = band.nodes[(j + count - 1) % count];
        Point3 dn = node.position - next.position;
        const Point3 dp = node.position - previous.position;
        if (next.name == previous.name) {
            const Point3 in = cross(dn, node.axis);
            const Point3 out = cross(node.axis, dp);
            node.entry = (isShort(in) ? dn : in).unit();
            node.exit = (isShort(out) ? dp : out).unit();
            dn = dp;
        } else {
            node.entry = dn.unit();
            node.exit = dp.unit();
        }
        const Point3 sum = node.entry + node.exit;
        node.apex = (isShort(sum) ? dn + dp : sum).unit();
    }
}

inline ReferenceBand referenceBand(const std::vector<std::string> &keys, bool closeLoop,
                                   const Matrix &upper, const Matrix &lower, double radians)
{
    const ReferenceTables &tables = ReferenceTables::shared();
    ReferenceBand band;
    const auto add = [&](const std::string &name, const Point3 &position, const Point3 &axis,
                         double radius, bool isUpper) {
        const Matrix &jaw = isUpper ? upper : lower;
        band.nodes.push_back(
            {name, moved(jaw, position, 1.0), moved(jaw, axis, 0.0), radius, {}, {}, {}});
    };
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const ReferenceHook &hook = tables.hooks.at(keys[i]);
        add(keys[i], hook.position, hook.axis, hook.radius, isUpperHook(keys[i]));
        if (i + 1 == keys.size() && !closeLoop) break;
        for (const std::size_t index :
             tables.anchorsBetween(keys[i], keys[(i + 1) % keys.size()], tableForAngle(radians))) {
            const ReferenceAnchor &anchor = tables.anchors.at(index);
            add("", anchor.position, anchor.axis, -0.46875, anchor.movesWithUpperJaw);
        }
    }
    findOffsets(band);
    return band;
}

} // namespace kelo::test
