#include "tests/document/DocumentFixture.h"

#include <cstdlib>

namespace kelo {
namespace {

using test::Keys;
using Complaints = std::vector<std::string>;

class DXDocumentModelSanity : public test::DocumentFixture
{};

TEST_F(DXDocumentModelSanity, aFreshDocumentHasNothingWrong)
{
    EXPECT_EQ(document->checkSanity(), Complaints());
}

TEST_F(DXDocumentModelSanity, aBracketOrButtonThatDoesNotFollowItsToothIsNamed)
{
    bracket("8")->setHiddenSecondary(true);
    tooth("9")->setHiddenPrimary(true);
    bracket("9")->setHiddenSecondary(true);
    EXPECT_EQ(document->checkSanity(),
              (Complaints{"The bracket \"8\" does not hide and show with its tooth",
                          "The button \"9l\" does not hide and show with its tooth"}));
}

TEST_F(DXDocumentModelSanity, aModelUnderTwoKeysIsNamed)
{
    auto teeth = document->toothModels();
    teeth["9"] = teeth["8"];
    document->setToothModels(teeth);
    EXPECT_EQ(document->checkSanity(),
              Complaints{"The tooth \"9\" shares the identifier " +
                         std::to_string(tooth("8")->uniqueID()) + " with another model"});
}

/// In a process of its own, since the counter never goes back.
using DXDocumentModelSanityDeathTest = DXDocumentModelSanity;
TEST_F(DXDocumentModelSanityDeathTest, anIdentifierThatIsAnElasticsIsNamed)
{
    EXPECT_EXIT(
        {
            DXGLightweightModel::setNextUniqueID(0x800000);
            document->setUpperGumModel(test::emptyModel());
            const Complaints expected{
                "The upper gum has the identifier 8388608, which cannot be picked"};
            std::exit(document->checkSanity() == expected ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DXDocumentModelSanity, aButtonWithoutItsExtendedHitboxIsNamed)
{
    button("8l")->setExtendedHitbox(false);
    EXPECT_EQ(document->checkSanity(), Complaints{"The button \"8l\" has no extended hit box"});
}

TEST_F(DXDocumentModelSanity, colorsThatDoNotBelongAreNamed)
{
    document->bracket_setColorWithBracketColorTypeID("8", 4999);
    EXPECT_EQ(document->checkSanity(), Complaints());
    document->bracket_setColorWithBracketColorTypeID("9", 7);
    document->bracket_setColorWithBracketColorTypeID("99", 4999);
    EXPECT_EQ(document->checkSanity(),
              (Complaints{"The colour 7 of bracket \"9\" is not available",
                          "The colour of bracket \"99\" belongs to no loaded bracket"}));
}

TEST_F(DXDocumentModelSanity, anElasticThroughWhatIsNotThereIsNamed)
{
    const auto elastic = place({"8", "16", "9l"});
    place({"8", "9"});
    document->placeElasticModel(elastic);
    const std::string complaint = "The elastic " + std::to_string(elastic->uniqueID()) +
                                  " runs through \"16\", which is no loaded bracket or button";
    EXPECT_EQ(document->checkSanity(), (Complaints{complaint, complaint}))
        << "once for each time that it is listed";
    document->elasticModels() = {nullptr};
    EXPECT_EQ(document->checkSanity(), Complaints{"The list of elastics holds a null"});
}

} // namespace
} // namespace kelo
