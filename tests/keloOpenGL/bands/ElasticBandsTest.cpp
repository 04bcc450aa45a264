#include "keloOpenGL/bands/ElasticBands.h"

#include "document/ElasticModel.h"
#include "tests/document/DocumentFixture.h"

namespace {

using namespace kelo;

class ElasticBands : public kelo::test::DocumentFixture
{
protected:
    static std::shared_ptr<ElasticsSizeType> greenSize()
    {
        auto size = std::make_shared<ElasticsSizeType>();
        size->elasticsColor = {0.0, 1.0, 0.0, 1.0};
        return size;
    }
    static std::vector<std::string> keysOf(const DrawnBand &band)
    {
        return {band.keys.begin(), band.keys.end()};
    }
};

TEST_F(ElasticBands, aPlacedElasticComesBackToItsFirstMemberInItsColour)
{
    const ElasticModel elastic(nullptr, greenSize(), {"8", "25"});
    const DrawnBand band = placedBand(elastic, 300, false);
    EXPECT_EQ(keysOf(band), (std::vector<std::string>{"8", "25"}));
    EXPECT_TRUE(band.closesLoop);
    EXPECT_EQ(band.color, (Color{0.0, 1.0, 0.0, 1.0}));
    EXPECT_EQ(band.pickID, std::nullopt);
    EXPECT_EQ(placedBand(elastic, 300, true).pickID, 300u);
    EXPECT_EQ(placedBand(ElasticModel(nullptr, nullptr, {}), 0, false).color, std::nullopt);
}

TEST_F(ElasticBands, oneThatIsBeingStrungIsOpenAndCannotBePicked)
{
    const auto size = greenSize();
    std::optional<std::vector<std::string>> members;
    EXPECT_FALSE(strungBand(members, size.get()));
    members = {"8"};
    EXPECT_FALSE(strungBand(members, size.get())) << "one member is no band";
    members = {"8", "25"};
    const auto band = strungBand(members, size.get());
    ASSERT_TRUE(band);
    EXPECT_EQ(keysOf(*band), *members);
    EXPECT_FALSE(band->closesLoop);
    EXPECT_EQ(band->color, (Color{0.0, 1.0, 0.0, 1.0}));
    EXPECT_EQ(band->pickID, std::nullopt);
    EXPECT_EQ(strungBand(members, nullptr)->color, std::nullopt);
}

TEST_F(ElasticBands, anElasticIsOverAToothIfOneOfItsMembersIs)
{
    const auto first = place({"8", "25"});
    place({"9", "10"});
    const auto third = place({"10", "8l"});
    EXPECT_EQ(elasticsOver(*document, {"8l", "8"}), (DXDocumentModel::ElasticModels{first, third}));
    EXPECT_TRUE(elasticsOver(*document, {}).empty());
}

} // namespace
