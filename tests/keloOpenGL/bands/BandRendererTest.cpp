#include "keloOpenGL/bands/BandRenderer.h"

#include "platform/gl.h"

#include "keloOpenGL/view/OffscreenTarget.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/CapturedOutput.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace {

using namespace kelo;

using BandPixel = std::array<GLubyte, 3>;

bool showsAll(const Extents &, double)
{
    return true;
}

/// 80 x 80 mm of the scene, seen along z, a pixel a millimetre.
class BandRendererTest : public kelo::test::ViewFixture
{
protected:
    BandRendererTest()
    {
        Matrix_loadIdentity(&jaws.upperTransform);
        Matrix_loadIdentity(&jaws.lowerTransform);
        prepare();
    }

    void prepare()
    {
        view.openGLContext().makeCurrentContext();
        EXPECT_TRUE(target.bind({80, 80}, {GL_RGBA8, GL_DEPTH_COMPONENT24}));
        glViewport(0, 0, 80, 80);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-40.0, 40.0, -40.0, 40.0, -40.0, 40.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }

    std::vector<BandPixel> pixels() const
    {
        std::vector<BandPixel> read(80 * 80);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, 80, 80, GL_RGB, GL_UNSIGNED_BYTE, read.data());
        return read;
    }

    std::ptrdiff_t pixelsOf(const BandPixel &color) const
    {
        const auto read = pixels();
        return std::count(read.begin(), read.end(), color);
    }

    OpenGLView view{Rect{{0.0, 0.0}, {20.0, 10.0}}};
    OffscreenTarget target;
    const std::vector<std::string> keys{"6", "11"};
    BandJaws jaws;
    StreamBuffer indices{StreamBuffer::Kind::Indices};
    BandRenderer renderer;
};

TEST_F(BandRendererTest, inAPickABandHasTheFlatColourOfItsNumber)
{
    renderer.draw({keys, true, Color::whiteColor(), 0x107}, jaws, showsAll, indices);
    // The hooks are 33 mm apart, and a band is 1 mm thick.
    EXPECT_GT(pixelsOf({128, 0, 7}), 20);
    EXPECT_EQ(pixelsOf({128, 0, 7}) + pixelsOf({0, 0, 0}), 80 * 80);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandRendererTest, otherwiseItHasAMaterialOfItsColour)
{
    renderer.draw({keys, true, Color(0.0, 1.0, 0.0, 1.0), std::nullopt}, jaws, showsAll, indices);
    GLfloat diffuse[4] = {};
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    EXPECT_EQ(diffuse[0], 0.0f);
    EXPECT_EQ(diffuse[1], 1.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandRendererTest, aBandMovesWithItsJaw)
{
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsAll, indices);
    const auto before = pixels();
    prepare();
    jaws.lowerTransform = Matrix_translated(jaws.lowerTransform, 0.0f, 5.0f, 0.0f);
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsAll, indices);
    EXPECT_EQ(pixels(), before) << "the keys are the upper jaw's";
    prepare();
    jaws.upperTransform = Matrix_translated(jaws.upperTransform, 0.0f, 5.0f, 0.0f);
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsAll, indices);
    auto raised = before;
    std::rotate(raised.begin(), raised.end() - 5 * 80, raised.end());
    EXPECT_EQ(pixels(), raised);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandRendererTest, aBandThatCannotBeSeenIsNotDrawn)
{
    std::vector<double> margins;
    const auto showsNothing = [&margins](const Extents &, double margin) {
        margins.push_back(margin);
        return false;
    };
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsNothing, indices);
    EXPECT_EQ(margins, (std::vector<double>{1.5}));
    EXPECT_EQ(pixelsOf({0, 0, 0}), 80 * 80);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandRendererTest, aKeyWithoutAHookIsToldAndNothingIsDrawn)
{
    const std::vector<std::string> unknown{"6", "1"};
    const std::string told = kelo::test::standardErrorOf([&] {
        renderer.draw({unknown, true, std::nullopt, 0}, jaws, showsAll, indices);
    });
    EXPECT_EQ(told, "Hook position for bracket \"1\" not defined; cannot draw elastics (check the "
                    "bracket names passed -loadBracketModelFiles:; should be @\"2\" - @\"15\" and "
                    "@\"18\" - @\"31\")\n");
    EXPECT_EQ(pixelsOf({0, 0, 0}), 80 * 80);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandRendererTest, othersMayFillTheIndicesInBetween)
{
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsAll, indices);
    const auto before = pixels();
    prepare();
    indices.bind();
    ASSERT_NE(indices.mapNew<std::uint32_t>(4), nullptr);
    EXPECT_TRUE(indices.unmap());
    indices.unbind();
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsAll, indices);
    EXPECT_EQ(pixels(), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandRendererTest, afterALostContextItDrawsInTheNextOne)
{
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsAll, indices);
    const auto before = pixels();
    view.loseContext();
    prepare();
    renderer.draw({keys, true, std::nullopt, 0}, jaws, showsAll, indices);
    EXPECT_EQ(pixels(), before);
    EXPECT_NO_GL_ERROR();
}

} // namespace
