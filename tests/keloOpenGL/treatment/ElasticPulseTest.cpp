// The pulse that answers every click of the stringing, frame by frame, and the first bracket's
// highlight.

#include "tests/keloOpenGL/treatment/ElasticFixture.h"

namespace {

using namespace kelo;
using namespace kelo::test;

class ElasticPulse : public ElasticFixture
{
protected:
    /// What the watched model is to look like in the frames of one pulse: 3 less in each of ten,
    /// then 3 more in each of ten.
    static std::vector<double> pulseFrom(double shininess)
    {
        std::vector<double> values;
        for (int down = 1; down <= 10; ++down)
            values.push_back(shininess - 3.0 * down);
        for (int left = 9; left >= 0; --left)
            values.push_back(shininess - 3.0 * left);
        return values;
    }
    std::vector<double> takeShininess()
    {
        std::vector<double> values;
        for (const auto &frame : view->frames)
            values.push_back(frame.shininess);
        view->frames.clear();
        return values;
    }
    void watchBracket(const std::string &key)
    {
        view->watched = document->bracketModels().at(key);
        view->frames.clear();
    }
};

TEST_F(ElasticPulse, theShininessFallsByThreeInTenFramesAndRisesByThreeInTen)
{
    watchBracket("8");
    view->signalElasticsPlacement("8");
    const auto shininess = takeShininess();
    ASSERT_EQ(shininess.size(), 20u);
    EXPECT_EQ(shininess.front(), 29.0);
    EXPECT_EQ(shininess[9], 2.0);
    EXPECT_EQ(shininess[10], 5.0);
    EXPECT_EQ(shininess.back(), 32.0);
    EXPECT_EQ(shininess, pulseFrom(32.0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, aLingualButtonPulsesLikeABracket)
{
    view->watched = document->buttonModels().at("8l");
    view->signalElasticsPlacement("8l");
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, itBeginsAtTheShininessThatTheModelHas)
{
    bracket("8").setMaterial(HVOGLMaterial::materialWithColor_shininess(red, 70.0));
    watchBracket("8");
    view->signalElasticsPlacement("8");
    EXPECT_EQ(takeShininess(), pulseFrom(70.0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, itDrawsAMaterialOfTheSameColourAndGivesTheKeptOneBack)
{
    const auto kept = bracket("8").material();
    watchBracket("8");
    view->signalElasticsPlacement("8");
    ASSERT_EQ(view->frames.size(), 20u);
    for (const auto &frame : view->frames) {
        EXPECT_EQ(frame.color, red);
        EXPECT_NE(frame.material, kept);
        EXPECT_EQ(frame.material->frontDiffuseColor(), kept->frontDiffuseColor());
        EXPECT_EQ(frame.material->frontSpecularColor(), kept->frontSpecularColor());
    }
    EXPECT_EQ(bracket("8").material(), kept) << "the very material";
    EXPECT_EQ(kept->shininess(), 32.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, aNameThatNothingHasPulsesNothing)
{
    watchBracket("8");
    for (const char *name : {"", "1", "99", "8x"})
        view->signalElasticsPlacement(name);
    EXPECT_EQ(view->frames.size(), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, aStartPulsesTheBracketAndThenHighlightsIt)
{
    const auto own = bracket("8").material();
    watchBracket("8");
    startOn("8");
    EXPECT_FALSE(view->frames.front().isStringing) << "the pulse comes first";
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    const auto highlight = bracket("8").material();
    EXPECT_NE(highlight, own);
    EXPECT_EQ(highlight->shininess(), 2.0);
    EXPECT_EQ(highlight->color(), red);
    EXPECT_EQ(highlight->generalColor(), own->generalColor());
    EXPECT_EQ(highlight->frontAmbientColor(), own->frontAmbientColor());
    EXPECT_EQ(highlight->frontSpecularColor(), own->frontSpecularColor());
    EXPECT_EQ(highlight->frontEmissionColor(), own->frontEmissionColor());
    EXPECT_EQ(bracket("9").material()->shininess(), 32.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, startedFromAButtonNothingIsHighlighted)
{
    std::vector<std::shared_ptr<HVOGLMaterial>> before, after;
    const auto materials = [this] {
        std::vector<std::shared_ptr<HVOGLMaterial>> all;
        for (const auto *models : {&document->bracketModels(), &document->buttonModels()}) {
            for (const auto &[key, model] : *models)
                all.push_back(model->material());
        }
        return all;
    };
    before = materials();
    view->watched = document->buttonModels().at("8l");
    startOn("8l");
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    EXPECT_EQ(view->bracketSequence(), std::vector<std::string>{"8l"});
    after = materials();
    EXPECT_EQ(before, after);
    for (const auto &material : after)
        EXPECT_EQ(material->shininess(), 32.0);
    view->endElasticPlacement();
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    EXPECT_EQ(materials(), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, addingAndTakingBackPulseTheMember)
{
    startOn("8");
    watchBracket("25");
    view->setNeedsDisplay(false);
    clickBracket("25");
    EXPECT_TRUE(view->needsDisplay()) << "the band has another member";
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    view->setNeedsDisplay(false);
    clickBracket("25");
    EXPECT_EQ(view->bracketSequence(), std::vector<std::string>{"8"});
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, anElasticThatEndsDuringThePulseStaysEnded)
{
    startOn("8");
    view->onNextFrame = [this] { view->endElasticPlacement(); };
    clickBracket("25");
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(view->lastClickedToothName(), "8") << "the click strung nothing";
    EXPECT_EQ(bracket("8").material()->shininess(), 32.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, theFirstBracketDoesNotPulseForAnother)
{
    startOn("8");
    watchBracket("8");
    clickBracket("25");
    EXPECT_EQ(takeShininess(), std::vector<double>(20, 2.0)) << "it keeps its highlight meanwhile";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, closingGivesTheFirstBracketItsMaterialBackAndThenPulsesIt)
{
    const auto own = bracket("8").material();
    startOn("8");
    clickBracket("25");
    watchBracket("8");
    clickBracket("8");
    ASSERT_EQ(view->frames.size(), 20u);
    for (const auto &frame : view->frames) {
        EXPECT_FALSE(frame.isStringing);
        EXPECT_EQ(frame.elasticCount, 1u) << "it is placed before";
    }
    EXPECT_EQ(takeShininess(), pulseFrom(32.0)) << "not from the highlight's 2";
    EXPECT_EQ(bracket("8").material(), own);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, escapeAndAnotherModePulseTheFirstBracketToo)
{
    const auto own = bracket("8").material();
    startOn("8");
    watchBracket("8");
    view->keyDown(keyEvent(std::u16string(1, FunctionKey::Escape)));
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(bracket("8").material(), own);
    startOn("8");
    watchBracket("8");
    view->setMouseMode(HVOGLBasicView::colorMode);
    EXPECT_EQ(takeShininess(), pulseFrom(32.0));
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(bracket("8").material(), own);
    EXPECT_EQ(document->elasticModels().size(), 0u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ElasticPulse, aClickOnAToothWithoutItsBracketPulsesNothing)
{
    startOn("8");
    bracket("25").setHiddenPrimary(true);
    watchBracket("8");
    press(placeOf(static_cast<std::uint32_t>(document->toothModels().at("25")->uniqueID())));
    EXPECT_EQ(view->frames.size(), 0u);
    EXPECT_EQ(view->bracketSequence(), std::vector<std::string>{"8"});
    EXPECT_NO_GL_ERROR();
}

} // namespace
