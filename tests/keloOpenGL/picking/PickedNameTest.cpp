#include "keloOpenGL/picking/PickedName.h"

#include "tests/document/DocumentFixture.h"

namespace {

using namespace kelo;

class PickedNames : public kelo::test::DocumentFixture
{
protected:
    std::optional<PickedName> nameOf(const DXGLightweightModel &model, bool includesTeeth) const
    {
        return pickedName(*document, static_cast<std::uint32_t>(model.uniqueID()), includesTeeth);
    }
};

TEST_F(PickedNames, bracketsAndButtonsHaveTheirKeys)
{
    const auto picked = nameOf(*bracket("8"), false);
    ASSERT_TRUE(picked);
    EXPECT_EQ(picked->key, "8");
    EXPECT_FALSE(picked->isLingualButton);
    const auto pickedButton = nameOf(*button("8l"), false);
    ASSERT_TRUE(pickedButton);
    EXPECT_EQ(pickedButton->key, "8l");
    EXPECT_TRUE(pickedButton->isLingualButton);
}

TEST_F(PickedNames, teethAreFoundOnlyWhereTheyAreIncluded)
{
    EXPECT_FALSE(nameOf(*tooth("8"), false));
    const auto picked = nameOf(*tooth("8"), true);
    ASSERT_TRUE(picked);
    EXPECT_EQ(picked->key, "8");
    EXPECT_FALSE(picked->isLingualButton);
}

TEST_F(PickedNames, gumsAndTheBackgroundHaveNone)
{
    EXPECT_FALSE(nameOf(*document->upperGumModel(), true));
    EXPECT_FALSE(pickedName(*document, 0, true));
}

} // namespace
