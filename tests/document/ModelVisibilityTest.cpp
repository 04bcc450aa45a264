#include "document/ModelVisibility.h"

#include "tests/document/DocumentFixture.h"

namespace kelo {
namespace {

class ModelVisibility : public testing::Test
{
protected:
    ModelSet models{test::emptyModels({"8", "9"}), test::emptyModels({"8", "9"}),
                    test::emptyModels({"8l", "9l"}), nullptr, nullptr};
};

TEST_F(ModelVisibility, isThatOfTheModelItself)
{
    models.brackets.at("8")->setHiddenPrimary(true);
    models.brackets.at("9")->setHiddenSecondary(true);
    EXPECT_EQ(visibilitiesOf(models.brackets),
              (NameKeyDictionary<bool>{{"8", false}, {"9", true}}));
}

TEST_F(ModelVisibility, isSetForTheGivenKeysThatHaveAModel)
{
    setVisibilities(models.brackets, {{"8", false}, {"10", false}});
    EXPECT_EQ(visibilitiesOf(models.brackets),
              (NameKeyDictionary<bool>{{"8", false}, {"9", true}}));
    setVisibilities(models.brackets, {{"8", true}});
    EXPECT_TRUE(visibilitiesOf(models.brackets).at("8"));
}

TEST_F(ModelVisibility, ofAToothIsFollowedByItsBracketAndButton)
{
    setToothVisibilities(models, {{"8", false}, {"10", false}});
    EXPECT_TRUE(models.teeth.at("8")->hiddenPrimary());
    EXPECT_TRUE(models.brackets.at("8")->hiddenSecondary());
    EXPECT_TRUE(models.buttons.at("8l")->hiddenSecondary());
    EXPECT_FALSE(models.brackets.at("8")->hiddenPrimary()) << "it is still placed";
    EXPECT_FALSE(models.brackets.at("9")->hiddenSecondary());
    EXPECT_TRUE(toggleTooth(models, "8"));
    EXPECT_FALSE(models.brackets.at("8")->hiddenSecondary());
    EXPECT_FALSE(toggleTooth(models, "8"));
    EXPECT_TRUE(models.buttons.at("8l")->hiddenSecondary());
}

TEST_F(ModelVisibility, isToggledThereAndBack)
{
    const auto bracket = models.brackets.at("8");
    EXPECT_FALSE(toggle(bracket));
    EXPECT_TRUE(bracket->hiddenPrimary());
    EXPECT_TRUE(toggle(bracket));
    EXPECT_FALSE(bracket->hiddenPrimary());
    EXPECT_TRUE(toggle(nullptr)) << "what is not there is not hidden";
    EXPECT_TRUE(toggleTooth(models, "10"));
}

TEST_F(ModelVisibility, ofAHookIsThatOfItsModelAndOfItsTooth)
{
    EXPECT_FALSE(isHiddenUnderKey(models, "8"));
    toggleTooth(models, "8");
    EXPECT_TRUE(isHiddenUnderKey(models, "8"));
    EXPECT_TRUE(isHiddenUnderKey(models, "8l"));
    toggle(models.brackets.at("9"));
    EXPECT_TRUE(isHiddenUnderKey(models, "9"));
    EXPECT_FALSE(isHiddenUnderKey(models, "9l"));
    toggle(models.buttons.at("9l"));
    EXPECT_TRUE(isHiddenUnderKey(models, "9l"));
    EXPECT_FALSE(isHiddenUnderKey(models, "10")) << "there is no such model";
}

} // namespace
} // namespace kelo
