#include "document/DocumentSanity.h"

#include "tests/document/DocumentFixture.h"

namespace kelo {
namespace {

using Complaints = std::vector<std::string>;

ModelSet oneTooth()
{
    ModelSet models{test::emptyModels({"8"}), test::emptyModels({"8"}), test::emptyModels({"8l"}),
                    nullptr, nullptr};
    models.buttons.at("8l")->setExtendedHitbox(true);
    return models;
}

TEST(DocumentSanity, ofModelsSpeaksOfTheirFlags)
{
    const ModelSet models = oneTooth();
    EXPECT_EQ(complaintsAboutModels(models), Complaints());
    models.teeth.at("8")->setHiddenPrimary(true);
    models.brackets.at("8")->setHiddenSecondary(true);
    models.buttons.at("8l")->setExtendedHitbox(false);
    EXPECT_EQ(complaintsAboutModels(models),
              (Complaints{"The button \"8l\" does not hide and show with its tooth",
                          "The button \"8l\" has no extended hit box"}));
}

TEST(DocumentSanity, ofColoursSpeaksOfBracketsAndTypes)
{
    const ModelSet models = oneTooth();
    BracketPaint paint;
    paint.choose(models.brackets, "8", noBracketColorTypeID);
    EXPECT_EQ(complaintsAboutColors(paint, models.brackets), Complaints());
    paint.choose(models.brackets, "9", 5);
    EXPECT_EQ(complaintsAboutColors(paint, models.brackets),
              (Complaints{"The colour of bracket \"9\" belongs to no loaded bracket",
                          "The colour 5 of bracket \"9\" is not available"}));
}

TEST(DocumentSanity, ofElasticsSpeaksOfMembersAndNulls)
{
    const ModelSet models = oneTooth();
    const auto elastic =
        std::make_shared<ElasticModel>(nullptr, nullptr, test::Keys{"8", "8l", "25"});
    EXPECT_EQ(complaintsAboutElastics({elastic, elastic, nullptr}, models).size(), 3u);
    EXPECT_EQ(complaintsAboutElastics({elastic}, models),
              Complaints{"The elastic " + std::to_string(elastic->uniqueID()) +
                         " runs through \"25\", which is no loaded bracket or button"});
    EXPECT_EQ(complaintsAboutElastics({nullptr}, models),
              Complaints{"The list of elastics holds a null"});
}

} // namespace
} // namespace kelo
