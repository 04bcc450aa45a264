#include "keloOpenGL/editing/BracketHighlight.h"

#include "models/HVOGLMaterial.h"
#include "tests/document/DocumentFixture.h"

namespace {

using namespace kelo;

const Color highlightedColor{1.0, 0.0, 0.0, 1.0};

std::shared_ptr<DXGLightweightModel> redModel(double shininess)
{
    auto model = kelo::test::emptyModel();
    model->setMaterial(HVOGLMaterial::materialWithColor_shininess(highlightedColor, shininess));
    return model;
}

TEST(BracketHighlight, theBracketHasItsOwnColourWithAnotherHighlight)
{
    const auto bracket = redModel(32.0);
    const auto own = bracket->material();
    BracketHighlight highlight;
    highlight.begin(bracket);
    EXPECT_NE(bracket->material(), own);
    EXPECT_EQ(bracket->material()->color(), highlightedColor);
    EXPECT_EQ(bracket->material()->shininess(), 2.0);
    highlight.end(bracket);
    EXPECT_EQ(bracket->material(), own) << "the very material";
}

TEST(BracketHighlight, whatWasPaintedMeanwhileStays)
{
    const auto bracket = redModel(32.0);
    BracketHighlight highlight;
    highlight.begin(bracket);
    const auto painted = HVOGLMaterial::materialWithColor(Color{0.0, 0.0, 1.0, 1.0});
    bracket->setMaterial(painted);
    highlight.end(bracket);
    EXPECT_EQ(bracket->material(), painted);
}

TEST(BracketHighlight, aBracketThatIsMissingIsNone)
{
    const auto bracket = redModel(32.0);
    const auto own = bracket->material();
    BracketHighlight highlight;
    highlight.begin(nullptr);
    highlight.end(bracket);
    EXPECT_EQ(bracket->material(), own);
    highlight.begin(bracket);
    highlight.end(nullptr);
    highlight.end(bracket);
    EXPECT_EQ(bracket->material()->shininess(), 2.0) << "it was forgotten";
}

TEST(HighlightPulse, theShininessFallsInTenStepsAndRisesInTen)
{
    const auto model = redModel(70.0);
    const auto own = model->material();
    std::vector<double> values;
    {
        HighlightPulse pulse(model);
        EXPECT_EQ(&pulse.model(), model.get());
        while (pulse.step())
            values.push_back(model->material()->shininess());
        EXPECT_FALSE(pulse.step());
        EXPECT_EQ(model->material()->color(), highlightedColor);
    }
    ASSERT_EQ(values.size(), 20u);
    EXPECT_EQ(values.front(), 67.0);
    EXPECT_EQ(values[9], 40.0);
    EXPECT_EQ(values[10], 43.0);
    EXPECT_EQ(values.back(), 70.0);
    EXPECT_EQ(model->material(), own);
    EXPECT_EQ(own->shininess(), 70.0);
}

} // namespace
