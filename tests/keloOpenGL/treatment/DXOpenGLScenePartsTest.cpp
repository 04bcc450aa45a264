// Parts of the scene that are left out of the picture.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/ElasticModel.h"
#include "keloModel/ElasticsSizeType.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <set>

namespace {

using namespace kelo;

class DXOpenGLSceneParts : public kelo::test::ViewFixture
{
protected:
    DXOpenGLSceneParts()
    {
        document = kelo::test::boxDocument();
        for (const auto &models : {document->bracketModels(), document->buttonModels()}) {
            for (const auto &[key, model] : models)
                model->setHiddenPrimary(false);
        }
        auto size = std::make_shared<ElasticsSizeType>();
        size->typeID = 1;
        size->elasticsColor = {0.0, 1.0, 0.0, 1.0};
        document->setAvailableElasticsSizeTypes({{1, size}});
        for (const auto &keys : {std::vector<std::string>{"6", "8"}, {"25", "27"}, {"11", "22"}})
            document->placeElasticModel(std::make_shared<ElasticModel>(nullptr, size, keys));
        view->setDocumentModel(document);
        view->display();
        view->setPrintButtonTexture(nullptr); // its colours in a pick mean nothing
    }

    /// What is seen from the front, from above and from below, mouth open: everything, but for
    /// what the rest of the scene covers.
    std::set<std::uint64_t> seen()
    {
        std::set<std::uint64_t> identifiers;
        view->setMouthOpenAngle(30.0f);
        for (const float angle : {90.0f, 0.0f, 180.0f, 45.0f, 135.0f, -90.0f}) {
            view->setWorldRotationAngle_axis(angle, -1.0, 0.0, 0.0);
            for (const std::uint32_t identifier : view->pickIdentifiers())
                identifiers.insert(identifier);
        }
        return identifiers;
    }

    static bool hasAny(const std::set<std::uint64_t> &identifiers,
                       const DXDocumentModel::Models &models)
    {
        return std::any_of(models.begin(), models.end(), [&](const auto &entry) {
            return identifiers.contains(entry.second->uniqueID());
        });
    }

    static constexpr std::uint64_t elastic = 0x800000;
    std::shared_ptr<DXDocumentModel> document;
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {500.0, 400.0}});
};

TEST_F(DXOpenGLSceneParts, atFirstEverythingIsShown)
{
    for (int part = 0; part < scenePartCount; ++part)
        EXPECT_TRUE(view->showsScenePart(static_cast<ScenePart>(part)));
    const auto identifiers = seen();
    EXPECT_TRUE(hasAny(identifiers, document->toothModels()));
    EXPECT_TRUE(hasAny(identifiers, document->bracketModels()));
    EXPECT_TRUE(hasAny(identifiers, document->buttonModels()));
    EXPECT_TRUE(identifiers.contains(document->upperGumModel()->uniqueID()));
    EXPECT_TRUE(identifiers.contains(document->lowerGumModel()->uniqueID()));
    for (std::uint64_t i = 0; i < 3; ++i)
        EXPECT_TRUE(identifiers.contains(elastic + i)) << i;
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLSceneParts, whatIsLeftOutIsNeitherDrawnNorPickedAndTheRestIs)
{
    view->setShowsScenePart(ScenePart::Brackets, false);
    view->setShowsScenePart(ScenePart::Gums, false);
    auto identifiers = seen();
    EXPECT_TRUE(hasAny(identifiers, document->toothModels()));
    EXPECT_FALSE(hasAny(identifiers, document->bracketModels()));
    EXPECT_TRUE(hasAny(identifiers, document->buttonModels()));
    EXPECT_FALSE(identifiers.contains(document->upperGumModel()->uniqueID()));
    EXPECT_FALSE(identifiers.contains(document->lowerGumModel()->uniqueID()));
    EXPECT_TRUE(identifiers.contains(elastic));

    view->setShowsScenePart(ScenePart::Buttons, false);
    view->setShowsScenePart(ScenePart::Elastics, false);
    identifiers = seen();
    EXPECT_TRUE(hasAny(identifiers, document->toothModels()));
    EXPECT_FALSE(hasAny(identifiers, document->buttonModels()));
    for (std::uint64_t i = 0; i < 3; ++i)
        EXPECT_FALSE(identifiers.contains(elastic + i)) << i;

    for (int part = 0; part < scenePartCount; ++part)
        view->setShowsScenePart(static_cast<ScenePart>(part), true);
    EXPECT_TRUE(hasAny(seen(), document->bracketModels()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLSceneParts, anArchGoesWithAllOfItAndWithTheElasticsThatReachIt)
{
    view->setShowsScenePart(ScenePart::UpperArch, false);
    const auto identifiers = seen();
    for (const auto &models :
         {document->toothModels(), document->bracketModels(), document->buttonModels()}) {
        for (const auto &[key, model] : models) {
            if (std::stoi(key) <= 16) {
                EXPECT_FALSE(identifiers.contains(model->uniqueID())) << key;
            }
        }
    }
    EXPECT_TRUE(identifiers.contains(document->toothModels().at("25")->uniqueID()));
    EXPECT_FALSE(identifiers.contains(document->upperGumModel()->uniqueID()));
    EXPECT_TRUE(identifiers.contains(document->lowerGumModel()->uniqueID()));
    EXPECT_FALSE(identifiers.contains(elastic + 0)) << "on the upper arch";
    EXPECT_TRUE(identifiers.contains(elastic + 1)) << "on the lower arch";
    EXPECT_FALSE(identifiers.contains(elastic + 2)) << "from one to the other";
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLSceneParts, thePictureIsThatOfADocumentInWhichTheyAreHidden)
{
    view->setMouthOpenAngle(30.0f);
    const QImage all = view->grabImage();
    view->setShowsScenePart(ScenePart::Brackets, false);
    const QImage withoutBrackets = view->grabImage();
    EXPECT_NE(withoutBrackets, all);
    view->setShowsScenePart(ScenePart::Brackets, true);
    EXPECT_EQ(view->grabImage(), all);
    for (const auto &[key, bracket] : document->bracketModels())
        bracket->setHiddenPrimary(true);
    EXPECT_EQ(view->grabImage(), withoutBrackets);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLSceneParts, aPrintShowsEverything)
{
    const QImage before = view->printPicturesAtScale(1).front;
    view->setShowsScenePart(ScenePart::LowerArch, false);
    EXPECT_EQ(view->printPicturesAtScale(1).front, before);
    EXPECT_FALSE(view->showsScenePart(ScenePart::LowerArch));
    EXPECT_NO_GL_ERROR();
}

} // namespace
