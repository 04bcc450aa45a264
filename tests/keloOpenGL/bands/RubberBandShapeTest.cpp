#include "tests/keloOpenGL/bands/RubberBandFixture.h"

#include <random>

namespace {

using namespace kelo;
using namespace kelo::test;

TEST(RubberBandShape, everyRecordAgreesWithTheReferenceInBothDirections)
{
    double greatest = 0.0;
    int bandCount = 0;
    for (const double angle : anglesAroundTheThresholds()) {
        const Jaws jaws(angle);
        for (const ReferenceRecord &record :
             ReferenceTables::shared().records.at(tableForAngle(angle))) {
            for (const Keys &keys : {Keys{record.from, record.to}, Keys{record.to, record.from}}) {
                for (const bool closeLoop : {false, true}) {
                    const std::size_t ways = closeLoop ? 2 : 1;
                    ASSERT_EQ(nodesOf(keys, closeLoop, angle).size(),
                              2 + ways * record.anchors.size());
                    greatest = std::max(greatest, compareWithReference(keys, closeLoop, jaws));
                    ++bandCount;
                }
            }
        }
    }
    // 90 records once, 64 three times, 66 twice; two directions, open and closed.
    EXPECT_EQ(bandCount, (90 + 3 * 64 + 2 * 66) * 4);
    RecordProperty("greatestDeviation", std::to_string(greatest));
}

TEST(RubberBandShape, everyRecordAgreesWithTheReferenceWhenTheUpperJawOpens)
{
    for (const double angle : anglesAroundTheThresholds()) {
        const Jaws jaws(-angle);
        for (const ReferenceRecord &record :
             ReferenceTables::shared().records.at(tableForAngle(angle)))
            compareWithReference({record.from, record.to}, true, jaws);
    }
}

TEST(RubberBandShape, bandsOverManyHooksAgreeWithTheReference)
{
    Keys all;
    for (const auto &[key, hook] : ReferenceTables::shared().hooks)
        all.push_back(key);
    std::mt19937 random(57u);
    std::uniform_int_distribution<std::size_t> count(2, 7);
    std::uniform_real_distribution<double> angle(-0.9, 0.9);
    for (int i = 0; i < 500; ++i) {
        std::shuffle(all.begin(), all.end(), random);
        const Keys keys(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count(random)));
        const Jaws jaws(angle(random));
        compareWithReference(keys, true, jaws);
        compareWithReference(keys, false, jaws);
    }
}

// Cross-sections, by hand

RubberBandNode nodeAt(const Vector3 &position, double radius, const Vector3 &entry,
                      const Vector3 &apex, const Vector3 &exit)
{
    return {{}, position, {0.0f, 0.0f, 1.0f}, radius, entry, apex, exit};
}

constexpr Vector3 left{-1.0f, 0.0f, 0.0f}, right{1.0f, 0.0f, 0.0f};
constexpr Vector3 down{0.0f, -1.0f, 0.0f}, up{0.0f, 1.0f, 0.0f};

/// A loop around two posts that stand on z at x = 0 and x = 8, with the radius 1.5 each.
std::vector<RubberBandNode> loopAroundTwoPosts()
{
    return {nodeAt({0.0f, 0.0f, 0.0f}, 1.5, up, left, down),
            nodeAt({8.0f, 0.0f, 0.0f}, 1.5, down, right, up)};
}

void expectSection(const RubberBandVertex *vertices, const Vector3 &middle, const Vector3 &u,
                   const Vector3 &v)
{
    const std::vector<std::pair<Vector3, float>> corners{
        {u, -1.0f}, {v, -1.0f}, {u, 1.0f}, {v, 1.0f}};
    for (std::size_t corner = 0; corner < corners.size(); ++corner) {
        const auto &[direction, sign] = corners[corner];
        const Vector3 normal = Vector3_multiplyScalar(direction, sign);
        EXPECT_LT(distance(vertices[corner].normal, normal), 1e-6) << corner;
        EXPECT_LT(distance(vertices[corner].position,
                           Vector3_add(middle, Vector3_multiplyScalar(normal, 0.5f))),
                  1e-6)
            << corner;
    }
}

