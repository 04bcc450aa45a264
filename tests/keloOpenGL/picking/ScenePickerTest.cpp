#include "keloOpenGL/picking/ScenePicker.h"

#include "models/PickIdentifier.h"
#include "tests/models/GLFixture.h"

#include <cmath>

namespace {

using namespace kelo;

/// A scene of one square in the colour of identifier 0x010203, over x and y from 0 to 4.
class ScenePickerTest : public kelo::test::GLFixture
{
protected:
    PickedScene scene()
    {
        PickedScene picked;
        picked.size = {64, 64};
        picked.loadModelView = [] { glLoadIdentity(); };
        picked.draw = [this] {
            ++drawings;
            glColor3ub(1, 2, 3);
            glRectd(0.0, 0.0, 4.0, 4.0);
            showsSquare = picker.mayShow(boxFrom(0.0f), 0.0, identity());
            showsOther = picker.mayShow(boxFrom(-4.0f), 0.0, identity());
        };
        picked.redraw = [this] {
            ++redrawings;
            prepare();
        };
        return picked;
    }
    /// Four units along each axis from (low, low, 0) on.
    static Extents boxFrom(float low)
    {
        MutableExtents box;
        box.absorbPoint({low, low, 0.0f});
        box.absorbPoint({low + 3.5f, low + 3.5f, 0.0f});
        return box;
    }
    static Matrix identity()
    {
        Matrix matrix;
        Matrix_loadIdentity(&matrix);
        return matrix;
    }

    ScenePicker picker;
    int drawings = 0;
    int redrawings = 0;
    bool showsSquare = false;
    bool showsOther = false;
};

TEST_F(ScenePickerTest, aPointReadsTheIdentifierThatWasDrawnThere)
{
    EXPECT_EQ(picker.identifierAt({40.9, 40.0}, scene()), 0x010203u);
    EXPECT_EQ(picker.identifierAt({10.0, 10.0}, scene()), 0u);
    EXPECT_EQ(drawings, 2);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScenePickerTest, outsideNothingIsDrawn)
{
    for (const Point point : {Point{64.0, 10.0}, {10.0, 64.0}, {-1.0, 10.0}, {10.0, NAN}})
        EXPECT_EQ(picker.identifierAt(point, scene()), noPixelPickIdentifier);
    EXPECT_EQ(drawings, 0);
    EXPECT_EQ(picker.identifierAt({-0.5, 10.0}, scene()), 0u) << "cut to 0";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScenePickerTest, onlyWhatMayCoverThePixelMustBeDrawn)
{
    picker.identifierAt({40.0, 40.0}, scene());
    EXPECT_TRUE(showsSquare);
    EXPECT_FALSE(showsOther);
    EXPECT_TRUE(picker.mayShow(boxFrom(-4.0f), 0.0, identity())) << "the pick is over";
    picker.identifiers(scene());
    EXPECT_TRUE(showsSquare && showsOther) << "of all pixels none is left out";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScenePickerTest, allPixelsComeRowByRowFromTheBottom)
{
    const auto identifiers = picker.identifiers(scene());
    ASSERT_EQ(identifiers.size(), 64u * 64u);
    EXPECT_EQ(std::count(identifiers.begin(), identifiers.end(), 0x010203u), 16 * 16);
    EXPECT_EQ(identifiers[32 * 64 + 32], 0x010203u);
    EXPECT_EQ(identifiers[31 * 64 + 31], 0u);
    PickedScene empty = scene();
    empty.size = {0, 64};
    EXPECT_TRUE(picker.identifiers(empty).empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScenePickerTest, offScreenThePictureStaysAsItIs)
{
    ASSERT_TRUE(OffscreenTarget::isAvailable());
    picker.identifierAt({40.0, 40.0}, scene());
    EXPECT_EQ(pixelAt(2.0, 2.0), black);
    EXPECT_EQ(redrawings, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScenePickerTest, drawnOverThePictureItIsDrawnAgain)
{
    PickedScene onScreen = scene();
    onScreen.drawsOffScreen = false;
    EXPECT_EQ(picker.identifierAt({40.0, 40.0}, onScreen), 0x010203u);
    EXPECT_EQ(redrawings, 1);
    EXPECT_EQ(pixelAt(2.0, 2.0), black);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScenePickerTest, aDrawingThatThrowsEndsThePick)
{
    PickedScene throwing = scene();
    throwing.draw = [] { throw 1; };
    EXPECT_THROW(picker.identifierAt({40.0, 40.0}, throwing), int);
    EXPECT_TRUE(picker.mayShow(boxFrom(-4.0f), 0.0, identity()));
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_NO_GL_ERROR();
}

} // namespace
