// Which models and elastics the parts that are left out take with them; without a view.

#include "keloOpenGL/treatment/SceneParts.h"

#include "tests/keloOpenGL/ViewFixture.h"

namespace {

using namespace kelo;

constexpr ScenePart allParts[] = {ScenePart::UpperArch, ScenePart::LowerArch, ScenePart::Gums,
                                  ScenePart::Brackets,  ScenePart::Buttons,   ScenePart::Elastics};

class ScenePartsTest : public testing::Test
{
protected:
    bool leavesOut(const std::shared_ptr<DXGLightweightModel> &model) const
    {
        return parts.leavesOut(*model);
    }

    std::shared_ptr<DXDocumentModel> document = kelo::test::boxDocument();
    SceneParts parts;
};

TEST_F(ScenePartsTest, atFirstEverythingIsShown)
{
    parts.beginDrawing(document.get(), false);
    for (const ScenePart part : allParts)
        EXPECT_TRUE(parts.shows(part));
    EXPECT_FALSE(leavesOut(document->upperGumModel()));
    EXPECT_FALSE(leavesOut(document->toothModels().at("25")));
    EXPECT_TRUE(parts.showsElasticOver({"6", "27"}));
}

TEST_F(ScenePartsTest, eachPartLeavesOutItsOwnModels)
{
    const struct
    {
        ScenePart part;
        bool lowerGum, lowerTooth, lowerBracket, lowerButton;
    } rows[] = {{ScenePart::UpperArch, false, false, false, false},
                {ScenePart::LowerArch, true, true, true, true},
                {ScenePart::Gums, true, false, false, false},
                {ScenePart::Brackets, false, false, true, false},
                {ScenePart::Buttons, false, false, false, true},
                {ScenePart::Elastics, false, false, false, false}};
    for (const auto &row : rows) {
        SCOPED_TRACE(static_cast<int>(row.part));
        parts.setShows(row.part, false);
        parts.beginDrawing(document.get(), false);
        EXPECT_FALSE(parts.shows(row.part));
        EXPECT_EQ(leavesOut(document->lowerGumModel()), row.lowerGum);
        EXPECT_EQ(leavesOut(document->toothModels().at("25")), row.lowerTooth);
        EXPECT_EQ(leavesOut(document->bracketModels().at("25")), row.lowerBracket);
        EXPECT_EQ(leavesOut(document->buttonModels().at("25l")), row.lowerButton);
        parts.setShows(row.part, true);
    }
}

TEST_F(ScenePartsTest, anElasticGoesWithEitherArchThatItReaches)
{
    parts.setShows(ScenePart::UpperArch, false);
    parts.beginDrawing(document.get(), false);
    EXPECT_FALSE(parts.showsElasticOver({"6", "27"}));
    EXPECT_FALSE(parts.showsElasticOver({"25l", "8l"}));
    EXPECT_TRUE(parts.showsElasticOver({"25", "27"}));
    parts.setShows(ScenePart::UpperArch, true);
    parts.setShows(ScenePart::Elastics, false);
    EXPECT_FALSE(parts.showsElasticOver({"25", "27"}));
}

TEST_F(ScenePartsTest, aDrawingOfEverythingLeavesNothingOut)
{
    for (const ScenePart part : allParts)
        parts.setShows(part, false);
    parts.beginDrawing(document.get(), true);
    EXPECT_FALSE(leavesOut(document->upperGumModel()));
    EXPECT_FALSE(leavesOut(document->bracketModels().at("8")));
    EXPECT_TRUE(parts.showsElasticOver({"6", "27"}));
    parts.beginDrawing(document.get(), false);
    EXPECT_TRUE(leavesOut(document->upperGumModel())) << "the next one does again";
    EXPECT_FALSE(parts.showsElasticOver({"6", "27"}));
}

TEST_F(ScenePartsTest, withoutADocumentOrGumsThereIsNothingToLeaveOut)
{
    parts.setShows(ScenePart::Gums, false);
    const auto gum = document->upperGumModel();
    document->setUpperGumModel(nullptr);
    parts.beginDrawing(document.get(), false);
    EXPECT_FALSE(leavesOut(gum)) << "it belongs to the document no more";
    EXPECT_TRUE(leavesOut(document->lowerGumModel()));
    parts.beginDrawing(nullptr, false);
    EXPECT_FALSE(leavesOut(document->lowerGumModel()));
}

} // namespace
