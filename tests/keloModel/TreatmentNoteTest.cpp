#include "keloModel/TreatmentNote.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace kelo {
namespace {

using Keys = std::vector<std::string>;

TEST(TreatmentNote, theUpperTeethAre2To15AndTheLowerTeeth18To31)
{
    EXPECT_EQ(TreatmentNote::upperToothNameKeys(),
              (Keys{"2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15"}));
    EXPECT_EQ(
        TreatmentNote::lowerToothNameKeys(),
        (Keys{"18", "19", "20", "21", "22", "23", "24", "25", "26", "27", "28", "29", "30", "31"}));
}

TEST(TreatmentNote, theButtonAtAnIndexBelongsToTheToothAtThatIndex)
{
    const Keys upper = TreatmentNote::upperLingualButtonNameKeys();
    const Keys lower = TreatmentNote::lowerLingualButtonNameKeys();
    ASSERT_EQ(upper.size(), 14u);
    ASSERT_EQ(lower.size(), 14u);
    for (std::size_t i = 0; i < 14; ++i) {
        EXPECT_EQ(upper[i], TreatmentNote::upperToothNameKeys()[i] + "l");
        EXPECT_EQ(lower[i], TreatmentNote::lowerToothNameKeys()[i] + "l");
    }
}

TEST(TreatmentNote, toothAndButtonNamesLeadToOneAnother)
{
    EXPECT_EQ(TreatmentNote::buttonNameForToothName("8"), "8l");
    EXPECT_EQ(TreatmentNote::toothNameForButtonName("8l"), "8");
    EXPECT_EQ(TreatmentNote::toothNameForButtonName("31l"), "31");
}

TEST(TreatmentNote, everyToothBelongsToASideOfThePageAndTheCaninesToTwo)
{
    std::multiset<std::string> listed;
    for (const Keys &side :
         {TreatmentNote::leftElasticToothNameKeys(), TreatmentNote::frontElasticToothNameKeys(),
          TreatmentNote::rightElasticToothNameKeys()})
        listed.insert(side.begin(), side.end());
    const std::set<std::string> canines{"6", "11", "22", "27"};
    for (const Keys &jaw :
         {TreatmentNote::upperToothNameKeys(), TreatmentNote::lowerToothNameKeys()})
        for (const std::string &key : jaw)
            EXPECT_EQ(listed.count(key), canines.contains(key) ? 2u : 1u) << key;
    EXPECT_EQ(listed.size(), 2u * 32u) << "a lingual button for each";
}

TEST(TreatmentNote, theLeftSideOfThePageHasThePatientsRightTeethAndTheirButtons)
{
    EXPECT_EQ(TreatmentNote::leftElasticToothNameKeys(),
              (Keys{"2",  "3",  "4",  "5",  "6",  "27",  "28",  "29",  "30",  "31",
                    "2l", "3l", "4l", "5l", "6l", "27l", "28l", "29l", "30l", "31l"}));
    EXPECT_EQ(
        TreatmentNote::frontElasticToothNameKeys(),
        (Keys{"6",  "7",  "8",  "9",  "10",  "11",  "22",  "23",  "24",  "25",  "26",  "27",
              "6l", "7l", "8l", "9l", "10l", "11l", "22l", "23l", "24l", "25l", "26l", "27l"}));
    EXPECT_EQ(TreatmentNote::rightElasticToothNameKeys(),
              (Keys{"11",  "12",  "13",  "14",  "15",  "18",  "19",  "20",  "21",  "22",
                    "11l", "12l", "13l", "14l", "15l", "18l", "19l", "20l", "21l", "22l"}));
}

/// A chart of two teeth whose buttons have names of their own.
class SmallChart : public TreatmentNoteKeys
{
public:
    std::vector<std::string> upperToothNameKeys() const override { return {"8", "9"}; }
    std::string buttonNameForToothName(const std::string &toothName) const override
    {
        return "l" + toothName;
    }
};

TEST(TreatmentNote, aHostReplacesTheListsAndBringsTheStandardOnesBack)
{
    const auto chart = std::make_shared<SmallChart>();
    TreatmentNote::setKeys(chart);
    EXPECT_EQ(TreatmentNote::keys(), chart);
    EXPECT_EQ(TreatmentNote::upperToothNameKeys(), (Keys{"8", "9"}));
    EXPECT_EQ(TreatmentNote::upperLingualButtonNameKeys(), (Keys{"l8", "l9"}));
    EXPECT_EQ(TreatmentNote::lowerToothNameKeys().size(), 14u) << "not overridden";
    TreatmentNote::setKeys(nullptr);
    ASSERT_TRUE(TreatmentNote::keys());
    EXPECT_EQ(TreatmentNote::upperToothNameKeys().size(), 14u);
    EXPECT_EQ(TreatmentNote::upperLingualButtonNameKeys().front(), "2l");
}

} // namespace
} // namespace kelo
