// The frames of a pulse draw only what the pulsing model may cover, and are the same pictures.

#include "platform/gl.h"

#include "tests/keloOpenGL/treatment/ElasticFixture.h"

#include <functional>
#include <vector>

namespace {

using namespace kelo;
using namespace kelo::test;

/// Sixteen bits a colour, for buffers may have more than eight.
using Pixels = std::vector<unsigned short>;

/// Keeps the picture of every frame, and how many models were left out of it.
class FilmingView : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;

    struct Frame
    {
        Pixels pixels;
        int modelsLeftOut = 0;
    };

    void drawRect(const Rect &dirtyRect) override
    {
        if (beforeFrame) beforeFrame(frames.size());
        DXOpenGL::drawRect(dirtyRect);
        if (!losesPictures) return;
        // As a swap of buffers may leave it.
        glClearColor(1.0f, 0.0f, 1.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }

    std::vector<Frame> frames;
    bool drawsWholeFrames = false;
    bool losesPictures = false;
    std::function<void(std::size_t index)> beforeFrame;

protected:
    void willDrawPicture() override
    {
        modelsLeftOut_ = 0;
        if (!drawsWholeFrames) DXOpenGL::willDrawPicture();
    }
    void didDrawPicture() override
    {
        DXOpenGL::didDrawPicture();
        const PixelSize size = deviceSize();
        Frame frame{Pixels(3u * size.width * size.height), modelsLeftOut_};
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, size.width, size.height, GL_RGB, GL_UNSIGNED_SHORT, frame.pixels.data());
        frames.push_back(std::move(frame));
    }
    bool mayBeSeen(const DXGLightweightModel &model, const Matrix &jawTransform) const override
    {
        const bool seen = DXOpenGL::mayBeSeen(model, jawTransform);
        if (!seen) ++modelsLeftOut_;
        return seen;
    }

private:
    mutable int modelsLeftOut_ = 0;
};

struct Scene
{
    const char *name;
    std::string pulsing;
    std::function<void(FilmingView &, DXDocumentModel &)> set;
};

void PrintTo(const Scene &scene, std::ostream *stream)
{
    *stream << scene.name;
}

class PulsePicture : public ViewFixture, public testing::WithParamInterface<Scene>
{
protected:
    std::shared_ptr<FilmingView> viewOf(const Scene &scene)
    {
        auto view = makeView<FilmingView>(Rect{{0.0, 0.0}, {401.0, 299.0}});
        const auto document = boxDocument();
        for (const auto *models : {&document->bracketModels(), &document->buttonModels()}) {
            for (const auto &[key, model] : *models)
                model->setMaterial(HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0}));
        }
        auto size = std::make_shared<ElasticsSizeType>();
        size->typeID = 1;
        size->elasticsColor = {0.0, 1.0, 0.0, 1.0};
        document->setAvailableElasticsSizeTypes({{1, size}});
        const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
        view->setCurrentDate(today);
        view->setDisplayedDate(today);
        view->setDocumentModel(document);
        scene.set(*view, *document);
        return view;
    }
    std::vector<FilmingView::Frame> film(const Scene &scene, bool inParts, bool losesPictures)
    {
        const auto view = viewOf(scene);
        view->drawsWholeFrames = !inParts;
        view->losesPictures = losesPictures;
        view->signalElasticsPlacement(scene.pulsing);
        EXPECT_NO_GL_ERROR();
        EXPECT_EQ(glIsEnabled(GL_SCISSOR_TEST), GL_FALSE);
        return view->frames;
    }
};

void placeElastics(DXDocumentModel &document)
{
    const auto &size = document.availableElasticsSizeTypes().at(1);
    for (const std::vector<std::string> &keys :
         std::vector<std::vector<std::string>>{{"8", "9", "25"}, {"3", "30"}})
        document.placeElasticModel(std::make_shared<ElasticModel>(nullptr, size, keys));
}