TEST(RubberBandShape, theSectionsOfALoopAroundTwoPosts)
{
    const auto vertices = verticesOf(loopAroundTwoPosts());
    ASSERT_EQ(vertices.size(), 24u);
    const float half = std::sqrt(0.5f);
    // The posts' radius and half the band's thickness: everything is 2 from a post. For a run in
    // the x-y plane u is (run x y) = plus or minus z by the run's x.
    const Vector3 front{0.0f, 0.0f, 1.0f}, back{0.0f, 0.0f, -1.0f};
    // A(0): from (8, 1) to (0, 1), so the run is -x: u = -z, v = u x run = y.
    expectSection(&vertices[0], {0.0f, 2.0f, 0.0f}, back, up);
    // B(0): from (-2, 0) to (0, -2), the run (1, -1): u = z, v = z x (1, -1) = (1, 1).
    expectSection(&vertices[4], {-2.0f, 0.0f, 0.0f}, front, {half, half, 0.0f});
    // C(0): from (0, -2) to (8, -2): u = z, v = y.
    expectSection(&vertices[8], {0.0f, -2.0f, 0.0f}, front, up);
    // A(1) keeps the section of the run that arrives.
    expectSection(&vertices[12], {8.0f, -2.0f, 0.0f}, front, up);
    // B(1): from (10, 0) to (8, 2), the run (-1, 1): u = -z, v = -z x (-1, 1) = (1, 1).
    expectSection(&vertices[16], {10.0f, 0.0f, 0.0f}, back, {half, half, 0.0f});
    // C(1): from (8, 2) to (0, 2).
    expectSection(&vertices[20], {8.0f, 2.0f, 0.0f}, back, up);
}

TEST(RubberBandShape, aRunAlongYTakesItsSectionFromTheXAxis)
{
    // From C(0) = (0, 2, 0) to A(1) = (0, 6, 0): the run's product with y is 0, with x it is
    // y x x = -z; then v = -z x y = x.
    const auto vertices =
        verticesOf({nodeAt({0.0f, 0.0f, 0.0f}, 1.5, right, {0.0f, 0.0f, 1.0f}, up),
                    nodeAt({0.0f, 8.0f, 0.0f}, 1.5, down, {0.0f, 0.0f, 1.0f}, right)});
    const Vector3 u{0.0f, 0.0f, -1.0f};
    expectSection(&vertices[8], {0.0f, 2.0f, 0.0f}, u, right);
    expectSection(&vertices[12], {0.0f, 6.0f, 0.0f}, u, right);
}

TEST(RubberBandShape, aRunAlmostAlongYTakesItsSectionFromTheXAxisToo)
{
    const auto sectionForRun = [](float aside) {
        // From C(0) = (0, 2, 0) to A(1) = (aside, 6, 0).
        return verticesOf({nodeAt({0.0f, 0.0f, 0.0f}, 1.5, right, {0.0f, 0.0f, 1.0f}, up),
                           nodeAt({aside, 8.0f, 0.0f}, 1.5, down, {0.0f, 0.0f, 1.0f}, right)})[10]
            .normal;
    };
    // run x y is (0, 0, aside) here, and counts from 0.00390625 on.
    EXPECT_LT(distance(sectionForRun(0.0039f), Vector3{0.0f, 0.0f, -1.0f}), 1e-6);
    EXPECT_LT(distance(sectionForRun(0.00390625f), Vector3{0.0f, 0.0f, 1.0f}), 1e-6);
}

TEST(RubberBandShape, theFirstSectionGoesByUnitOffsets)
{
    // By unit offsets the run into A(0) goes from (8, 1) to (1, 0); by the path's distances it
    // would go from (8, 4.5) to (2, 0).
    const auto vertices = verticesOf({nodeAt({0.0f, 0.0f, 0.0f}, 1.5, right, left, down),
                                      nodeAt({8.0f, 0.0f, 0.0f}, 4.0, down, right, up)});
    const float length = std::sqrt(50.0f);
    // The run is (-7, -1): u = -z, v = -z x (-7, -1) = (-1, 7), unit.
    expectSection(&vertices[0], {2.0f, 0.0f, 0.0f}, {0.0f, 0.0f, -1.0f},
                  {-1.0f / length, 7.0f / length, 0.0f});
    // While C(1) looks along the path: from (8, 4.5) to (2, 0), the run (-6, -4.5) of length 7.5.
    expectSection(&vertices[20], {8.0f, 4.5f, 0.0f}, {0.0f, 0.0f, -1.0f}, {-0.6f, 0.8f, 0.0f});
}

