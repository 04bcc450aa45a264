#include "keloOpenGL/bands/RubberBandTables.h"

#include "tests/keloOpenGL/bands/BandTables.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <type_traits>

namespace {

using namespace kelo;
using kelo::test::numberOf;
using kelo::test::rowsOfTable;
using kelo::test::TableRow;

void expectVector(const Vector3 &vector, const TableRow &row, std::size_t firstColumn)
{
    EXPECT_EQ(vector.x, numberOf<float>(row.at(firstColumn))) << row.front();
    EXPECT_EQ(vector.y, numberOf<float>(row.at(firstColumn + 1))) << row.front();
    EXPECT_EQ(vector.z, numberOf<float>(row.at(firstColumn + 2))) << row.front();
}

TEST(RubberBandTables, everyHookHasTheValuesOfTheTable)
{
    const auto rows = rowsOfTable("hooks.csv");
    ASSERT_EQ(rows.size(), 56u);
    EXPECT_EQ(bracketHookPositions().size(), rows.size());
    for (const TableRow &row : rows) {
        const auto hook = bracketHookPositions().find(row.front());
        ASSERT_NE(hook, bracketHookPositions().end()) << row.front();
        expectVector(hook->second.position, row, 1);
        expectVector(hook->second.direction, row, 4);
        EXPECT_EQ(hook->second.radius, numberOf<double>(row.at(7))) << row.front();
    }
}

TEST(RubberBandTables, everyAnchorHasTheValuesOfTheTable)
{
    const auto rows = rowsOfTable("anchors.csv");
    ASSERT_EQ(rows.size(), 103u);
    ASSERT_EQ(anchors().size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(numberOf<std::size_t>(rows[i].front()), i);
        expectVector(anchors()[i].position, rows[i], 1);
        expectVector(anchors()[i].direction, rows[i], 4);
        const std::string &upperJaw = rows[i].at(7);
        ASSERT_TRUE(upperJaw == "yes" || upperJaw == "no") << upperJaw;
        EXPECT_EQ(anchors()[i].isUpperJaw, upperJaw == "yes") << i;
    }
}

void expectSequences(std::span<const AnchorSequence> sequences, const std::string &fileName,
                     std::size_t count)
{
    const auto rows = rowsOfTable(fileName);
    ASSERT_EQ(rows.size(), count);
    ASSERT_EQ(sequences.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(sequences[i].from, rows[i].at(0)) << i;
        EXPECT_EQ(sequences[i].to, rows[i].at(1)) << i;
        EXPECT_EQ(sequences[i].firstAnchor, numberOf<std::int64_t>(rows[i].at(2))) << i;
        EXPECT_EQ(sequences[i].secondAnchor, numberOf<std::int64_t>(rows[i].at(3))) << i;
    }
}

TEST(RubberBandTables, the90RecordsOfTheClosedMouthAreThoseOfTheTableInItsOrder)
{
    expectSequences(anchorSequences0(), "anchor_sequences_0.csv", 90);
}

TEST(RubberBandTables, the64RecordsOfThePartlyOpenMouthAreThoseOfTheTableInItsOrder)
{
    expectSequences(anchorSequences1(), "anchor_sequences_1.csv", 64);
}

TEST(RubberBandTables, the66RecordsOfTheOpenMouthAreThoseOfTheTableInItsOrder)
{
    expectSequences(anchorSequences2(), "anchor_sequences_2.csv", 66);
}

TEST(RubberBandTables, theKeysAreTheBracketsAndTheLingualButtonsOfBothJaws)
{
    std::set<std::string, std::less<>> expected;
    for (int tooth = 2; tooth <= 31; ++tooth) {
        if (tooth == 16 || tooth == 17) continue;
        expected.insert(std::to_string(tooth));
        expected.insert(std::to_string(tooth) + "l");
    }
    ASSERT_EQ(expected.size(), 56u);
    std::set<std::string, std::less<>> keys;
    for (const auto &[key, hook] : bracketHookPositions())
        keys.emplace(key);
    EXPECT_EQ(keys, expected);
}

TEST(RubberBandTables, everyButtonHookHasTheRadiusOneHalfAndNoBracketHookHas)
{
    for (const auto &[key, hook] : bracketHookPositions())
        EXPECT_EQ(hook.radius == 0.5, key.back() == 'l') << key;
}

TEST(RubberBandTables, axesHaveTheLengthOne)
{
    // Six decimal places were written down.
    constexpr double roundedToSixPlaces = 5e-6;
    for (const auto &[key, hook] : bracketHookPositions())
        EXPECT_NEAR(Vector3_magnitude(hook.direction), 1.0, roundedToSixPlaces) << key;
    for (const BandAnchor &anchor : anchors())
        EXPECT_NEAR(Vector3_magnitude(anchor.direction), 1.0, roundedToSixPlaces);
}

TEST(RubberBandTables, everyRecordJoinsUpperToLowerThroughKnownAnchors)
{
    for (const auto &sequences : {anchorSequences0(), anchorSequences1(), anchorSequences2()}) {
        for (const AnchorSequence &sequence : sequences) {
            EXPECT_EQ(bracketHookPositions().count(sequence.from), 1u) << sequence.from;
            EXPECT_EQ(bracketHookPositions().count(sequence.to), 1u) << sequence.to;
            EXPECT_NE(isUpperToothName(sequence.from), isUpperToothName(sequence.to));
            EXPECT_GE(sequence.firstAnchor, 0);
            EXPECT_LT(sequence.firstAnchor, 103);
            EXPECT_GE(sequence.secondAnchor, -1);
            EXPECT_LT(sequence.secondAnchor, 103);
        }
    }
}

TEST(RubberBandTables, noPairOfHooksHasTwoRecordsInOneTable)
{
    for (const auto &sequences : {anchorSequences0(), anchorSequences1(), anchorSequences2()}) {
        std::set<std::set<std::string_view>> pairs;
        for (const AnchorSequence &sequence : sequences)
            EXPECT_TRUE(pairs.insert({sequence.from, sequence.to}).second)
                << sequence.from << " " << sequence.to;
    }
}

TEST(RubberBandTables, exactly28KeysMoveWithTheUpperJaw)
{
    int count = 0;
    for (int tooth = 0; tooth <= 40; ++tooth) {
        const bool isUpper = tooth >= 2 && tooth <= 15;
        for (const std::string &key : {std::to_string(tooth), std::to_string(tooth) + "l"}) {
            EXPECT_EQ(isUpperToothName(key), isUpper) << key;
            count += isUpperToothName(key) ? 1 : 0;
        }
    }
    EXPECT_EQ(count, 28);
}

TEST(RubberBandTables, aNameThatIsNotExactlyAnUpperKeyMovesWithTheLowerJaw)
{
    for (const char *name : {"", "l", "02", "2 ", " 2", "2L", "2ll", "l2", "2.0", "22l5", "upper"})
        EXPECT_FALSE(isUpperToothName(name)) << name;
}

TEST(RubberBandTables, theHooksAreMadeOnceAndKept)
{
    EXPECT_EQ(&bracketHookPositions(), &bracketHookPositions());
    EXPECT_EQ(anchors().data(), anchors().data());
}

TEST(RubberBandTables, aHookHoldsTwoVectorsAndThenADouble)
{
    static_assert(std::is_standard_layout_v<bracketHookInfo>);
    EXPECT_EQ(offsetof(bracketHookInfo, position), 0u);
    EXPECT_EQ(offsetof(bracketHookInfo, direction), 12u);
    EXPECT_EQ(offsetof(bracketHookInfo, radius), 24u);
    EXPECT_EQ(sizeof(bracketHookInfo), 32u);
}

} // namespace
