#include "models/PickIdentifier.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

TEST(PickIdentifier, anElasticIsNamedByItsPlaceInTheList)
{
    EXPECT_EQ(pickIdentifierOfElastic(0), 0x800000u);
    EXPECT_EQ(pickIdentifierOfElastic(255), 0x8000FFu);
    EXPECT_EQ(elasticIndexOfPickIdentifier(0x800003), 3u);
}

TEST(PickIdentifier, the257thElasticReadsAsTheFirst)
{
    EXPECT_EQ(pickIdentifierOfElastic(256), pickIdentifierOfElastic(0));
}

TEST(PickIdentifier, meshesAndTheBackgroundAreNoElastics)
{
    EXPECT_EQ(elasticIndexOfPickIdentifier(0), std::nullopt);
    EXPECT_EQ(elasticIndexOfPickIdentifier(0x7FFFFF), std::nullopt);
}

TEST(PickIdentifier, aPointWithoutPixelNamesAnElasticBeyondAnyList)
{
    EXPECT_EQ(elasticIndexOfPickIdentifier(noPixelPickIdentifier), 0x2BCDEFu);
}

TEST(PickIdentifier, aMeshIsPickedByAnIdentifierBetweenNothingAndElastics)
{
    EXPECT_FALSE(canBePicked(0));
    EXPECT_TRUE(canBePicked(1));
    EXPECT_TRUE(canBePicked(0x7FFFFF));
    EXPECT_FALSE(canBePicked(0x800000));
}

} // namespace
} // namespace kelo
