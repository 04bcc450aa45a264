#include "keloOpenGL/view/PartialFrames.h"

#include "keloOpenGL/view/CurrentProjection.h"
#include "tests/models/GLFixture.h"

namespace {

using namespace kelo;
using kelo::test::Pixel;

class PartialFramesTest : public kelo::test::GLFixture
{
protected:
    /// A frame in one colour, whose later frames differ in 8 by 8 pixels from (32, 32) on.
    void drawFrame(const Pixel &color, std::uint64_t redrawRequests = 0, bool mayBePartial = true)
    {
        frames.begin(redrawRequests, mayBePartial);
        isPartial = !frames.mayShow(boxAt(-6.0f), 0.0, identity());
        glClearColor(color[0] / 255.0f, color[1] / 255.0f, color[2] / 255.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        frames.end({64, 64}, [this]() -> std::optional<FramePart> {
            if (!partIsKnown) return std::nullopt;
            return FramePart{{32, 32, 8, 8}, currentWindowProjection()};
        });
    }
    /// As a swap of buffers may leave it.
    static void losePicture()
    {
        glClearColor(1.0f, 0.0f, 1.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    static Extents boxAt(float low)
    {
        MutableExtents box;
        box.absorbPoint({low, low, 0.0f});
        box.absorbPoint({low + 1.0f, low + 1.0f, 0.0f});
        return box;
    }
    static Matrix identity()
    {
        Matrix matrix;
        Matrix_loadIdentity(&matrix);
        return matrix;
    }

    PartialFrames frames;
    bool isPartial = false;
    bool partIsKnown = true;
    static constexpr Pixel red{255, 0, 0};
    static constexpr Pixel green{0, 255, 0};
};

TEST_F(PartialFramesTest, laterFramesAreTheFirstOneWithThePartDrawnAnew)
{
    drawFrame(red);
    EXPECT_FALSE(isPartial);
    losePicture();
    drawFrame(green);
    EXPECT_TRUE(isPartial);
    EXPECT_EQ(pixelAt(1.0, 1.0), green);
    EXPECT_EQ(pixelAt(-4.0, -4.0), red);
    EXPECT_EQ(pixelAt(2.5, 2.5), red) << "just beside the part";
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_TRUE(frames.mayShow(boxAt(-6.0f), 0.0, identity())) << "between two frames";
    EXPECT_NO_GL_ERROR();
}

TEST_F(PartialFramesTest, inAPartOnlyWhatMayBeSeenThereIsShown)
{
    drawFrame(red);
    frames.begin(0, true);
    EXPECT_TRUE(frames.mayShow(boxAt(0.5f), 0.0, identity()));
    EXPECT_FALSE(frames.mayShow(boxAt(-6.0f), 0.0, identity()));
    frames.end({64, 64}, [] { return std::nullopt; });
    EXPECT_NO_GL_ERROR();
}

TEST_F(PartialFramesTest, aRedrawThatWasRequestedMakesTheNextFrameWhole)
{
    drawFrame(red);
    drawFrame(green, 1);
    EXPECT_FALSE(isPartial);
    EXPECT_EQ(pixelAt(-4.0, -4.0), green);
    drawFrame(red, 1);
    EXPECT_TRUE(isPartial) << "the picture of the new whole frame is kept";
    EXPECT_EQ(pixelAt(-4.0, -4.0), green);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PartialFramesTest, whatMustBeWholeIsDrawnWhole)
{
    drawFrame(red);
    drawFrame(green, 0, false);
    EXPECT_FALSE(isPartial);
    EXPECT_EQ(pixelAt(-4.0, -4.0), green);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PartialFramesTest, withoutAKnownPartEveryFrameIsWhole)
{
    partIsKnown = false;
    drawFrame(red);
    drawFrame(green);
    EXPECT_FALSE(isPartial);
    EXPECT_EQ(pixelAt(-4.0, -4.0), green);
    EXPECT_NO_GL_ERROR();
}

} // namespace
