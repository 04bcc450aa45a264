#include "viewer/text/ToothNotation.h"

#include <gtest/gtest.h>

using viewer::toothName;
using viewer::ToothNotation;

namespace {

struct Row
{
    const char *key;
    const char *universal;
    const char *fdi;
    const char *palmer;
};

/// The corners of every quadrant, and one from the middle of each.
constexpr Row rows[] = {
    {"1", "1", "18", "UR8"},   {"3", "3", "16", "UR6"},   {"8", "8", "11", "UR1"},
    {"9", "9", "21", "UL1"},   {"14", "14", "26", "UL6"}, {"16", "16", "28", "UL8"},
    {"17", "17", "38", "LL8"}, {"22", "22", "33", "LL3"}, {"24", "24", "31", "LL1"},
    {"25", "25", "41", "LR1"}, {"30", "30", "46", "LR6"}, {"32", "32", "48", "LR8"},
};

TEST(ToothNotation, everyQuadrantIsNamedFromItsMidline)
{
    for (const Row &row : rows) {
        EXPECT_EQ(toothName(row.key, ToothNotation::Universal).toStdString(), row.universal);
        EXPECT_EQ(toothName(row.key, ToothNotation::FDI).toStdString(), row.fdi);
        EXPECT_EQ(toothName(row.key, ToothNotation::Palmer).toStdString(), row.palmer);
    }
}

TEST(ToothNotation, aLingualButtonSaysSo)
{
    EXPECT_EQ(toothName("8l", ToothNotation::Universal), "8 lingual");
    EXPECT_EQ(toothName("8l", ToothNotation::FDI), "11 lingual");
}

TEST(ToothNotation, aKeyThatIsNoneIsReturnedAsItIs)
{
    for (const char *key : {"", "0", "33", "x", "-1"})
        EXPECT_EQ(toothName(key, ToothNotation::FDI), key);
}

TEST(ToothNotation, everyNotationHasANameForSettings)
{
    for (const auto notation :
         {ToothNotation::Universal, ToothNotation::FDI, ToothNotation::Palmer})
        EXPECT_EQ(viewer::toothNotationFromName(viewer::nameOfToothNotation(notation)), notation);
    EXPECT_EQ(viewer::toothNotationFromName("palmer"), ToothNotation::Palmer);
    EXPECT_EQ(viewer::toothNotationFromName("Palmer"), std::nullopt);
    EXPECT_EQ(viewer::toothNotationFromName(""), std::nullopt);
}

} // namespace
