#include "platform/gl.h"

#include "keloOpenGL/view/SimpleTexture.h"
#include "keloOpenGL/view/StringTexture.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/DrawingView.h"
#include "tests/support/GLTest.h"

#include <QCoreApplication>
#include <QImage>
#include <QTemporaryDir>

namespace {

using namespace kelo;

class TexturesWithoutApplication : public testing::Test
{
protected:
    TexturesWithoutApplication() { view.openGLContext().makeCurrentContext(); }
    test::DrawingView view{Rect{{0.0, 0.0}, {40.0, 30.0}}};
};

TEST_F(TexturesWithoutApplication, aTextCannotBeDrawnAndDrawsNothing)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    StringTexture texture("Today", TextAttributes{});
    const std::string message = test::standardErrorOf([&texture] {
        EXPECT_EQ(texture.texSize(), (Size{0.0, 0.0}));
        EXPECT_EQ(texture.frameSize(), (Size{8.0, 4.0}));
        texture.drawWithBounds({{0.0, 0.0}, {1.0, 1.0}});
        texture.drawAtPoint({0.0, 0.0});
    });
    EXPECT_EQ(texture.texName(), 0u);
    EXPECT_EQ(message, "");
    EXPECT_NO_GL_ERROR();
}

TEST_F(TexturesWithoutApplication, aPictureIsLoadedAllTheSame)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    const QTemporaryDir folder;
    QImage picture(5, 3, QImage::Format_RGBA8888);
    picture.fill(Qt::red);
    const QString path = folder.filePath("red.png");
    ASSERT_TRUE(picture.save(path));
    const auto texture = SimpleTexture::textureWithFile(path.toStdString());
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->width(), 5u);
    EXPECT_EQ(texture->height(), 3u);
    EXPECT_NO_GL_ERROR();
}

} // namespace
