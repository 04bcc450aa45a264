#include "viewer/store/ElasticMerge.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace viewer {
namespace {

using Records = std::vector<kelo::SavedElastic>;

kelo::SavedElastic elastic(long size, std::vector<std::string> members)
{
    return {std::nullopt, size, std::move(members)};
}

const kelo::SavedElastic a = elastic(1, {"6", "30"});
const kelo::SavedElastic b = elastic(2, {"11", "19"});
const kelo::SavedElastic c = elastic(3, {"8", "25", "24"});
const kelo::SavedElastic x = elastic(4, {"3", "30"});

TEST(ElasticMerge, withoutOthersTheReportersListIsStored)
{
    EXPECT_EQ(mergedElastics({a, b}, {b, c, a}, {a, b}), (Records{b, c, a}));
    EXPECT_EQ(mergedElastics({}, {a, a}, {}), (Records{a, a}));
}

TEST(ElasticMerge, anElasticThatOthersPlacedStays)
{
    EXPECT_EQ(mergedElastics({a}, {a, b}, {a, x}), (Records{a, x, b}));
    EXPECT_EQ(mergedElastics({a}, {}, {a, x}), Records{x});
    EXPECT_EQ(mergedElastics({a}, {a, b}, {x, a}), (Records{x, a, b}));
}

TEST(ElasticMerge, anElasticThatOthersRemovedStaysRemoved)
{
    EXPECT_EQ(mergedElastics({a, b}, {a, b, c}, {b}), (Records{b, c}));
    EXPECT_EQ(mergedElastics({a, b}, {b}, {a}), Records());
}

TEST(ElasticMerge, whatBothDidCountsOnce)
{
    EXPECT_EQ(mergedElastics({a}, {a, b}, {a, b, x}), (Records{a, b, x}));
    EXPECT_EQ(mergedElastics({a, b}, {b}, {b, x}), (Records{b, x}));
    EXPECT_EQ(mergedElastics({a}, {a, b}, {a, b}), (Records{a, b}));
}

TEST(ElasticMerge, ofEqualElasticsOnlyAsManyGoAsWereRemoved)
{
    EXPECT_EQ(mergedElastics({a, a}, {a}, {a, a, x}), (Records{a, x}));
    EXPECT_EQ(mergedElastics({a, a}, {}, {a, x, a, a}), (Records{x, a}));
}

TEST(ElasticMerge, anotherSizeIsStoredInTheElasticsPlace)
{
    const kelo::SavedElastic larger = elastic(7, {"6", "30"});
    EXPECT_EQ(mergedElastics({a, b}, {larger, b}, {a, b, x}), (Records{larger, b, x}));
    EXPECT_EQ(mergedElastics({a, b}, {larger, b}, {larger, b, x}), (Records{larger, b, x}));
}

TEST(ElasticMerge, aShortenedElasticIsStoredInItsPlace)
{
    const kelo::SavedElastic shortened = elastic(3, {"8", "24"});
    EXPECT_EQ(mergedElastics({c, b}, {shortened, b}, {x, c, b}), (Records{x, shortened, b}));
    // The first of two is removed as a whole, the second is shortened.
    EXPECT_EQ(mergedElastics({b, c}, {shortened}, {b, c, x}), (Records{shortened, x}));
}

TEST(ElasticMerge, differentChangesOfOneElasticAreBothMade)
{
    const kelo::SavedElastic larger = elastic(7, {"8", "25", "24"});
    const kelo::SavedElastic shortened = elastic(3, {"8", "24"});
    EXPECT_EQ(mergedElastics({c}, {larger}, {shortened}), Records{elastic(7, {"8", "24"})});
    EXPECT_EQ(mergedElastics({c}, {shortened}, {larger}), Records{elastic(7, {"8", "24"})});
}

TEST(ElasticMerge, ofTwoSizesTheLaterOneWins)
{
    EXPECT_EQ(mergedElastics({a}, {elastic(5, {"6", "30"})}, {elastic(7, {"6", "30"})}),
              Records{elastic(5, {"6", "30"})});
}

TEST(ElasticMerge, anElasticThatOneChangedAndTheOtherRemovedStays)
{
    const kelo::SavedElastic larger = elastic(7, {"6", "30"});
    EXPECT_EQ(mergedElastics({a, b}, {larger, b}, {b}), (Records{b, larger}));
    EXPECT_EQ(mergedElastics({a, b}, {b}, {larger, b}), (Records{larger, b}));
}

TEST(ElasticMerge, aHundredThousandElasticsTakeNoLongerThanTheirNumberAsks)
{
    Records before;
    for (int i = 0; i < 100000; ++i)
        before.push_back(elastic(i, {std::to_string(i % 28), std::to_string(i)}));
    Records after = before;
    for (kelo::SavedElastic &record : after)
        record.elasticsSizeTypeID = *record.elasticsSizeTypeID + 1000000;
    Records stored = before;
    stored.push_back(x);
    const auto start = std::chrono::steady_clock::now();
    const Records merged = mergedElastics(before, after, stored);
    // Two lists compared all with all are ten thousand million comparisons, minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    ASSERT_EQ(merged.size(), 100001u);
    EXPECT_EQ(merged[7], elastic(1000007, {"7", "7"}));
    EXPECT_EQ(merged.back(), x);
}

} // namespace
} // namespace viewer
