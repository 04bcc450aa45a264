#include "tests/keloOpenGL/TextureFixture.h"

#include "keloOpenGL/view/SimpleTexture.h"
#include "tests/support/CapturedOutput.h"

#include <QFile>

namespace {

using namespace kelo;
using kelo::test::stateOf;
using kelo::test::texelsOf;
using kelo::test::textureParameter;

/// 30 x 20 pixels; its quarters are red, green (upper), blue, and a half transparent yellow
/// (lower right).
QImage fourQuarters()
{
    QImage picture(30, 20, QImage::Format_RGBA8888);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 30; ++x) {
            const bool right = x >= 15;
            const bool lower = y >= 10;
            const QColor color = lower ? (right ? QColor(255, 255, 0, 128) : QColor(0, 0, 255))
                                       : (right ? QColor(0, 255, 0) : QColor(255, 0, 0));
            picture.setPixelColor(x, y, color);
        }
    }
    return picture;
}

/// Draws the bound picture upright: its upper left corner at (left, top), one point a texel.
void drawUpright(float left, float top, float width, float height)
{
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, height);
    glVertex2f(left, top - height);
    glTexCoord2f(width, height);
    glVertex2f(left + width, top - height);
    glTexCoord2f(width, 0.0f);
    glVertex2f(left + width, top);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(left, top);
    glEnd();
}

class SimpleTextureOfAFile : public kelo::test::TextureFixture
{
protected:
    std::string path = savedPicture(fourQuarters(), "quarters.png");

    /// The name that the texture is bound by.
    static std::uint32_t nameOf(const SimpleTexture &texture)
    {
        texture.bind();
        const auto name = static_cast<std::uint32_t>(stateOf(GL_TEXTURE_BINDING_RECTANGLE));
        SimpleTexture::unbind();
        return name;
    }
};

