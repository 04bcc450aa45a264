#pragma once

#include "platform/gl.h"

#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/DrawingView.h"

#include <QImage>
#include <QTemporaryDir>

#include <functional>

namespace kelo::test {

/// An integer of the current state.
inline GLint stateOf(GLenum what)
{
    GLint value = 0;
    glGetIntegerv(what, &value);
    return value;
}

/// What OpenGL keeps of a rectangle texture: level 0 as red, green, blue, alpha, row 0 first. An
/// empty image for one without area. Leaves the texture bound.
inline QImage texelsOf(std::uint32_t name)
{
    glBindTexture(GL_TEXTURE_RECTANGLE, name);
    GLint width = 0;
    GLint height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_HEIGHT, &height);
    QImage texels(width, height, QImage::Format_RGBA8888_Premultiplied);
    if (!texels.isNull())
        glGetTexImage(GL_TEXTURE_RECTANGLE, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.bits());
    return texels;
}

/// A parameter of the rectangle texture that is bound.
inline GLint textureParameter(GLenum parameter)
{
    GLint value = 0;
    glGetTexParameteriv(GL_TEXTURE_RECTANGLE, parameter, &value);
    return value;
}

/// A view of 64 x 48 points whose context is current, a folder for image files, and drawing in
/// points from the lower left corner, premultiplied, over black.
class TextureFixture : public ViewFixture
{
protected:
    static constexpr int viewWidth = 64;
    static constexpr int viewHeight = 48;

    TextureFixture() { view.openGLContext().makeCurrentContext(); }

    std::string savedPicture(const QImage &picture, const std::string &fileName) const
    {
        const QString path = folder.filePath(QString::fromStdString(fileName));
        EXPECT_TRUE(picture.save(path));
        return path.toStdString();
    }

    QImage drawnPicture(const std::function<void()> &draw)
    {
        view.whileDrawing = [&draw] {
            glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
            glClear(GL_COLOR_BUFFER_BIT);
            glMatrixMode(GL_PROJECTION);
            glOrtho(0.0, viewWidth, 0.0, viewHeight, -1.0, 1.0);
            glMatrixMode(GL_MODELVIEW);
            glEnable(GL_BLEND);
            glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
            glColor3f(1.0f, 1.0f, 1.0f);
            draw();
            glDisable(GL_BLEND);
        };
        const QImage picture = view.grabImage();
        view.whileDrawing = nullptr;
        return picture;
    }

    QTemporaryDir folder;
    DrawingView view{Rect{{0.0, 0.0}, {viewWidth, viewHeight}}};
};

} // namespace kelo::test
