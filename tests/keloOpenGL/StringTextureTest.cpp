#include "tests/keloOpenGL/TextureFixture.h"

#include "keloOpenGL/view/StringTexture.h"

namespace {

using namespace kelo;
using kelo::test::stateOf;
using kelo::test::texelsOf;
using kelo::test::textureParameter;

constexpr Color white{1.0, 1.0, 1.0, 1.0};
constexpr Color transparentWhite{1.0, 1.0, 1.0, 0.0};
constexpr Color red{1.0, 0.0, 0.0, 1.0};

TextAttributes attributesWith(const Color &color, double pointSize = 20.0)
{
    TextAttributes attributes;
    attributes.foregroundColor = color;
    attributes.pointSize = pointSize;
    return attributes;
}

class StringTextureOfAText : public kelo::test::TextureFixture
{
protected:
    StringTexture texture{"L", attributesWith(white)};

    QImage drawn(StringTexture &drawnTexture)
    {
        return drawnPicture([&drawnTexture] {
            const Size size = drawnTexture.texSize();
            glEnable(GL_TEXTURE_RECTANGLE);
            drawnTexture.drawWithBounds({{4.0, 40.0}, {size.width, -size.height}});
            glDisable(GL_TEXTURE_RECTANGLE);
        });
    }
};

TEST_F(StringTextureOfAText, isNotGeneratedBeforeItIsAskedFor)
{
    EXPECT_EQ(texture.texName(), 0u);
    EXPECT_EQ(texture.text(), "L");
    EXPECT_FALSE(texture.staticFrame());
    EXPECT_EQ(texture.marginSize(), (Size{4.0, 2.0}));
}

TEST_F(StringTextureOfAText, theSizeOfAFreshObjectGeneratesTheTexture)
{
    const Size size = texture.texSize();
    EXPECT_NE(texture.texName(), 0u);
    EXPECT_GT(size.width, 0.0);
    EXPECT_GT(size.height, 0.0);
    const QImage texels = texelsOf(texture.texName());
    EXPECT_EQ(texels.width(), size.width);
    EXPECT_EQ(texels.height(), size.height);
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, anEmptyStringGivesATextureOfZeroByZero)
{
    StringTexture empty("", attributesWith(white));
    EXPECT_EQ(empty.texSize(), (Size{0.0, 0.0}));
    EXPECT_NE(empty.texName(), 0u);
    EXPECT_TRUE(texelsOf(empty.texName()).isNull());
    EXPECT_EQ(empty.frameSize(), (Size{8.0, 4.0})); // nothing but the margins
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, itsSizeIsTheTextsRoundedOutwards)
{
    // The frame is the text's size with 4 and 2 on each side.
    for (const double pointSize : {11.0, 17.0, 23.0, 36.0}) {
        StringTexture text("Today, 20.11.2026", attributesWith(white, pointSize));
        const Size exact{text.frameSize().width - 8.0, text.frameSize().height - 4.0};
        EXPECT_GE(text.texSize().width, exact.width);
        EXPECT_LT(text.texSize().width, exact.width + 1.0);
        EXPECT_GE(text.texSize().height, exact.height);
        EXPECT_LT(text.texSize().height, exact.height + 1.0);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, filtersLinearlyAndLeavesTheWrappingAtItsDefault)
{
    std::uint32_t fresh = 0;
    glGenTextures(1, &fresh);
    glBindTexture(GL_TEXTURE_RECTANGLE, fresh);
    const GLint wrapS = textureParameter(GL_TEXTURE_WRAP_S);
    const GLint wrapT = textureParameter(GL_TEXTURE_WRAP_T);
    glDeleteTextures(1, &fresh);

    texture.genTexture();
    glBindTexture(GL_TEXTURE_RECTANGLE, texture.texName());
    EXPECT_EQ(textureParameter(GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(textureParameter(GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    EXPECT_EQ(textureParameter(GL_TEXTURE_WRAP_S), wrapS);
    EXPECT_EQ(textureParameter(GL_TEXTURE_WRAP_T), wrapT);
    GLint format = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
    EXPECT_EQ(format, GL_RGBA8);
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, generatingEnablesTheTargetAndDrawingLeavesItAlone)
{
    glDisable(GL_TEXTURE_RECTANGLE);
    texture.genTexture();
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_RECTANGLE));
    glDisable(GL_TEXTURE_RECTANGLE);
    texture.drawWithBounds({{0.0, 0.0}, {1.0, 1.0}});
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_RECTANGLE));
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_RECTANGLE), static_cast<GLint>(texture.texName()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, theForegroundColourIsTheInksMultipliedByItsAlpha)
{
    StringTexture text("L", attributesWith(red));
    text.genTexture();
    const QImage texels = texelsOf(text.texName());
    int strongest = 0;
    int transparent = 0;
    for (int y = 0; y < texels.height(); ++y) {
        for (int x = 0; x < texels.width(); ++x) {
            const uchar *byte = texels.constScanLine(y) + 4 * x;
            ASSERT_EQ(byte[0], byte[3]) << x << ", " << y;
            ASSERT_EQ(byte[1], 0) << x << ", " << y;
            ASSERT_EQ(byte[2], 0) << x << ", " << y;
            strongest = std::max<int>(strongest, byte[3]);
            transparent += byte[3] == 0;
        }
    }
    EXPECT_EQ(strongest, 255);
    EXPECT_GT(transparent, texels.width() * texels.height() / 3);
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, theTextBoxAndBorderColoursDoNotEnterThePicture)
{
    StringTexture colored("L", attributesWith(white), red, red, red);
    texture.genTexture();
    colored.genTexture();
    EXPECT_EQ(texelsOf(colored.texName()), texelsOf(texture.texName()));
    EXPECT_EQ(colored.textColor(), red);
    EXPECT_EQ(colored.boxColor(), red);
    EXPECT_EQ(colored.borderColor(), red);
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, theShortFormsTakeAWhiteTextAndATransparentBoxAndBorder)
{
    const StringTexture ofString(AttributedString{"L", attributesWith(red)});
    for (const StringTexture *each : std::vector<const StringTexture *>{&texture, &ofString}) {
        EXPECT_EQ(each->textColor(), white);
        EXPECT_EQ(each->boxColor(), transparentWhite);
        EXPECT_EQ(each->borderColor(), transparentWhite);
    }
}

/// The letter L has ink at the left and below, none in its upper right part.
TEST_F(StringTextureOfAText, aNegativeHeightDrawsTheTextUprightAndUnmirrored)
{
    StringTexture letter("L", attributesWith(white, 30.0));
    const QImage picture = drawn(letter);
    QRect ink;
    const auto isInk = [&picture](int x, int y) { return picture.pixelColor(x, y).red() > 128; };
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            if (isInk(x, y)) ink |= QRect(x, y, 1, 1);
    }
    ASSERT_GT(ink.width(), 6);
    ASSERT_GT(ink.height(), 12);
    EXPECT_TRUE(isInk(ink.left() + 1, ink.top() + 1));
    EXPECT_TRUE(isInk(ink.left() + 1, ink.bottom() - 1));
    EXPECT_TRUE(isInk(ink.right() - 1, ink.bottom() - 1));
    EXPECT_FALSE(isInk(ink.right() - 1, ink.top() + 1));
    EXPECT_FALSE(isInk(ink.right() - 1, ink.center().y()));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, drawingAtAPointTakesTheTexturesOwnSize)
{
    const QImage picture = drawnPicture([this] {
        texture.drawAtPoint({10.0, 5.0}); // generates the texture, and so enables the target
        glDisable(GL_TEXTURE_RECTANGLE);
    });
    const QImage texels = texelsOf(texture.texName());
    ASSERT_LE(texels.height(), 40);
    for (int row = 0; row < texels.height(); ++row) {
        for (int x = 0; x < texels.width(); ++x) {
            const int drawnRow = viewHeight - 1 - (5 + row); // y counts upwards
            ASSERT_NEAR(picture.pixelColor(10 + x, drawnRow).red(),
                        texels.constScanLine(row)[4 * x], 1)
                << x << ", " << row;
        }
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, anotherStringAfterTheFirstDrawDoesNotChangeTheDrawnText)
{
    const QImage before = drawn(texture);
    const std::uint32_t name = texture.texName();
    const Size size = texture.texSize();
    texture.setString_withAttributes("Something else", attributesWith(red, 30.0));
    EXPECT_EQ(texture.text(), "Something else");
    EXPECT_EQ(texture.texName(), name);
    EXPECT_EQ(texture.texSize(), size);
    EXPECT_EQ(drawn(texture), before);
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, coloursMarginsAndFramesKeepTheTextureToo)
{
    texture.genTexture();
    const std::uint32_t name = texture.texName();
    texture.setTextColor(red);
    texture.setBoxColor(std::nullopt);
    texture.setBorderColor(red);
    texture.setMargins({10.0, 20.0});
    texture.useStaticFrame({100.0, 50.0});
    texture.useDynamicFrame();
    EXPECT_EQ(texture.texName(), name);
    EXPECT_TRUE(glIsTexture(name));
    EXPECT_EQ(texture.textColor(), red);
    EXPECT_EQ(texture.boxColor(), std::nullopt);
    EXPECT_EQ(texture.borderColor(), red);
    EXPECT_EQ(texture.marginSize(), (Size{10.0, 20.0}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, itsNameStaysWhenTheObjectGoes)
{
    std::uint32_t name = 0;
    {
        StringTexture shortLived("L", attributesWith(white));
        shortLived.genTexture();
        name = shortLived.texName();
    }
    EXPECT_TRUE(glIsTexture(name));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, aStringSetBeforeTheFirstDrawIsTheOneDrawn)
{
    StringTexture other("W", attributesWith(white));
    other.setString({"L", attributesWith(white)});
    EXPECT_EQ(drawn(other), drawn(texture));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, theMarginsCountOnEachSideOfTheFrame)
{
    const Size with4And2 = texture.frameSize();
    texture.setMargins({10.0, 20.0});
    EXPECT_DOUBLE_EQ(texture.frameSize().width, with4And2.width + 12.0);
    EXPECT_DOUBLE_EQ(texture.frameSize().height, with4And2.height + 36.0);
}

TEST_F(StringTextureOfAText, aDynamicFrameFollowsTheString)
{
    const Size ofL = texture.frameSize();
    texture.setString_withAttributes("LLLL", attributesWith(white));
    EXPECT_GT(texture.frameSize().width, 2.0 * ofL.width - 8.0);
    EXPECT_DOUBLE_EQ(texture.frameSize().height, ofL.height);
}

TEST_F(StringTextureOfAText, aStaticFrameKeepsItsSizeWhateverTheStringAndTheMarginsAre)
{
    texture.useStaticFrame({100.0, 50.0});
    EXPECT_TRUE(texture.staticFrame());
    texture.setString_withAttributes("Another text", attributesWith(white));
    EXPECT_EQ(texture.frameSize(), (Size{100.0, 50.0}));
    texture.setMargins({40.0, 30.0});
    EXPECT_EQ(texture.frameSize(), (Size{100.0, 50.0}));
}

TEST_F(StringTextureOfAText, aStaticFrameWithoutExtentStaysSo)
{
    texture.useStaticFrame({0.0, 0.0});
    EXPECT_EQ(texture.frameSize(), (Size{0.0, 0.0}));
}

TEST_F(StringTextureOfAText, aDynamicFrameComesBackFromAStaticOne)
{
    const Size dynamic = texture.frameSize();
    texture.useStaticFrame({100.0, 50.0});
    texture.useDynamicFrame();
    EXPECT_FALSE(texture.staticFrame());
    EXPECT_EQ(texture.frameSize(), dynamic);
}

TEST_F(StringTextureOfAText, askingADynamicFrameToBeDynamicDoesNothing)
{
    texture.genTexture();
    const std::uint32_t name = texture.texName();
    const Size frame = texture.frameSize();
    texture.useDynamicFrame();
    EXPECT_FALSE(texture.staticFrame());
    EXPECT_EQ(texture.texName(), name);
    EXPECT_EQ(texture.frameSize(), frame);
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, withoutACurrentContextNothingIsGeneratedOrDrawn)
{
    view.loseContext();
    ASSERT_EQ(OpenGLContext::currentContext(), nullptr);
    EXPECT_EQ(texture.texSize(), (Size{0.0, 0.0}));
    texture.drawWithBounds({{0.0, 0.0}, {10.0, 10.0}});
    texture.drawAtPoint({0.0, 0.0});
    EXPECT_EQ(texture.texName(), 0u);
    ASSERT_TRUE(view.openGLContext().makeCurrentContext());
    EXPECT_GT(texture.texSize().width, 0.0) << "a later context serves";
    EXPECT_NO_GL_ERROR();
}

TEST_F(StringTextureOfAText, textInAnyScriptTakesRoom)
{
    StringTexture umlauts("Ä Ö Ü", attributesWith(white));
    StringTexture letters("A O U", attributesWith(white));
    EXPECT_EQ(umlauts.texSize(), letters.texSize()); // not twice as many letters
    EXPECT_NO_GL_ERROR();
}

} // namespace