TEST(RubberBandShape, normalsPointOutOfTheTube)
{
    const auto nodes = nodesOf({"2", "31", "6", "10l"}, true);
    const auto vertices = verticesOf(nodes);
    for (std::size_t section = 0; section < 3 * nodes.size(); ++section) {
        Vector3 middle{};
        for (std::size_t corner = 0; corner < 4; ++corner)
            middle = Vector3_add(
                middle, Vector3_multiplyScalar(vertices[4 * section + corner].position, 0.25f));
        for (std::size_t corner = 0; corner < 4; ++corner) {
            const RubberBandVertex &vertex = vertices[4 * section + corner];
            const Vector3 outwards = Vector3_subtract(vertex.position, middle);
            EXPECT_NEAR(Vector3_magnitude(outwards), 0.5, 1e-5);
            EXPECT_NEAR(Vector3_dot(outwards, vertex.normal), 0.5, 1e-5);
        }
    }
}

// Indices

TEST(RubberBandIndices, eachSectionIsJoinedToTheNextByFourQuadrilaterals)
{
    std::vector<std::uint32_t> indices(2 * rubberBandIndicesPerNode);
    writeRubberBandIndices(2, indices.data());
    for (std::uint32_t section = 0; section + 1 < 6; ++section) {
        const std::uint32_t b = 4 * section;
        const std::vector<std::uint32_t> expected{b,     b + 4, b + 5, b + 1, b + 1, b + 5,
                                                  b + 6, b + 2, b + 2, b + 6, b + 7, b + 3,
                                                  b + 3, b + 7, b + 4, b};
        const auto first = indices.begin() + 16 * section;
        EXPECT_EQ(std::vector<std::uint32_t>(first, first + 16), expected) << section;
    }
}

TEST(RubberBandIndices, theLastSectionIsJoinedToTheFirst)
{
    for (const std::size_t nodeCount : {1u, 2u, 5u}) {
        std::vector<std::uint32_t> indices(nodeCount * rubberBandIndicesPerNode);
        writeRubberBandIndices(nodeCount, indices.data());
        const auto b = static_cast<std::uint32_t>(12 * nodeCount - 4);
        const std::vector<std::uint32_t> expected{b,     0, 1, b + 1, b + 1, 1, 2, b + 2,
                                                  b + 2, 2, 3, b + 3, b + 3, 3, 0, b};
        EXPECT_EQ(std::vector<std::uint32_t>(indices.end() - 16, indices.end()), expected);
    }
}

TEST(RubberBandIndices, anOpenBandEndsAtTheFirstSectionOfItsLastNode)
{
    constexpr std::size_t nodeCount = 4;
    EXPECT_EQ(rubberBandIndexCount(nodeCount, true), 48u * nodeCount);
    EXPECT_EQ(rubberBandIndexCount(nodeCount, false), 48u * (nodeCount - 1));
    std::vector<std::uint32_t> indices(nodeCount * rubberBandIndicesPerNode);
    writeRubberBandIndices(nodeCount, indices.data());
    const auto drawn =
        indices.begin() + static_cast<std::ptrdiff_t>(rubberBandIndexCount(nodeCount, false));
    EXPECT_EQ(*std::max_element(indices.begin(), drawn), 12u * (nodeCount - 1) + 3u);
    EXPECT_EQ(rubberBandIndexCount(0, true), 0u);
    EXPECT_EQ(rubberBandIndexCount(0, false), 0u);
}

TEST(RubberBandIndices, theTubeIsClosedAndItsQuadrilateralsTurnOneWay)
{
    constexpr std::size_t nodeCount = 3;
    std::vector<std::uint32_t> indices(nodeCount * rubberBandIndicesPerNode);
    writeRubberBandIndices(nodeCount, indices.data());
    std::vector<std::pair<std::uint32_t, std::uint32_t>> edges;
    for (std::size_t i = 0; i < indices.size(); ++i)
        edges.emplace_back(indices[i], indices[i % 4 == 3 ? i - 3 : i + 1]);
    std::sort(edges.begin(), edges.end());
    EXPECT_EQ(std::adjacent_find(edges.begin(), edges.end()), edges.end());
    for (const auto &[from, to] : edges)
        EXPECT_TRUE(std::binary_search(edges.begin(), edges.end(), std::pair{to, from}));
}

} // namespace