const Scene scenes[]{
    {"bracket", "8", [](FilmingView &, DXDocumentModel &) {}},
    {"lowerBracket", "25", [](FilmingView &, DXDocumentModel &) {}},
    {"button", "8l",
     [](FilmingView &view, DXDocumentModel &) {
         view.setWorldRotationAngle_axis(90.0, 1.0, 0.0, 0.0);
     }},
    {"elastics", "8", [](FilmingView &, DXDocumentModel &document) { placeElastics(document); }},
    {"openMouthTurned", "25",
     [](FilmingView &view, DXDocumentModel &document) {
         placeElastics(document);
         view.setMouthOpenAngle(30.0f);
         view.rotateByDegrees(25.0f);
     }},
    {"labels", "8",
     [](FilmingView &view, DXDocumentModel &) {
         view.setToothLabels({{"7", "7"}, {"8", "8"}, {"9", "9"}});
     }},
    {"zoomedIn", "9",
     [](FilmingView &view, DXDocumentModel &) {
         view.setZoomData(HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(0.0, 2.0, 0.0, 2.0));
     }},
    {"outsideTheView", "2",
     [](FilmingView &view, DXDocumentModel &) {
         view.setZoomData(HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(10.0, 12.0, 0.0, 2.0));
     }},
    {"twoPixelsAPoint", "8",
     [](FilmingView &view, DXDocumentModel &) { view.setSurfacelessScaleFactor(2.0); }},
    {"aToothWithoutAMaterial", "8",
     [](FilmingView &, DXDocumentModel &document) {
         document.toothModels().at("9")->setMaterial(nullptr);
         document.toothModels().at("8")->setMaterial(nullptr);
     }},
};

TEST_P(PulsePicture, itsFramesAreThoseThatAreDrawnWhole)
{
    const auto whole = film(GetParam(), false, false);
    ASSERT_EQ(whole.size(), 20u);
    for (const bool losesPictures : {false, true}) {
        const auto parts = film(GetParam(), true, losesPictures);
        ASSERT_EQ(parts.size(), 20u);
        EXPECT_EQ(whole[0].modelsLeftOut, 0);
        EXPECT_EQ(parts[0].modelsLeftOut, 0) << "the first frame is whole";
        for (std::size_t i = 0; i < 20; ++i) {
            EXPECT_TRUE(parts[i].pixels == whole[i].pixels) << "frame " << i;
            if (i == 0) continue;
            EXPECT_GT(parts[i].modelsLeftOut, 20) << "frame " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scene, PulsePicture, testing::ValuesIn(scenes),
                         [](const auto &scene) { return std::string(scene.param.name); });

class PulsePictures : public PulsePicture
{};

TEST_F(PulsePictures, theModelLooksDifferentFromFrameToFrame)
{
    const auto frames = film(scenes[0], true, false);
    ASSERT_EQ(frames.size(), 20u);
    EXPECT_FALSE(frames[0].pixels == frames[9].pixels) << "else equal frames prove nothing";
}

TEST_F(PulsePictures, aChangeMeanwhileDrawsTheNextFrameWhole)
{
    const auto view = viewOf(scenes[0]);
    view->beforeFrame = [&view](std::size_t index) {
        if (index == 5) view->setMouthOpenAngle(20.0f);
    };
    view->signalElasticsPlacement("8");
    ASSERT_EQ(view->frames.size(), 20u);
    for (const std::size_t partly : {1u, 4u, 6u, 19u})
        EXPECT_GT(view->frames[partly].modelsLeftOut, 20) << partly;
    EXPECT_EQ(view->frames[5].modelsLeftOut, 0);
    EXPECT_FALSE(view->frames[5].pixels == view->frames[4].pixels);
    const auto last = view->frames.back().pixels;
    // The last step is the model's own shininess again.
    view->beforeFrame = nullptr;
    view->display();
    EXPECT_TRUE(view->frames.back().pixels == last);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PulsePictures, anotherSizeMeanwhileIsDrawnWhole)
{
    const auto view = viewOf(scenes[0]);
    view->beforeFrame = [&view](std::size_t index) {
        if (index == 3) view->setFrameSize({300.0, 200.0});
    };
    view->signalElasticsPlacement("8");
    ASSERT_EQ(view->frames.size(), 20u);
    const auto last = view->frames.back().pixels;
    view->beforeFrame = nullptr;
    view->display();
    EXPECT_TRUE(view->frames.back().pixels == last);
    EXPECT_NO_GL_ERROR();
}

} // namespace