TEST_F(SimpleTextureOfAFile, hasTheFilesSizeInPixelsWhateverItIs)
{
    const auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->width(), 30u);
    EXPECT_EQ(texture->height(), 20u);
    EXPECT_EQ(texelsOf(nameOf(*texture)).size(), QSize(30, 20));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, clampsToTheEdgesAndFiltersLinearly)
{
    const auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    texture->bind();
    EXPECT_EQ(textureParameter(GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(textureParameter(GL_TEXTURE_WRAP_T), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(textureParameter(GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(textureParameter(GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    SimpleTexture::unbind();
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, keepsEightBitsAChannel)
{
    const auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    texture->bind();
    GLint format = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
    EXPECT_EQ(format, GL_RGBA8);
    SimpleTexture::unbind();
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, holdsTheTopRowFirstAndItsColoursMultipliedByAlpha)
{
    const auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    const QImage texels = texelsOf(nameOf(*texture));
    const auto bytesAt = [&texels](int x, int y) {
        const uchar *byte = texels.constScanLine(y) + 4 * x;
        return std::array<int, 4>{byte[0], byte[1], byte[2], byte[3]};
    };
    EXPECT_EQ(bytesAt(2, 2), (std::array<int, 4>{255, 0, 0, 255}));
    EXPECT_EQ(bytesAt(27, 2), (std::array<int, 4>{0, 255, 0, 255}));
    EXPECT_EQ(bytesAt(2, 17), (std::array<int, 4>{0, 0, 255, 255}));
    EXPECT_EQ(bytesAt(27, 17), (std::array<int, 4>{128, 128, 0, 128}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, isDrawnUprightUnmirroredAndInItsOwnColours)
{
    const auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    const QImage picture = drawnPicture([&texture] {
        texture->bind();
        drawUpright(10.0f, 40.0f, 30.0f, 20.0f);
        SimpleTexture::unbind();
    });
    // The picture's top edge lies 40 of 48 rows above the bottom, so in row 8.
    EXPECT_EQ(picture.pixelColor(10, 8), QColor(255, 0, 0));
    EXPECT_EQ(picture.pixelColor(39, 8), QColor(0, 255, 0));
    EXPECT_EQ(picture.pixelColor(10, 27), QColor(0, 0, 255));
    EXPECT_EQ(picture.pixelColor(39, 27), QColor(128, 128, 0)); // over black
    for (const QPoint outside : {QPoint(9, 8), QPoint(10, 7), QPoint(40, 27), QPoint(39, 28)})
        EXPECT_EQ(picture.pixelColor(outside), QColor(0, 0, 0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, bindingEnablesTheRectangleTargetAndUnbindingDisablesIt)
{
    const auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    glDisable(GL_TEXTURE_RECTANGLE);
    texture->bind();
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_RECTANGLE));
    EXPECT_NE(stateOf(GL_TEXTURE_BINDING_RECTANGLE), 0);
    SimpleTexture::unbind();
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_RECTANGLE));
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_RECTANGLE), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, takesItsNameAlongWhenItGoes)
{
    auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    const std::uint32_t name = nameOf(*texture);
    ASSERT_TRUE(glIsTexture(name));
    texture.reset();
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, goingWhileAnotherContextIsCurrentTakesItsNameAlongLater)
{
    auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    const std::uint32_t name = nameOf(*texture);
    kelo::test::DrawingView other(Rect{{0.0, 0.0}, {8.0, 8.0}});
    ASSERT_TRUE(other.openGLContext().makeCurrentContext());
    const auto otherTexture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(otherTexture, nullptr);
    const std::uint32_t otherName = nameOf(*otherTexture);
    texture.reset();
    EXPECT_TRUE(glIsTexture(otherName)) << "the other context's texture must stay";
    EXPECT_NO_GL_ERROR();
    ASSERT_TRUE(view.openGLContext().makeCurrentContext());
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, mayOutliveItsContext)
{
    const auto texture = SimpleTexture::textureWithFile(path);
    ASSERT_NE(texture, nullptr);
    view.loseContext();
    EXPECT_EQ(texture->width(), 30u);
    ASSERT_TRUE(view.openGLContext().makeCurrentContext());
    texture->bind(); // a name of the lost context names nothing in the new one
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_RECTANGLE), 0);
    SimpleTexture::unbind();
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, withoutACurrentContextThereIsNone)
{
    view.loseContext();
    ASSERT_EQ(OpenGLContext::currentContext(), nullptr);
    EXPECT_EQ(SimpleTexture::textureWithFile(path), nullptr);
}

TEST_F(SimpleTextureOfAFile, anUnreadableFileYieldsNoTextureAndNoMessage)
{
    const std::string noImage = folder.filePath("text.png").toStdString();
    QFile file(QString::fromStdString(noImage));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("This is no picture.");
    file.close();
    const std::string missing = folder.filePath("missing.png").toStdString();

    std::string written;
    for (const std::string &unreadable : {missing, noImage, folder.path().toStdString()}) {
        std::shared_ptr<SimpleTexture> texture;
        written += test::standardErrorOf([&] {
            written += test::standardOutputOf(
                [&] { texture = SimpleTexture::textureWithFile(unreadable); });
        });
        EXPECT_EQ(texture, nullptr) << unreadable;
    }
    EXPECT_EQ(written, "");
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_RECTANGLE), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, aFileThatEndsTooEarlyYieldsNoTexture)
{
    QFile whole(QString::fromStdString(path));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    const QString cutPath = folder.filePath("cut.png");
    // The last twelve bytes only say that the picture has ended.
    for (qsizetype length = 0; length < bytes.size() - 12; length += 7) {
        QFile cut(cutPath);
        ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
        cut.write(bytes.first(length));
        cut.close();
        std::shared_ptr<SimpleTexture> texture;
        // The PNG decoder itself writes there.
        const std::string ofTheDecoder = test::standardErrorOf(
            [&] { texture = SimpleTexture::textureWithFile(cutPath.toStdString()); });
        EXPECT_EQ(texture, nullptr) << length << " bytes";
        EXPECT_TRUE(ofTheDecoder.empty() || ofTheDecoder.starts_with("libpng")) << ofTheDecoder;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(SimpleTextureOfAFile, aFileWithoutAlphaIsOpaque)
{
    QImage picture(3, 2, QImage::Format_RGB888);
    picture.fill(QColor(10, 20, 30));
    const auto texture = SimpleTexture::textureWithFile(savedPicture(picture, "opaque.png"));
    ASSERT_NE(texture, nullptr);
    const QImage texels = texelsOf(nameOf(*texture));
    EXPECT_EQ(texels.pixelColor(2, 1), QColor(10, 20, 30, 255));
    EXPECT_NO_GL_ERROR();
}

} // namespace
