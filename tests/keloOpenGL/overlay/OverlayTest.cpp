// The overlay and its labels without a view: drawn into a surface and read back.

#include "keloOpenGL/overlay/Overlay.h"

#include "platform/gl.h"

#include "keloOpenGL/view/SimpleTexture.h"
#include "keloOpenGL/view/StringTexture.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <vector>

namespace {

using namespace kelo;

constexpr int side = 200;

class OverlayTest : public kelo::test::ViewFixture
{
protected:
    OverlayTest() { view.openGLContext().makeCurrentContext(); }

    /// The pixels that the drawing changes, of black ones.
    int changedPixels(const std::vector<PlacedToothLabel> &labels = {})
    {
        glViewport(0, 0, side, side);
        glClearColor(0.0f, 0.5f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        overlay.draw(frame, labels, indices);
        std::vector<std::array<unsigned char, 4>> pixels(std::size_t{side} * side);
        glReadPixels(0, 0, side, side, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        return static_cast<int>(std::count_if(pixels.begin(), pixels.end(), [](const auto &pixel) {
            return pixel[0] != 0 || pixel[2] != 0 || pixel[1] < 120 || pixel[1] > 135;
        }));
    }

    static ToothLabelScene sceneWith(const std::vector<std::string> &texts)
    {
        ToothLabelScene scene;
        Matrix_loadIdentity(&scene.projection);
        Matrix_loadIdentity(&scene.lowerToEye);
        Matrix_rotate(&scene.lowerToEye, Vector3{1.0f, 0.0f, 0.0f}, -1.5707964f); // from the front
        scene.upperToEye = scene.lowerToEye;
        scene.lowerArch = scene.upperArch =
            Extents(Vector3{-0.9f, -0.5f, 0.0f}, Vector3{1.8f, 1.0f, 0.4f});
        scene.viewHeight = side;
        float x = -0.8f;
        for (const std::string &text : texts) {
            scene.teeth.push_back(
                {text, Extents(Vector3{x, -0.5f, 0.0f}, Vector3{0.2f, 0.2f, 0.4f}), true});
            x += 0.8f;
        }
        return scene;
    }

    OpenGLView view{Rect{{0.0, 0.0}, {side, side}}};
    StreamBuffer indices{StreamBuffer::Kind::Indices};
    OverlayFrame frame{1.0f, 0, true, std::nullopt};
    Overlay overlay;
};

TEST_F(OverlayTest, aNewOneDrawsNothing)
{
    EXPECT_EQ(changedPixels(), 0);
    EXPECT_EQ(overlay.toolAt({0.8, 0.8}, frame), nullptr);
    EXPECT_EQ(overlay.toolRect(OverlayToolID::Print, 1.0f), Rect());
    EXPECT_NO_GL_ERROR();
}

TEST_F(OverlayTest, theToolsAreThereWithTheirPictures)
{
    overlay.loadPictures();
    for (const OverlayTool &tool : overlayTools()) {
        EXPECT_NE(overlay.picture(tool.id, false), nullptr) << tool.name;
        const Rect rect = overlay.toolRect(tool.id, 1.0f);
        const Point middle{rect.origin.x + rect.size.width / 2,
                           rect.origin.y + rect.size.height / 2};
        EXPECT_EQ(overlay.toolAt(middle, frame), &tool) << tool.name;
    }
    const int all = changedPixels();
    frame.mayEdit = false;
    const int printOnly = changedPixels();
    EXPECT_GT(printOnly, 0);
    EXPECT_GT(all, 2 * printOnly);
    EXPECT_NO_GL_ERROR();
}

TEST_F(OverlayTest, afterALostContextPicturesAndLabelAreMadeAgain)
{
    overlay.loadPictures();
    overlay.dateLabel().setTexture(DateLabel::textureOf("Today"));
    const int before = changedPixels();
    const auto label = overlay.dateLabel().texture();
    const auto printer = overlay.picture(OverlayToolID::Print, false);
    overlay.reloadAfterLostContext();
    EXPECT_EQ(overlay.dateLabel().texture(), label) << "nothing was lost";
    overlay.noteLostContext();
    EXPECT_EQ(overlay.picture(OverlayToolID::Print, false), printer) << "until they are reloaded";
    overlay.reloadAfterLostContext();
    EXPECT_NE(overlay.dateLabel().texture(), label);
    EXPECT_EQ(overlay.dateLabel().texture()->text(), "Today");
    EXPECT_NE(overlay.picture(OverlayToolID::Print, false), printer);
    EXPECT_EQ(changedPixels(), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(OverlayTest, aDateLabelIsOpaqueWhiteTextOf36Points)
{
    const auto texture = DateLabel::textureOf("Today");
    EXPECT_EQ(texture->text(), "Today");
    EXPECT_EQ(texture->string().attributes, (TextAttributes{Color::whiteColor(), 36.0}));
    EXPECT_EQ(texture->textColor(), Color::whiteColor());
    EXPECT_EQ(texture->boxColor(), (Color{0.0, 0.0, 0.0, 0.0}));
    EXPECT_EQ(texture->borderColor(), (Color{0.0, 0.0, 0.0, 0.0}));
    DateLabel none;
    none.renewTexture();
    none.draw();
    EXPECT_EQ(none.texture(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(OverlayTest, aFrameWithoutWidthOrHeightHasNoArea)
{
    EXPECT_TRUE(frame.hasArea());
    for (const float aspect : {0.0f, -1.0f, std::numeric_limits<float>::infinity(),
                               std::numeric_limits<float>::quiet_NaN()})
        EXPECT_FALSE((OverlayFrame{aspect, 0, false, std::nullopt}.hasArea())) << aspect;
}

TEST_F(OverlayTest, labelsOfTeethAreThirteenPointsHighAndDrawn)
{
    const auto placed = overlay.toothLabels().placedIn(sceneWith({"8", "9"}));
    ASSERT_EQ(placed.size(), 2u);
    EXPECT_EQ(placed[0].text, "8");
    EXPECT_NEAR(placed[0].rect.origin.x + placed[0].rect.size.width / 2, -0.7, 1e-6);
    EXPECT_NEAR(placed[0].rect.origin.y + placed[0].rect.size.height / 2, 0.4, 1e-6);
    // 13 points of text need some room above and below, in a view of 200 points for 2 units.
    EXPECT_GT(placed[0].rect.size.height, 13 * 2.0 / side);
    EXPECT_LT(placed[0].rect.size.height, 26 * 2.0 / side);
    EXPECT_GT(changedPixels(placed), 100);
    overlay.toothLabels().dropPictures();
    EXPECT_GT(changedPixels(placed), 100) << "they are made again";
    EXPECT_NO_GL_ERROR();
}

TEST_F(OverlayTest, ofLabelsThatCoverEachOtherOneIsPlaced)
{
    ToothLabelScene scene = sceneWith({"8", "9"});
    scene.teeth[1].tooth = scene.teeth[0].tooth;
    EXPECT_EQ(overlay.toothLabels().placedIn(scene).size(), 1u);
    EXPECT_TRUE(overlay.toothLabels().placedIn(sceneWith({})).empty());
    EXPECT_NO_GL_ERROR();
}

} // namespace
